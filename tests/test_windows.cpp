#include <algorithm>
#include <tuple>

#include "guidriver.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

using Ids = std::vector<unsigned int>;

struct RecordingWindow : BCChildWindow {
    RecordingWindow(BCWindow* parent) : BCChildWindow(parent, 7, &App()) {}
    std::vector<std::string> calls;
    unsigned int lastKey = 0;
    int thumb = -1;
    bool paintHadDC = false;
    long Note(const char* name, BCEvent* e) {
        calls.push_back(name);
        lastKey = e->GetKeycode();
        paintHadDC = GetDC() != nullptr;
        if (e->GetMessage() == WM_VSCROLL && (GetStyle() & WS_VSCROLL) && thumb < 0)
            thumb = e->GetThumbPos(); // the first since the test reset it
        return 1;
    }
    LRESULT DefaultEvent(BCEvent* e) override {
        if (e->GetMessage() == WM_USER + 5 || e->GetMessage() == WM_MOUSEMOVE)
            calls.push_back("Default");
        return BCChildWindow::DefaultEvent(e);
    }
    // clang-format off
#define NOTE(H) LRESULT H(BCEvent* e) override { return Note(#H, e); }
    NOTE(CharKey) NOTE(Focus) NOTE(HorizScroll) NOTE(KeyDown) NOTE(MenuCommand) NOTE(MenuInit)
    NOTE(MouseDown) NOTE(MouseUp) NOTE(MouseDblClk) NOTE(MouseDrag) NOTE(Paint) NOTE(ReSize)
    NOTE(VertScroll) NOTE(ButtonSnglClk) NOTE(EditChange) NOTE(ListBoxSnglClk) NOTE(ListBoxDblClk)
    NOTE(Timer)
#undef NOTE
    // clang-format on
};

// Counts the characters its own control receives once intercepted.
struct CountingControl : BCControlWindow {
    using BCControlWindow::BCControlWindow;
    LRESULT CharKey(BCEvent* e) override {
        ++chars;
        return DefaultEvent(e); // the control still types it
    }
    int chars = 0;
};

TEST(WindowEventTest, EachHandlerIsReachedByItsMessageOnly) {
    Frame frame(true);
    RecordingWindow child(&frame.main);
    child.SetWindowRect(BCRectangle(5, 6, 205, 106));
    ASSERT_TRUE(child.Create("child"));
    HWND w = child.GetHandle();
    EXPECT_TRUE(child.SetID(12) == 7 && GetDlgCtrlID(w) == 12 && child.Enable() == 1 &&
                child.GetWindowRect() == BCRectangle(5, 6, 205, 106) && // as placed before
                GetClassLongPtrA(w, GCLP_HBRBACKGROUND) == COLOR_WINDOW + 1);
    LPARAM button = reinterpret_cast<LPARAM>(
        CreateWindowExA(0, "BUTTON", "b", WS_CHILD, 0, 0, 10, 10, w, nullptr, nullptr, nullptr));
    const std::tuple<UINT, WPARAM, LPARAM, const char*> cases[] = {
        {WM_CHAR, 'a', 1, "CharKey"},
        {WM_KEYDOWN, VK_F5, 1, "KeyDown"},
        {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5), "MouseDown"},
        {WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(6, 6), "MouseDrag"},
        {WM_MOUSEMOVE, 0, MAKELPARAM(6, 6), "Default"},
        {WM_LBUTTONUP, 0, MAKELPARAM(6, 6), "MouseUp"},
        {WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(6, 6), "MouseDblClk"},
        {WM_SIZE, SIZE_RESTORED, MAKELPARAM(200, 100), "ReSize"},
        {WM_SETFOCUS, 0, 0, "Focus"},
        {WM_VSCROLL, SB_LINEDOWN, 0, "VertScroll"},
        {WM_HSCROLL, SB_PAGEUP, 0, "HorizScroll"},
        {WM_COMMAND, MAKEWPARAM(42, 0), 0, "MenuCommand"},
        {WM_INITMENUPOPUP, 0, 0, "MenuInit"},
        {WM_COMMAND, MAKEWPARAM(3, BN_CLICKED), button, "ButtonSnglClk"},
        {WM_COMMAND, MAKEWPARAM(3, EN_CHANGE), button, "EditChange"},
        {WM_COMMAND, MAKEWPARAM(3, LBN_SELCHANGE), button, "ListBoxSnglClk"},
        {WM_COMMAND, MAKEWPARAM(3, LBN_DBLCLK), button, "ListBoxDblClk"},
        {WM_USER + 5, 0, 0, "Default"}};
    for (const auto& [message, wParam, lParam, handler] : cases) {
        child.calls.clear();
        SendMessageA(w, message, wParam, lParam);
        EXPECT_EQ(std::vector<std::string>{handler}, child.calls) << message;
    }
    child.calls.clear();
    InvalidateRect(w, nullptr, TRUE);
    UpdateWindow(w);
    EXPECT_TRUE(child.calls == std::vector<std::string>{"Paint"} && child.paintHadDC &&
                !child.GetDC()); // the paint context went with the event

    // Ctrl with the movement keys has codes of its own; Ctrl+A is plain A.
    const UINT keys[] = {VK_HOME, VK_END, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, 'A'};
    for (unsigned i = 0; i < 7; ++i) {
        Input::Key(w, keys[i], true);
        const unsigned int withCtrl = child.lastKey;
        Input::Key(w, keys[i], false);
        EXPECT_EQ(Nums(i < 6 ? 144 + i : 65, keys[i]), Nums(withCtrl, child.lastKey));
    }
    ASSERT_EQ(1, child.SetFocus()); // the loop translates keys; a frame is no dialog to take them
    PostMessageA(w, WM_KEYDOWN, VK_ESCAPE, 1);
    App().ProcessPending();
    EXPECT_EQ(1, std::count(child.calls.begin(), child.calls.end(), "CharKey"));
}

// A text of more lines than a 16-bit word counts: the thumb comes from the bar itself.
TEST(WindowEventTest, ThumbPositionsPast32767LinesDoNotWrapAndTimersTickUntilKilled) {
    MsgRecorder recorder;
    Frame frame;
    RecordingWindow child(&frame.main);
    ASSERT_TRUE(child.SetStyle(WS_VSCROLL, 1) && child.Create("long text") &&
                child.SetVertScrollRange(0, 70000) && child.SetVertThumb(40000));
    SendMessageA(child.GetHandle(), WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 40000 & 0xFFFF), 0);
    EXPECT_EQ(40000, child.thumb);
    BCScrollBar bar(BC_SCROLL_VERT, WS_CHILD | SBS_VERT, 21, &child, {0, 0}, {16, 90}, 44, &App());
    ASSERT_TRUE(bar.Create("") && bar.SetRange(0, 50000) && bar.SetThumb(45000) == 1);
    SCROLLBARINFO info = {sizeof(SCROLLBARINFO), {}, 0, 0, 0, 0, {}};
    ASSERT_TRUE(GetScrollBarInfo(bar.GetHandle(), OBJID_CLIENT, &info));
    PostMessageA(bar.GetHandle(), WM_LBUTTONUP, 0, MAKELPARAM(8, 20));
    child.thumb = -1;
    SendMessageA(bar.GetHandle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, info.xyThumbTop + 2));
    EXPECT_TRUE(child.thumb > 0 && child.thumb != 45000) << child.thumb; // where it is held

    // Without a bar the word is all there is; other messages carry no bar to ask.
    BCEvent barless(frame.main.GetHandle(), WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 9), 0),
        command(frame.main.GetHandle(), WM_COMMAND, MAKEWPARAM(1, 8), 0);
    EXPECT_TRUE(barless.GetThumbPos() == 9 && command.GetThumbPos() == 8 &&
                recorder.NumberedIds() == Ids{10060});

    RecordingWindow ticking(&frame.main);
    ASSERT_EQ((Seq{0, 1, 1}), // no timer without a window
              (Seq{ticking.SetTimer(7, 5), ticking.Create("ticking"), ticking.SetTimer(7, 5)}));
    auto ticks = [&ticking] {
        return std::count(ticking.calls.begin(), ticking.calls.end(), "Timer");
    };
    for (int i = 0; i < 400 && ticks() < 2; ++i) {
        Sleep(5);
        App().ProcessPending();
    }
    EXPECT_TRUE(ticks() >= 2 && ticking.lastKey == 7u); // the timer's id
    EXPECT_EQ((Seq{1, 0}), (Seq{ticking.KillTimer(7), ticking.KillTimer(7)}));
}

TEST(WindowLifeTest, ObjectAndWindowLetGoOfEachOther) {
    MsgRecorder recorder;
    Frame frame;
    auto* child = new BCChildWindow(&frame.main, 3, &App());
    ASSERT_TRUE(child->Create("doomed"));
    HWND handle = child->GetHandle();
    EXPECT_TRUE(child->EnableRedraw(0) && child->EnableRedraw(1));
    BCSetCreateWindow(child); // as if it went while being made
    delete child;             // the object goes first: its window goes with it
    EXPECT_TRUE(!IsWindow(handle) && !BCGetCreateWindow());

    BCChildWindow survivor(&frame.main, 4, &App());
    ASSERT_TRUE(survivor.Create("survivor"));
    DestroyWindow(survivor.GetHandle()); // the window goes first
    EXPECT_TRUE(!survivor.HandleCheck() && !survivor.GetHandle() && !survivor.Enable() &&
                !survivor.EnableRedraw(1) && survivor.GetVertThumb() == -1 &&
                !survivor.SetHorizScrollRange(0, 9) &&
                !survivor.Attach(reinterpret_cast<HWND>(0x1234))); // no such window
    BCListBox list(20, &frame.main, BCPosition(0, 0), BCSize(50, 50), "", &App());
    DestroyWindow(list.GetHandle()); // behind the object's back: not taken for alive
    EXPECT_FALSE(list.HandleCheck());

    struct Refused : BCMainWindow {
        using BCMainWindow::BCMainWindow;
        LRESULT Initialize(BCEvent*) override { return -1; } // its window is not made
    } refused(&App());
    BCMainWindow unborn(&App());
    BCChildWindow orphan(nullptr, 5, &App()), early(&unborn, 6, &App());
    BCControlWindow bogus("NoSuchClass", WS_CHILD, 8, &frame.main, {}, {9, 9}, 31, &App());
    BCControlWindow homeless("EDIT", WS_CHILD, 8, &unborn, {}, {9, 9}, 31, &App());
    EXPECT_FALSE(orphan.Create("") || early.Create("") || bogus.Create("") || homeless.Create("") ||
                 refused.Create(""));
    EXPECT_EQ((Ids{10066, 10064, 10065, 10016, 10016, 10036}), recorder.NumberedIds());
}

struct TestDialog : BCModalDialog {
    TestDialog() : BCModalDialog(BCResID(500u), nullptr, &App()) {
        edit = new BCControlWindow(BCResID(101u), this, 31, &App());
    }
    LRESULT ButtonSnglClk(BCEvent* e) override {
        seen.resize(64);
        seen.resize(static_cast<size_t>(edit->GetTitle(&seen[0], 64)));
        return DefaultEvent(e); // OK and Cancel end the dialog
    }
    BCControlWindow* edit;
    std::string seen;
};

TEST(DialogTest, ModalDialogIsDrivenAndReturnsItsResult) {
    for (int button : {IDOK, IDCANCEL}) {
        TestDialog dialog;
        DialogDriver driver;
        driver.SetText(101, "typed text").Click(button).Start();
        ASSERT_EQ(1, dialog.Create(""));
        EXPECT_TRUE(driver.Finish() && dialog.GetResult() == button &&
                    dialog.seen == "typed text" && !dialog.edit->GetHandle()); // let go
    }
}

TEST(DialogTest, ModelessDialogBindsItsControlsAndStaysOpenUntilEnded) {
    MsgRecorder recorder;
    BCModelessDialog status(BCResID(500u), nullptr, &App());
    auto* edit = new CountingControl(BCResID(101u), &status, 31, &App());
    EXPECT_TRUE(edit->Intercept(1)); // asked before the control is bound
    ASSERT_TRUE(status.Create("Status"));
    char title[16];
    EXPECT_TRUE(status.GetTitle(title, sizeof title) && std::string(title) == "Status");
    Input::Char(edit->GetHandle(), 'w');
    App().ProcessPending();
    EXPECT_EQ(1, edit->chars);
    auto* late = new BCControlWindow(BCResID(102u), &status, 35, &App());
    ASSERT_TRUE(late->Create("Late")); // bound while the dialog runs, with a text to show
    EXPECT_TRUE(late->GetTitle(title, sizeof title) && std::string(title) == "Late");
    EXPECT_TRUE(IsWindowVisible(status.GetHandle()) && !status.Create("again")); // one window
    EXPECT_TRUE(status.EndDlg(2) && status.GetResult() == 2 && !status.HandleCheck());

    for (unsigned int id : {999u, 501u}) { // no template; a control of no known class
        BCModalDialog modal(BCResID(id), nullptr, &App());
        BCModelessDialog modeless(BCResID(id), nullptr, &App());
        EXPECT_FALSE(modal.Create("") || modeless.Create(""));
    }
    BCControlWindow unbound(BCResID(101u), nullptr, 31, &App());
    EXPECT_EQ(0, unbound.Create(""));
    EXPECT_EQ((Ids{10052, 10052, 10052, 10052, 10052, 10015}), recorder.NumberedIds());
    recorder.Answer(IDNO);
    BCMsgBox box("Save changes?", "Title", MB_YESNOCANCEL, nullptr, nullptr);
    EXPECT_TRUE(box.GetResult() == IDNO && recorder.Last().text == "Save changes?" &&
                recorder.Last().caption == "Title");
}

TEST(MenuTest, FindEnableCheckAndExclusiveCheck) {
    BCMenu bar;
    auto *file = new BCMenu, *window = new BCMenu;
    for (unsigned int id = 1; id <= 3; ++id)
        ASSERT_TRUE(file->Append(id, "&Open"));
    ASSERT_TRUE(bar.Append(file, "&File") && window->Append(10, "&Tile") &&
                bar.Append(window, "&Window"));
    EXPECT_EQ(Nums(1, 0xFFFF), Nums(bar.FindItem("&Window", 0), bar.FindItem("&File", 1)));

    BCMenu sub(&bar, 0, nullptr);
    EXPECT_TRUE(sub.Disable(2, 1, 1) && !sub.IsEnabled(2) &&
                (GetMenuState(sub.GetHandle(), 2, MF_BYCOMMAND) & MF_GRAYED));
    EXPECT_TRUE(sub.Enable(2, 1, 1) && sub.IsEnabled(2) && sub.SetCheck(1, 1) &&
                sub.SetExclCheck(1, 3, 3));
    EXPECT_TRUE(!sub.IsChecked(1) && !sub.IsChecked(2) && sub.IsChecked(3) && sub.Delete(2) &&
                sub.GetItemCount() == 2);
    BCEvent opening(nullptr, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(bar.GetHandle()), 0),
        other(nullptr, WM_COMMAND, reinterpret_cast<WPARAM>(bar.GetHandle()), 0);
    EXPECT_TRUE(opening.GetMenu() && opening.GetMenu()->GetHandle() == bar.GetHandle() &&
                !other.GetMenu());

    MsgRecorder recorder;
    BCMenu missing(BCResID("NOSUCHMENU"));
    EXPECT_EQ("Unable to load menu NOSUCHMENU.", recorder.Last().text);

    // A document window that only remembers the frame's menu leaves it alone when it goes.
    BCMenu shown, *taken = new BCMenu;
    {
        Frame frame;
        EXPECT_EQ(nullptr, frame.main.SetMenu(&shown));
        {
            BCChildWindow document(&frame.main, 8, &App());
            ASSERT_TRUE(document.Create("document") && !document.SetMenu(&shown));
        }
        frame.main.SetID(99); // a top-level window has no id: its menu stays
        EXPECT_TRUE(shown.GetHandle() && shown.GetHandle() == GetMenu(frame.main.GetHandle()));
        EXPECT_TRUE(frame.main.SetMenu(taken) == &shown && frame.main.SetMenu(&shown) == taken);
    }
    EXPECT_EQ(nullptr, shown.GetHandle()); // went with the frame's window
    HMENU handle = taken->GetHandle();     // taken off the frame before: still ours to destroy
    delete taken;
    EXPECT_FALSE(IsMenu(handle));
}

TEST(CursorTest, CursorsIconsTheCaretListBoxesAndInterceptedControls) {
    MsgRecorder recorder;
    BCCursor bad(99), missing(BCResID("NOCURSOR"));
    EXPECT_EQ("Invalid cursor type:  99|Unable to load cursor NOCURSOR|", recorder.Texts());
    EXPECT_TRUE(!bad.GetHandle() && !bad.Set() && !bad.Restore() &&
                BCIcon(BC_ICON_APPLICATION).GetHandle());

    BCCursor wait(BC_CURSOR_WAIT);
    HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    SetCursor(arrow);
    EXPECT_TRUE(wait.GetHandle() == LoadCursorA(nullptr, IDC_WAIT) && wait.Set() == arrow &&
                GetCursor() == wait.GetHandle() && wait.Restore() && GetCursor() == arrow &&
                !wait.Restore()); // restored once only

    Frame frame;
    BCChildWindow child(&frame.main, 2, &App());
    ASSERT_TRUE(child.Create("caret") && child.SetCursor(wait.GetHandle()));
    for (WORD hit : {HTCAPTION, HTCLIENT}) { // the window's cursor is for its client area
        SetCursor(arrow);
        SendMessageA(child.GetHandle(), WM_SETCURSOR, 0, MAKELPARAM(hit, WM_MOUSEMOVE));
        EXPECT_EQ(hit == HTCLIENT ? wait.GetHandle() : arrow, GetCursor());
    }
    child.SetFocus();
    short line = child.GetChrHeight('H'), border = short(GetSystemMetrics(SM_CXBORDER));
    const std::pair<BCSize, BCSize> sizes[] = {{BCSize(2, 14), BCSize(2, 14)},
                                               {BCGetNullSize(), BCSize(border, line)},
                                               {BCSize(3, 0), BCSize(3, line)}};
    for (const auto& [asked, made] : sizes) { // a null width or height is the default's
        BCCaret caret(&child, asked);
        GUITHREADINFO info = {sizeof(GUITHREADINFO), 0, {}, {}, {}, {}, {}, {}, {}};
        EXPECT_TRUE(caret.IsCreated() && caret.GetSize() == made &&
                    caret.SetPos(BCPosition(30, 4)) &&
                    GetGUIThreadInfo(GetCurrentThreadId(), &info) &&
                    BCRectangle::FromRECT(&info.rcCaret) == BCRectangle(BCPosition(30, 4), made) &&
                    caret.Destroy() && !caret.Destroy());
    }

    // List box entries; intercepted controls see their own events first.
    BCListBox list(20, &frame.main, BCPosition(0, 0), BCSize(120, 100), "", &App());
    auto item = [&list](int index) {
        char text[16] = "";
        return list.GetItem(index, text) ? std::string(text) : std::string("none");
    };
    char beta[] = "beta", alpha[] = "alpha", gamma[] = "gamma", empty[] = "";
    EXPECT_TRUE(list.Append(beta) == 0 && list.Insert(alpha, 0) == 1 && list.Append(gamma) == 2);
    EXPECT_EQ("alpha beta gamma none 5", item(0) + " " + item(1) + " " + item(2) + " " + item(7) +
                                             " " + std::to_string(list.GetItemLen(0)));
    auto selected = [&list] {
        char text[16] = "";
        return std::to_string(list.GetCrntInd()) + (list.GetCrntItem(text) ? text : "-");
    };
    EXPECT_EQ("-1-", selected());
    EXPECT_TRUE(list.GoTo(1) == 1 && selected() == "1beta");
    EXPECT_EQ(0, list.GoTo(9) + list.Delete(5));                     // no such entries
    EXPECT_TRUE(list.Delete(-1) && item(1) + item(2) == "betanone"); // the last
    EXPECT_TRUE(list.DeleteAll() && !list.Delete(-1));               // then nothing is last
    EXPECT_TRUE(list.Append(empty) == 0 && list.GoTo(0));
    EXPECT_TRUE(selected() == "0-" && list.Delete(0) == 1); // an empty text is no text

    BCListBox noWindow(BCResID(5u), nullptr, &App());
    EXPECT_EQ(-3, noWindow.GetCount() + noWindow.Append(gamma) + noWindow.Insert(gamma, 0) +
                      noWindow.GoTo(0) + noWindow.DeleteAll() + noWindow.Delete(0) +
                      noWindow.GetItemLen(0));

    CountingControl edit("EDIT", WS_CHILD, 30, &frame.main, BCPosition(0, 0), BCSize(99, 20), 37,
                         &App());
    ASSERT_TRUE(edit.Intercept(1) && edit.Create("ab")); // asked before the control is made
    int counted = 0;
    for (int on : {-1, 1, 0, 1}) { // -1: as asked before; the second 1 changes nothing
        ASSERT_TRUE(on < 0 || edit.Intercept(on) == 1);
        Input::Char(edit.GetHandle(), 'x');
        counted += on != 0;
        EXPECT_EQ(counted, edit.chars) << on;
    }
    char text[16];
    edit.GetTitle(text, sizeof text);
    EXPECT_STREQ("xxxxab", text); // the control's own handling went on
}

// Last: once the main window is gone the application's loop has ended.
TEST(ApplicationTest, TheMainWindowEndsTheLoop) {
    BCApplication& app = *BCGetApp();
    BCMainWindow a(&app), b(&app);
    ASSERT_TRUE(a.Create("a") && b.Create("b") && app.GetMainWindow() == &a);
    app.SetMainWindow(nullptr); // so that closing them does not end the loop

    BCMainWindow main(&app);
    ASSERT_TRUE(main.Create("main") && app.GetMainWindow() == &main);
    EXPECT_TRUE(app.ProcessPending());
    main.Destroy();
    EXPECT_FALSE(app.ProcessPending()); // the quit message came
    app.SetMainWindow(nullptr);
}

} // namespace
