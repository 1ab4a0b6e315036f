// Random editing, each step checked against the rules every editor state keeps.
#include <algorithm>
#include <random>

#include "editfixture.h"
#include "streambytes.h"

namespace {

using EditModel = EditFixture;

TEST_F(EditModel, RandomEditingKeepsCaretPageAndAShortHistoryConsistent) {
    constexpr unsigned int kDepth = 6; // short: its oldest records are reused all along
    Make("first line\r\n\tsecond, with a tab\r\n\r\nfourth\r\n", 0, kDepth);
    std::mt19937 rng(20261124);
    auto pick = [&rng](unsigned int n) { return static_cast<int>(rng() % n); };
    // Typing, keys (a quarter with Ctrl), a click, a drag, undo or redo.
    auto randomStep = [&] {
        static const char kChars[] = "abc XYZ09\t\r\n.;\x1b";
        static const UINT kKeys[] = {VK_BACK, VK_DELETE, VK_LEFT,  VK_RIGHT, VK_UP,    VK_DOWN,
                                     VK_HOME, VK_END,    VK_PRIOR, VK_NEXT,  VK_CLEAR, VK_F8};
        const int kind = pick(10), x = pick(300), y = pick(220) - 10;
        if (kind < 4)
            Input::Char(H(), kChars[pick(sizeof kChars - 1)]);
        else if (kind < 6)
            Key(kKeys[pick(sizeof kKeys / sizeof kKeys[0])], pick(4) == 0);
        else if (kind < 8) {
            Click(WM_LBUTTONDOWN, x, y);
            Click(kind == 6 ? WM_LBUTTONDBLCLK : WM_MOUSEMOVE, pick(300), pick(240) - 20);
            Click(WM_LBUTTONUP, x, y);
        } else
            SendMessageA(H(), WM_COMMAND, pick(2) ? 111 : 116, 0);
    };
    // The caret never after a CR, drawn where its offset is while its line is shown; the page
    // from the start of its first line holding every line that fits.
    auto checkState = [this] {
        BCTextEdit& e = *edit;
        const std::string text = Text();
        const unsigned long caret = e.GetCaretOfs(), first = e.GetFirstLine();
        ASSERT_FALSE(caret > text.size() || (caret && text[caret - 1] == '\r')) << caret;
        const unsigned long fits =
            (e.GetClientRect().GetBottom() - e.GetTextRect().GetTop()) / e.GetChrHeight('H');
        ASSERT_EQ(
            (Seq{LineOfs(first), std::min<unsigned long>(LineOfs(first + fits), text.size())}),
            (Seq{e.GetPageTop(), e.GetPageEnd()}));
        ASSERT_TRUE(e.GetCaretPos().GetX() == -1 ||
                    (e.GetPageTop() <= caret && caret <= e.GetPageEnd() &&
                     e.GetCaretPos() == e.GetOfsPos(caret)));
    };
    for (unsigned int step = 0; step < 3000 && !HasFatalFailure(); ++step) {
        randomStep();
        SCOPED_TRACE(testing::Message() << "step " << step);
        checkState();
    }
    // Undone as far as the history reaches, no further than its depth, then redone: the same
    // texts both ways.
    unsigned int undone = 0;
    auto all = [&](bool undo) {
        for (undone = 0; undo ? edit->CanUndo() : edit->CanRedo(); ++undone)
            undo ? edit->Undo() : edit->Redo();
        return Text();
    };
    const std::string final = all(false), first = all(true);
    EXPECT_TRUE(undone >= 1 && undone <= kDepth) << undone;
    EXPECT_EQ(Join({final, first, final}), Join({all(false), all(true), all(false)}));
}

} // namespace
