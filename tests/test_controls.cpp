#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"

namespace {

using Ids = std::vector<unsigned int>;

BCApplication& App() {
    static BCApplication app;
    return app;
}

struct Frame {
    BCMainWindow main{&App()};
    explicit Frame(bool shown = false) {
        main.SetWindowRect(BCRectangle(10, 10, 410, 310));
        EXPECT_TRUE(main.Create("Frame"));
        if (shown)
            main.Show(SW_SHOW);
    }
};

template <class Field> std::string TextOf(Field& field) {
    char text[128] = "";
    field.GetText(text, sizeof text);
    return text;
}

TEST(EditControlTest, SelectionModifiedFlagUndoAndClipboard) {
    Frame frame;
    BCStringEdit edit(30, &frame.main, BCPosition(0, 0), BCSize(200, 20), "abcdef", &App());
    edit.SetCrntSelection(BCLimits(1, 3));
    EXPECT_TRUE(edit.GetCrntSelection() == BCLimits(1, 3));
    edit.SetModified(0);
    EXPECT_EQ(0, edit.SetModified(1));
    EXPECT_EQ(1, edit.SetModified(1)); // the old flag, now set
    EXPECT_EQ(1, edit.SetModified(0));

    edit.Copy();
    edit.SetCrntSelection(BCLimits(6, 6));
    edit.Paste();
    EXPECT_EQ("abcdefbc", TextOf(edit));
    edit.SetCrntSelection(BCLimits(0, 2));
    edit.Cut();
    EXPECT_EQ("cdefbc", TextOf(edit));
    EXPECT_TRUE(edit.CanUndo() == 1 && edit.Undo() == 1);
    EXPECT_EQ("abcdefbc", TextOf(edit));
    edit.SetCrntSelection(BCLimits(2, 4));
    edit.DeleteSelectedText();
    EXPECT_TRUE(TextOf(edit) == "abefbc" && edit.IsModified() == 1);
}

} // namespace
