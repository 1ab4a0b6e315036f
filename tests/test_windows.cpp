#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "guidriver.h"
#include "msgrecorder.h"
#include "norlib2.h"

namespace {

BCApplication& App() {
    static BCApplication app;
    return app;
}

// Records which handler each event reached.
class RecordingWindow : public BCChildWindow {
  public:
    RecordingWindow(BCWindow* parent) : BCChildWindow(parent, 7, &App()) {}
    std::vector<std::string> calls;
    unsigned int lastKey = 0;
    int thumb = -1;
    bool paintHadDC = false;
    long Note(const char* name) {
        calls.push_back(name);
        return 1;
    }
    long CharKey(BCEvent*) override { return Note("CharKey"); }
    long Focus(BCEvent*) override { return Note("Focus"); }
    long HorizScroll(BCEvent*) override { return Note("HorizScroll"); }
    long KeyDown(BCEvent* e) override {
        lastKey = e->GetKeycode();
        return Note("KeyDown");
    }
    long MenuCommand(BCEvent*) override { return Note("MenuCommand"); }
    long MenuInit(BCEvent*) override { return Note("MenuInit"); }
    long MouseDown(BCEvent*) override { return Note("MouseDown"); }
    long MouseUp(BCEvent*) override { return Note("MouseUp"); }
    long MouseDblClk(BCEvent*) override { return Note("MouseDblClk"); }
    long MouseDrag(BCEvent*) override { return Note("MouseDrag"); }
    long Paint(BCEvent*) override {
        paintHadDC = GetDC() != nullptr;
        return Note("Paint");
    }
    long ReSize(BCEvent*) override { return Note("ReSize"); }
    long VertScroll(BCEvent* e) override {
        if (GetStyle() & WS_VSCROLL)
            thumb = e->GetThumbPos();
        return Note("VertScroll");
    }
    long ButtonSnglClk(BCEvent*) override { return Note("ButtonSnglClk"); }
    long EditChange(BCEvent*) override { return Note("EditChange"); }
    long ListBoxSnglClk(BCEvent*) override { return Note("ListBoxSnglClk"); }
    long ListBoxDblClk(BCEvent*) override { return Note("ListBoxDblClk"); }
    LRESULT DefaultEvent(BCEvent* e) override {
        if (e->GetMessage() == WM_USER + 5 || e->GetMessage() == WM_MOUSEMOVE)
            calls.push_back("Default");
        return BCChildWindow::DefaultEvent(e);
    }
};

// Counts the characters its own control receives once intercepted.
class CountingControl : public BCControlWindow {
  public:
    using BCControlWindow::BCControlWindow;
    long CharKey(BCEvent* e) override {
        ++chars;
        return static_cast<long>(DefaultEvent(e)); // the control still types it
    }
    int chars = 0;
};

struct Frame {
    BCMainWindow main{&App()};
    // Showing costs Wine a wait for the X server: only tests that paint show the frame.
    explicit Frame(bool shown = false) {
        main.SetWindowRect(BCRectangle(10, 10, 410, 310));
        EXPECT_TRUE(main.Create("Frame"));
        if (shown)
            main.Show(SW_SHOWNOACTIVATE);
    }
};

TEST(WindowEventTest, EachHandlerIsReachedByItsMessageOnly) {
    Frame frame(true);
    RecordingWindow child(&frame.main);
    child.SetWindowRect(BCRectangle(0, 0, 200, 100));
    ASSERT_TRUE(child.Create("child"));
    HWND w = child.GetHandle();
    child.calls.clear(); // creation's own size and paint events
    LPARAM button = reinterpret_cast<LPARAM>(
        CreateWindowExA(0, "BUTTON", "b", WS_CHILD, 0, 0, 10, 10, w, nullptr, nullptr, nullptr));
    struct Case {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* handler;
    };
    const Case cases[] = {
        {WM_CHAR, 'a', 1, "CharKey"},
        {WM_KEYDOWN, VK_F5, 1, "KeyDown"},
        {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5), "MouseDown"},
        {WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5), "MouseDown"},
        {WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(6, 6), "MouseDrag"},
        {WM_MOUSEMOVE, 0, MAKELPARAM(6, 6), "Default"},
        {WM_LBUTTONUP, 0, MAKELPARAM(6, 6), "MouseUp"},
        {WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(6, 6), "MouseDblClk"},
        {WM_SIZE, SIZE_RESTORED, MAKELPARAM(200, 100), "ReSize"},
        {WM_SETFOCUS, 0, 0, "Focus"},
        {WM_KILLFOCUS, 0, 0, "Focus"},
        {WM_VSCROLL, SB_LINEDOWN, 0, "VertScroll"},
        {WM_HSCROLL, SB_PAGEUP, 0, "HorizScroll"},
        {WM_COMMAND, MAKEWPARAM(42, 0), 0, "MenuCommand"},
        {WM_INITMENUPOPUP, 0, 0, "MenuInit"},
        {WM_COMMAND, MAKEWPARAM(3, BN_CLICKED), button, "ButtonSnglClk"},
        {WM_COMMAND, MAKEWPARAM(3, EN_CHANGE), button, "EditChange"},
        {WM_COMMAND, MAKEWPARAM(3, LBN_SELCHANGE), button, "ListBoxSnglClk"},
        {WM_COMMAND, MAKEWPARAM(3, LBN_DBLCLK), button, "ListBoxDblClk"},
        {WM_USER + 5, 0, 0, "Default"},
    };
    for (const Case& c : cases) {
        child.calls.clear();
        SendMessageA(w, c.message, c.wParam, c.lParam);
        EXPECT_EQ(std::vector<std::string>{c.handler}, child.calls) << c.message;
    }
    child.calls.clear();
    InvalidateRect(w, nullptr, TRUE);
    UpdateWindow(w);
    EXPECT_EQ(std::vector<std::string>{"Paint"}, child.calls);
    EXPECT_TRUE(child.paintHadDC);
    EXPECT_EQ(nullptr, child.GetDC()); // the paint context went with the event
}

TEST(WindowEventTest, CtrlMovementKeysGetTheirOwnCodes) {
    Frame frame;
    RecordingWindow child(&frame.main);
    ASSERT_TRUE(child.Create("keys"));
    const UINT keys[] = {VK_HOME, VK_END, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN};
    for (unsigned i = 0; i < 6; ++i) {
        Input::Key(child.GetHandle(), keys[i], true);
        EXPECT_EQ(144u + i, child.lastKey);
        Input::Key(child.GetHandle(), keys[i], false);
        EXPECT_EQ(keys[i], child.lastKey);
    }
    Input::Key(child.GetHandle(), 'A', true);
    EXPECT_EQ(static_cast<unsigned>('A'), child.lastKey);
}

// A text of more lines than a 16-bit word counts: the thumb comes from the bar itself.
TEST(WindowEventTest, ThumbPositionsPast32767LinesDoNotWrap) {
    MsgRecorder recorder;
    Frame frame;
    RecordingWindow child(&frame.main);
    child.SetStyle(WS_VSCROLL, 1);
    ASSERT_TRUE(child.Create("long text"));
    ASSERT_TRUE(child.SetVertScrollRange(0, 70000));
    ASSERT_TRUE(child.SetVertThumb(40000));
    for (WPARAM type : {SB_THUMBPOSITION, SB_THUMBTRACK, SB_LINEDOWN}) {
        SendMessageA(child.GetHandle(), WM_VSCROLL, MAKEWPARAM(type, 40000 & 0xFFFF), 0);
        EXPECT_EQ(40000, child.thumb) << type;
    }
    BCScrollBar bar(BC_SCROLL_VERT, WS_CHILD | SBS_VERT, 21, &child, BCPosition(0, 0),
                    BCSize(16, 90), 44, &App());
    ASSERT_TRUE(bar.Create(""));
    ASSERT_TRUE(bar.SetRange(0, 50000));
    ASSERT_TRUE(bar.SetThumb(45000));
    EXPECT_EQ(45000, bar.GetThumb());
    LPARAM handle = reinterpret_cast<LPARAM>(bar.GetHandle());
    SendMessageA(child.GetHandle(), WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 45000), handle);
    EXPECT_EQ(45000, child.thumb);

    child.SetStyle(WS_VSCROLL, 0);
    BCEvent barless(frame.main.GetHandle(), WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 9), 0);
    EXPECT_EQ(9, barless.GetThumbPos());
    EXPECT_EQ((std::vector<unsigned int>{10060}), recorder.NumberedIds());
}

TEST(WindowLifeTest, ObjectAndWindowLetGoOfEachOther) {
    MsgRecorder recorder;
    Frame frame;
    auto* child = new BCChildWindow(&frame.main, 3, &App());
    ASSERT_TRUE(child->Create("doomed"));
    HWND handle = child->GetHandle();
    EXPECT_EQ(child, BCWindow::FromHandle(handle));
    delete child; // the object goes first: its window goes with it
    EXPECT_FALSE(IsWindow(handle));

    BCChildWindow survivor(&frame.main, 4, &App());
    ASSERT_TRUE(survivor.Create("survivor"));
    DestroyWindow(survivor.GetHandle()); // the window goes first
    EXPECT_FALSE(survivor.HandleCheck());
    EXPECT_EQ(nullptr, survivor.GetHandle());
    EXPECT_EQ(-1, survivor.GetVertThumb());
    EXPECT_EQ(0, survivor.Enable());
    EXPECT_TRUE(survivor.GetClientRect().IsEmpty());
    EXPECT_EQ(0u, recorder.Count());

    BCChildWindow orphan(nullptr, 5, &App());
    EXPECT_EQ(0, orphan.Create("orphan"));
    BCMainWindow unborn(&App());
    BCChildWindow early(&unborn, 6, &App());
    EXPECT_EQ(0, early.Create("early"));
    EXPECT_EQ((std::vector<unsigned int>{10064, 10065}), recorder.NumberedIds());
}

TEST(WindowLifeTest, SettingsBeforeAndAfterCreation) {
    Frame frame;
    BCChildWindow child(&frame.main, 9, &App());
    child.SetWindowRect(BCRectangle(5, 6, 105, 56));
    EXPECT_EQ(static_cast<long>(WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS),
              child.SetStyle(WS_VSCROLL, 1));
    ASSERT_TRUE(child.Create("first"));
    EXPECT_EQ(9, GetDlgCtrlID(child.GetHandle()));
    EXPECT_TRUE(child.GetWindowRect() == BCRectangle(5, 6, 105, 56));
    EXPECT_TRUE(GetWindowLongA(child.GetHandle(), GWL_STYLE) & WS_VSCROLL);
    ASSERT_TRUE(child.SetTitle("second"));
    char title[16];
    child.GetTitle(title, sizeof title);
    EXPECT_STREQ("second", title);
    child.Disable();
    EXPECT_FALSE(child.IsEnabled());
    child.Enable();
    EXPECT_TRUE(child.IsEnabled());
    ASSERT_TRUE(child.SelectDC());
    EXPECT_NE(nullptr, child.GetDC());
    EXPECT_TRUE(child.ReleaseDC());
}

TEST(ApplicationTest, TheMainWindowEndsTheLoop) {
    BCApplication& app = App();
    EXPECT_EQ(&app, BCGetApp());
    BCMainWindow main(&app);
    ASSERT_TRUE(main.Create("main"));
    EXPECT_EQ(&main, app.GetMainWindow());
    EXPECT_TRUE(app.ProcessPending());
    main.Destroy();
    EXPECT_FALSE(app.ProcessPending()); // the quit message came
    EXPECT_EQ(nullptr, main.GetHandle());
    app.SetMainWindow(nullptr);
}

class TestDialog : public BCModalDialog {
  public:
    TestDialog() : BCModalDialog(BCResID(500u), nullptr, &App()) {
        edit = new BCControlWindow(BCResID(101u), this, 31, &App());
        new BCControlWindow(BCResID(102u), this, 35, &App());
    }
    long ButtonSnglClk(BCEvent* e) override {
        if (e->GetControlID() == IDOK) {
            char text[64];
            edit->GetTitle(text, sizeof text);
            seen = text;
        }
        return static_cast<long>(DefaultEvent(e)); // OK ends the dialog
    }
    long Initialize(BCEvent* e) override {
        initialized = edit->HandleCheck();
        return static_cast<long>(BCModalDialog::Initialize(e));
    }
    BCControlWindow* edit;
    std::string seen;
    bool initialized = false;
};

TEST(DialogTest, ModalDialogIsDrivenAndReturnsItsResult) {
    const int buttons[] = {IDOK, IDCANCEL};
    for (int button : buttons) {
        TestDialog dialog;
        DialogDriver driver;
        driver.SetText(101, "typed text").Click(button).Start();
        ASSERT_EQ(1, dialog.Create(""));
        EXPECT_TRUE(driver.Finish());
        EXPECT_TRUE(dialog.initialized); // controls were bound before start-up
        EXPECT_EQ(button, dialog.GetResult());
        EXPECT_EQ(button == IDOK ? "typed text" : "", dialog.seen);
        EXPECT_EQ(nullptr, dialog.edit->GetHandle()); // let go with the dialog
    }
}

TEST(DialogTest, ModelessDialogBindsItsControlsAndStaysOpenUntilEnded) {
    BCModelessDialog status(BCResID(500u), nullptr, &App());
    auto* edit = new CountingControl(BCResID(101u), &status, 31, &App());
    EXPECT_TRUE(edit->Intercept(1)); // asked before the control is bound
    ASSERT_TRUE(status.Create("Status"));
    Input::Char(edit->GetHandle(), 'w');
    EXPECT_EQ(1, edit->chars);
    ASSERT_TRUE(edit->SetTitle("working"));
    App().ProcessPending();
    EXPECT_TRUE(status.HandleCheck());
    EXPECT_TRUE(status.EndDlg(2));
    EXPECT_EQ(2, status.GetResult());
    EXPECT_FALSE(status.HandleCheck());
    EXPECT_FALSE(edit->HandleCheck());
}

TEST(DialogTest, MissingTemplatesAndControlsAreReported) {
    MsgRecorder recorder;
    BCModalDialog missing(BCResID(999u), nullptr, &App());
    EXPECT_EQ(0, missing.Create(""));
    EXPECT_EQ((std::vector<unsigned int>{10052}), recorder.NumberedIds());
    BCControlWindow unbound(BCResID(101u), nullptr, 31, &App());
    EXPECT_EQ(0, unbound.Create(""));
    EXPECT_EQ(10015u, recorder.Last().id);

    recorder.Answer(IDNO);
    BCMsgBox box("Save changes?", "Title", MB_YESNOCANCEL | MB_ICONQUESTION, nullptr, nullptr);
    EXPECT_EQ(IDNO, box.GetResult());
    EXPECT_EQ(BC_MSG_BOX, recorder.Last().kind);
    EXPECT_EQ("Save changes?" + std::string("|Title"),
              recorder.Last().text + "|" + recorder.Last().caption);
    EXPECT_EQ(static_cast<unsigned>(MB_YESNOCANCEL | MB_ICONQUESTION), recorder.Last().style);
}

TEST(MenuTest, FindEnableCheckAndExclusiveCheck) {
    BCMenu bar;
    auto* file = new BCMenu;
    for (unsigned int id = 1; id <= 3; ++id)
        ASSERT_TRUE(file->Append(id, id == 1 ? "&New" : "&Open"));
    ASSERT_TRUE(bar.Append(file, "&File"));
    auto* window = new BCMenu;
    ASSERT_TRUE(window->Append(10, "&Tile"));
    ASSERT_TRUE(bar.Append(window, "&Window"));
    EXPECT_EQ(1u, bar.FindItem("&Window", 0));
    EXPECT_EQ(0xFFFFu, bar.FindItem("&Help", 0));
    EXPECT_EQ(0xFFFFu, bar.FindItem("&File", 1));

    BCMenu sub(&bar, 0, nullptr);
    EXPECT_EQ(GetSubMenu(bar.GetHandle(), 0), sub.GetHandle());
    ASSERT_TRUE(sub.Disable(2, 1, 1));
    EXPECT_FALSE(sub.IsEnabled(2));
    EXPECT_TRUE(GetMenuState(sub.GetHandle(), 2, MF_BYCOMMAND) & MF_GRAYED);
    ASSERT_TRUE(sub.Enable(2, 1, 1));
    EXPECT_TRUE(sub.IsEnabled(2));
    ASSERT_TRUE(sub.SetCheck(1, 1));
    ASSERT_TRUE(sub.SetExclCheck(1, 3, 3));
    EXPECT_EQ(0, sub.IsChecked(1) + sub.IsChecked(2));
    EXPECT_TRUE(sub.IsChecked(3));
    ASSERT_TRUE(sub.Delete(2));
    EXPECT_EQ(2, sub.GetItemCount());

    MsgRecorder recorder;
    BCMenu missing(BCResID("NOSUCHMENU"));
    EXPECT_EQ(nullptr, missing.GetHandle());
    EXPECT_EQ("Unable to load menu NOSUCHMENU.", recorder.Last().text);
    EXPECT_EQ(0xFFFFu, missing.FindItem("x", 0));
}

// The window showing a menu bar owns it; a document window that only remembers the frame's
// menu must leave it alone when it goes.
TEST(MenuTest, OnlyTheWindowShowingAMenuBarOwnsIt) {
    BCMenu bar, other;
    {
        Frame frame;
        EXPECT_EQ(nullptr, frame.main.SetMenu(&bar));
        EXPECT_EQ(bar.GetHandle(), GetMenu(frame.main.GetHandle()));
        {
            BCChildWindow document(&frame.main, 8, &App());
            ASSERT_TRUE(document.Create("document"));
            document.SetMenu(&bar);
        }
        EXPECT_NE(nullptr, bar.GetHandle());
        EXPECT_EQ(bar.GetHandle(), GetMenu(frame.main.GetHandle()));
        EXPECT_EQ(&bar, frame.main.SetMenu(&other));
        EXPECT_EQ(&other, frame.main.SetMenu(&bar));
    }
    EXPECT_EQ(nullptr, bar.GetHandle());    // went with the frame's window
    EXPECT_TRUE(IsMenu(other.GetHandle())); // taken off the frame before: still ours
}

TEST(CursorTest, StockCursorsIconsAndTheirRestoring) {
    MsgRecorder recorder;
    BCCursor wait(BC_CURSOR_WAIT);
    EXPECT_EQ(LoadCursorA(nullptr, IDC_WAIT), wait.GetHandle());
    BCCursor bad(99);
    EXPECT_EQ(nullptr, bad.GetHandle());
    EXPECT_EQ("Invalid cursor type:  99", recorder.Last().text);
    EXPECT_EQ(nullptr, bad.Set());
    EXPECT_FALSE(bad.Restore());
    BCIcon icon(BC_ICON_APPLICATION);
    EXPECT_NE(nullptr, icon.GetHandle());

    HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    SetCursor(arrow);
    EXPECT_EQ(arrow, wait.Set());
    EXPECT_EQ(wait.GetHandle(), GetCursor());
    EXPECT_TRUE(wait.Restore());
    EXPECT_EQ(arrow, GetCursor());
    EXPECT_FALSE(wait.Restore()); // nothing left to put back

    Frame frame;
    BCChildWindow child(&frame.main, 2, &App());
    ASSERT_TRUE(child.Create("cursor"));
    ASSERT_TRUE(child.SetCursor(wait.GetHandle()));
    EXPECT_EQ(wait.GetHandle(), child.GetCursor());
}

TEST(CaretTest, ACaretHasItsSizeAndPlace) {
    EXPECT_TRUE(BCGetNullPos() == BCPosition(0, 0));
    EXPECT_TRUE(BCGetNullLimits() == BCLimits(0, 0));
    Frame frame;
    BCChildWindow child(&frame.main, 2, &App());
    ASSERT_TRUE(child.Create("caret"));
    child.SetFocus();
    struct Case {
        BCSize asked, made;
    };
    short line = child.GetChrHeight('H');
    short border = static_cast<short>(GetSystemMetrics(SM_CXBORDER));
    ASSERT_GT(line, 1);
    const Case cases[] = {{BCSize(2, 14), BCSize(2, 14)},
                          {BCGetNullSize(), BCSize(border, line)},
                          {BCSize(3, 0), BCSize(3, line)}};
    for (const Case& c : cases) {
        BCCaret caret(&child, c.asked);
        ASSERT_TRUE(caret.IsCreated());
        EXPECT_TRUE(caret.GetSize() == c.made);
        ASSERT_TRUE(caret.SetPos(BCPosition(30, 4)));
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        ASSERT_TRUE(GetGUIThreadInfo(GetCurrentThreadId(), &info));
        EXPECT_EQ(child.GetHandle(), info.hwndCaret);
        EXPECT_TRUE(BCRectangle::FromRECT(&info.rcCaret) == BCRectangle(BCPosition(30, 4), c.made));
        EXPECT_TRUE(caret.Destroy());
        EXPECT_FALSE(caret.Destroy());
    }
}

TEST(ControlTest, CreatedListBoxAndScrollBar) {
    Frame frame;
    BCListBox list(20, &frame.main, BCPosition(0, 0), BCSize(120, 100), "", &App());
    ASSERT_TRUE(list.HandleCheck());
    char beta[] = "beta", alpha[] = "alpha", gamma[] = "gamma";
    EXPECT_EQ(0, list.Append(beta));
    EXPECT_EQ(1, list.Insert(alpha, 0));
    EXPECT_EQ(2, list.Append(gamma));
    EXPECT_EQ(3, list.GetCount());
    char text[16];
    EXPECT_EQ(1, list.GetItem(1, text));
    EXPECT_STREQ("beta", text);
    EXPECT_EQ(0, list.GetItem(7, text));
    EXPECT_EQ(5, list.GetItemLen(0));
    EXPECT_EQ(-1, list.GetCrntInd());
    EXPECT_EQ(0, list.GetCrntItem(text)); // nothing selected
    EXPECT_EQ(1, list.GoTo(1));
    EXPECT_EQ(1, list.GetCrntInd());
    EXPECT_EQ(1, list.GetCrntItem(text));
    EXPECT_STREQ("beta", text);
    EXPECT_EQ(0, list.GoTo(9));
    EXPECT_EQ(1, list.Delete(-1)); // the last
    EXPECT_EQ(1, list.GetItem(1, text));
    EXPECT_STREQ("beta", text);
    EXPECT_EQ(0, list.Delete(5));
    EXPECT_EQ(1, list.DeleteAll());
    EXPECT_EQ(0, list.GetCount());
    EXPECT_EQ(0, list.Delete(-1)); // nothing is last

    BCListBox noWindow(BCResID(5u), nullptr, &App());
    EXPECT_EQ(-1, noWindow.GetCount());
    EXPECT_EQ(-1, noWindow.Append(gamma));
    EXPECT_EQ(0, noWindow.Insert(gamma, 0));
    EXPECT_EQ(0, noWindow.GoTo(0));
    EXPECT_EQ(0, noWindow.DeleteAll());
}

TEST(ControlTest, InterceptedControlsSeeTheirOwnEventsFirst) {
    Frame frame;
    for (bool early : {false, true}) { // asked before or after the control was made
        CountingControl edit("EDIT", WS_CHILD | WS_VISIBLE, 30, &frame.main, BCPosition(0, 0),
                             BCSize(100, 20), 37, &App());
        ASSERT_TRUE(!early || edit.Intercept(1));
        ASSERT_TRUE(edit.Create("ab"));
        Input::Char(edit.GetHandle(), 'x');
        EXPECT_EQ(early ? 1 : 0, edit.chars);
        ASSERT_TRUE(edit.Intercept(1));
        Input::Char(edit.GetHandle(), 'y');
        EXPECT_EQ(early ? 2 : 1, edit.chars);
        char text[16];
        edit.GetTitle(text, sizeof text);
        EXPECT_STRNE("ab", text); // the control's own handling went on
        ASSERT_TRUE(edit.Intercept(0));
        Input::Char(edit.GetHandle(), 'z');
        EXPECT_EQ(early ? 2 : 1, edit.chars);
    }
}

TEST(WindowListTest, CloseAllClosesEveryWindow) {
    BCMainWindow a(&App()), b(&App());
    ASSERT_TRUE(a.Create("a"));
    ASSERT_TRUE(b.Create("b"));
    BCWindowList list;
    ASSERT_TRUE(list.Append(&a, &a));
    ASSERT_TRUE(list.Append(&b, &b));
    EXPECT_EQ(1, list.CloseAll());
    EXPECT_FALSE(a.HandleCheck() || b.HandleCheck());
    App().ProcessPending();
    App().SetMainWindow(nullptr);
}

} // namespace
