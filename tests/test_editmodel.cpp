// Random keys, clicks, drags, undo and redo against the rules every editor state must keep.
// NORLIB_EDIT_SEED and NORLIB_EDIT_STEPS run a longer or different sequence.
#include <algorithm>
#include <cstdlib>
#include <random>

#include "editfixture.h"

namespace {

unsigned int FromEnv(const char* name, unsigned int fallback) {
    const char* value = std::getenv(name);
    return value ? static_cast<unsigned int>(std::strtoul(value, nullptr, 10)) : fallback;
}

const unsigned int kSteps = FromEnv("NORLIB_EDIT_STEPS", 3000);
const unsigned int kSeed = FromEnv("NORLIB_EDIT_SEED", 20261124);

void CheckState(EditFixture& f) {
    BCTextEdit& e = *f.edit;
    std::string text = f.Text();
    unsigned long caret = e.GetCaretOfs();
    ASSERT_LE(caret, text.size());
    ASSERT_FALSE(caret && caret < text.size() && text[caret - 1] == '\r' && text[caret] == '\n')
        << "caret " << caret << " between CR and LF";
    ASSERT_EQ(static_cast<unsigned long>(std::count(text.begin(), text.end(), '\n')),
              e.GetLineCnt());
    if (e.GetCaret() && e.GetCaretPos().GetX() != -1) {
        ASSERT_LE(e.GetPageTop(), caret);
        ASSERT_LE(caret, e.GetPageEnd());
    }
}

class EditModel : public EditFixture {
  public:
    void RandomStep(std::mt19937& rng) {
        static const char kChars[] = "abc XYZ09\t\r\n.;\x1b";
        static const UINT kKeys[] = {VK_BACK, VK_DELETE, VK_LEFT,  VK_RIGHT, VK_UP,    VK_DOWN,
                                     VK_HOME, VK_END,    VK_PRIOR, VK_NEXT,  VK_CLEAR, VK_F8};
        auto pick = [&rng](unsigned int n) { return static_cast<unsigned int>(rng() % n); };
        int x = static_cast<int>(pick(300)), y = static_cast<int>(pick(220)) - 10;
        const unsigned int kind = pick(10); // typing, keys, a click, a drag, undo or redo
        if (kind < 4)
            Input::Char(H(), kChars[pick(sizeof kChars - 1)]);
        else if (kind < 6)
            Key(kKeys[pick(sizeof kKeys / sizeof kKeys[0])], pick(4) == 0);
        else if (kind < 8) {
            Click(WM_LBUTTONDOWN, x, y);
            if (kind == 6 && pick(3) == 0)
                Click(WM_LBUTTONDBLCLK, x, y);
            if (kind == 7)
                Click(WM_MOUSEMOVE, static_cast<int>(pick(300)), static_cast<int>(pick(240)) - 20);
            Click(WM_LBUTTONUP, x, y);
        } else
            SendMessageA(H(), WM_COMMAND, pick(2) ? 111 : 116, 0);
    }
};

TEST_F(EditModel, RandomEditingKeepsCaretLinesPageAndHistoryConsistent) {
    const std::string start = "first line\r\n\tsecond, with a tab\r\n\r\nfourth\r\n";
    Make(start.c_str(), 0, kSteps + 1);
    std::mt19937 rng(kSeed);
    for (unsigned int step = 0; step < kSteps; ++step) {
        RandomStep(rng);
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << " step " << step);
        CheckState(*this);
        if (HasFatalFailure())
            return;
    }
    auto all = [this](bool undo) {
        while (undo ? edit->CanUndo() : edit->CanRedo())
            undo ? edit->Undo() : edit->Redo();
        return Text();
    };
    const std::string final = all(false);
    EXPECT_EQ(start + "|" + final, Join({all(true), all(false)}));
}

} // namespace
