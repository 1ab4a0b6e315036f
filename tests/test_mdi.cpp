#include <algorithm>
#include <cstdlib>
#include <memory>

#include "guidriver.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

// The face the font menus fall back on is Wine's own, which a bare prefix does not list.
// Two sets of a bitmap face for two character sets list each of its sizes twice. Added
// before the application lists the faces.
const int g_fonts = [] {
    const char* dir = getenv("NORLIB_WINE_FONTS"); // as the launcher finds them
    const std::string fonts = std::string("Z:") + (dir ? dir : "/usr/share/wine/fonts") + "/";
    int n = 0;
    for (const char* file : {"vgasys.fon", "coure.fon", "coue1255.fon"})
        n += AddFontResourceExA((fonts + file).c_str(), FR_PRIVATE, nullptr);
    return n;
}();

// A menu bar of popups with the given titles; the window showing it destroys it.
HMENU MenuBar(std::vector<const char*> titles) {
    HMENU bar = CreateMenu();
    for (const char* title : titles)
        AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(CreatePopupMenu()), title);
    return bar;
}

// Texts of the items a menu holds with ids from `first` to `last`, "*" after a checked one.
std::string Items(HMENU menu, unsigned int first, unsigned int last) {
    std::string all;
    for (unsigned int id = first; id <= last; ++id) {
        char text[64] = "";
        UINT state = GetMenuState(menu, id, MF_BYCOMMAND);
        if (state != UINT(-1) && GetMenuStringA(menu, id, text, sizeof text, MF_BYCOMMAND) > 0)
            all += std::string(text) + (state & MF_CHECKED ? "*|" : "|");
    }
    return all;
}

struct MdiTest : ::testing::Test {
    MsgRecorder rec;
    BCMenu bar{MenuBar({"&File", "&Window"})};
    BCMDIFrameWindow frame{&App()};
    void SetUp() override {
        ASSERT_EQ(3, g_fonts);
        frame.SetMenu(&bar);
        ASSERT_TRUE(frame.Create("frame") && frame.GetClient());
        frame.Show(SW_SHOW);
    }
    HMENU WindowMenu() { return GetSubMenu(GetMenu(frame.GetHandle()), 1); }
    HWND Client() { return frame.GetClient()->GetHandle(); }
};

TEST_F(MdiTest, ChildrenAreMadeListedTrackedAndDestroyedThroughTheClient) {
    char cls[32] = "";
    GetClassNameA(Client(), cls, sizeof cls);
    EXPECT_TRUE(!lstrcmpiA(cls, "MDICLIENT") && GetDlgCtrlID(Client()) == 43981 &&
                frame.GetClient() == App().GetMDIClient());
    BCMDIChildWindow a(frame.GetClient(), &App()), b(frame.GetClient(), &App());
    ASSERT_TRUE(a.Create("Alpha") && b.Create("Beta") && a.GetID() == 310u && b.GetID() == 311u);
    EXPECT_EQ("&1 Alpha|&2 Beta*|", Items(WindowMenu(), 310, 311)); // the active one checked
    auto active = [this](auto step) { return step(), frame.GetActiveChild(); };
    EXPECT_TRUE(active([] {}) == &b &&
                active([&] { SendMessageA(frame.GetHandle(), WM_COMMAND, 310, 0); }) == &a &&
                active([&] { b.BringToFront(); }) == &b); // the first: the Window menu's item
    a.BringToFront();
    // Told that b loses and a gains: a, not b, is active; b's own notice changes nothing.
    SendMessageA(b.GetHandle(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(b.GetHandle()),
                 reinterpret_cast<LPARAM>(a.GetHandle()));
    EXPECT_EQ(&a, frame.GetActiveChild());

    const bool zoomed = (a.Maximize(), IsZoomed(a.GetHandle()));
    EXPECT_TRUE(zoomed && (a.Restore(), !IsZoomed(a.GetHandle())));

    EXPECT_TRUE(b.Destroy() == 1 && !b.HandleCheck() && b.Destroy() == 0);
    EXPECT_TRUE(Items(WindowMenu(), 311, 311).empty() && frame.GetActiveChild() == &a);
    EXPECT_TRUE(a.Destroy() == 1 && frame.GetActiveChild() == nullptr);

    { // an active document object that goes leaves no pointer behind
        BCMDIChildWindow c(frame.GetClient(), &App());
        ASSERT_TRUE(c.Create("Gamma") && frame.GetActiveChild() == &c);
    }
    EXPECT_EQ(nullptr, frame.GetActiveChild());
    EXPECT_EQ(0, a.Maximize() + a.Restore() + a.BringToFront());
    // A placed document: its top counts from the bottom unless the window is top-down.
    for (int topDown : {1, 0}) {
        BCMDIChildWindow placed(frame.GetClient(), &App());
        placed.SetWindowRect(BCRectangle(10, 20, 110, 70));
        placed.SetDeviceFlags(BC_DEV_TOP_DOWN, topDown);
        ASSERT_TRUE(placed.Create("placed"));
        const int height = frame.GetClient()->GetClientRect().GetHeight();
        EXPECT_EQ(BCPosition(10, short(topDown ? 20 : height - 20)),
                  placed.GetWindowRect().GetPos());
    }
    EXPECT_EQ("", rec.Faults());
    // Menus are swapped only for menus with a Window menu.
    BCMenu other(MenuBar({"&Edit", "&Window"})), plain(MenuBar({"&Edit"}));
    BCMDIChildWindow doc(frame.GetClient(), &App());
    ASSERT_TRUE(doc.Create("doc"));
    doc.SetFrameMenu(&other);
    EXPECT_TRUE(doc.GetMenu() == &other && doc.GetFrameMenu() == &other &&
                GetMenu(frame.GetHandle()) == other.GetHandle());
    EXPECT_TRUE(frame.SetMenu(&plain) == &other && GetMenu(frame.GetHandle()) == other.GetHandle());
    EXPECT_EQ("MDIFRM:110 Assertion failure|", rec.Faults());
    EXPECT_TRUE(frame.SetMenu(&bar) == &other && GetMenu(frame.GetHandle()) == bar.GetHandle());
    EXPECT_TRUE(frame.SetMenu(nullptr) == &bar && !GetMenu(frame.GetHandle()) && !frame.GetMenu());
    frame.SetMenu(&bar);
}

TEST_F(MdiTest, ArrangingCyclingAndClosingAll) {
    BCMDIChildWindow a(frame.GetClient(), &App()), b(frame.GetClient(), &App()),
        c(frame.GetClient(), &App());
    BCMDIChildWindow* kids[] = {&a, &b, &c};
    for (BCMDIChildWindow* kid : kids)
        ASSERT_TRUE(kid->Create("doc"));
    auto overlap = [&](int x, int y) {
        RECT i, one, other;
        kids[x]->GetWindowRect().ToRECT(&one);
        kids[y]->GetWindowRect().ToRECT(&other);
        return IntersectRect(&i, &one, &other) != 0;
    };
    ASSERT_TRUE(frame.Tile());
    Input::Pump();
    EXPECT_FALSE(overlap(0, 1) || overlap(1, 2) || overlap(0, 2));
    ASSERT_TRUE(frame.Cascade() && frame.ArrangeIcons());
    Input::Pump();
    EXPECT_TRUE(overlap(0, 1) && overlap(1, 2));
    BCMDIChildWindow* before = frame.GetActiveChild();
    ASSERT_TRUE(frame.Next());
    Input::Pump();
    EXPECT_TRUE(frame.GetActiveChild() && frame.GetActiveChild() != before);

    EXPECT_TRUE(frame.CloseAll() == 1 && !frame.GetActiveChild());
    EXPECT_FALSE(a.HandleCheck() || b.HandleCheck() || c.HandleCheck());
}

TEST(MdiBadInput, MissingMenusClientsAndWindowsAreReported) {
    MsgRecorder rec;
    BCMDIFrameWindow bare(&App()), noWindowMenu(&App());
    BCMenu plain(MenuBar({"&File"}));
    noWindowMenu.SetMenu(&plain);
    ASSERT_TRUE(bare.Create("bare") && noWindowMenu.Create("plain"));
    EXPECT_TRUE(bare.GetClient() == nullptr && noWindowMenu.GetClient() == nullptr);
    BCMDIFrameWindow unmade(&App());
    EXPECT_EQ(0, unmade.Cascade() + unmade.Tile() + unmade.ArrangeIcons() + unmade.Next() +
                     unmade.CloseAll());
    BCMDIClientWindow noMenu(&unmade, nullptr, 0, &App());
    BCMDIChildWindow orphan(nullptr, &App()), unplaced(&noMenu, &App());
    EXPECT_EQ(0, noMenu.Create("") + orphan.Create("x") + unplaced.Create("y") + orphan.Destroy());
    EXPECT_EQ("MDIFRM:63 Assertion failure|MDIFRM:65 Assertion failure|MDIFRM:135 Assertion "
              "failure|MDIFRM:144 Assertion failure|MDIFRM:153 Assertion failure|MDIFRM:162 "
              "Assertion failure|MDICLNT:38 Null pointer:  opSubMenu|MDICLNT:39 Assertion failure|",
              rec.Faults());
    EXPECT_EQ((std::vector<unsigned int>{10081, 10080, 10080}), rec.NumberedIds());
}

TEST(FontInfoTest, MetricsAreThoseOfTheDevicesFont) {
    MsgRecorder rec;
    BCFont font(nullptr, App().GetModule(), App().GetModule()->GetFontList());
    font.SetPointSize(20);
    BCMemoryDevice dev(40, 40);
    dev.SetFont(&font);
    BCFontInfo info(&dev);
    TEXTMETRICA tm = {};
    ASSERT_TRUE(dev.SelectDC() && GetTextMetricsA(static_cast<HDC>(dev.GetDC()), &tm));
    dev.ReleaseDC();
    dev.SetFont(nullptr);
    EXPECT_EQ(107u, info.GetObjectType());
    info.Display(nullptr); // the metrics of the device's font
    char expected[300];
    snprintf(expected, sizeof expected,
             "tmHeight=%d,\ntmAscent=%d,\ntmDescent=%d,\ntmInternalLeading=%d,\n"
             "tmExternalLeading=%d,\ntmAveCharWidth=%d,\ntmMaxCharWidth=%d,\n",
             int(tm.tmHeight), int(tm.tmAscent), int(tm.tmDescent), int(tm.tmInternalLeading),
             int(tm.tmExternalLeading), int(tm.tmAveCharWidth), int(tm.tmMaxCharWidth));
    EXPECT_EQ(expected, rec.Last().text);

    BCMainWindow unmade(&App());
    BCFontInfo none(nullptr), noContext(&unmade);
    EXPECT_EQ("FONTINFO:24 Null pointer:  opDev|FONTINFO:25 Assertion failure|", rec.Faults());
    EXPECT_EQ(0, unmade.ReleaseDC() + none.GetMetrics().tmHeight + noContext.GetMetrics().tmHeight);
    EXPECT_EQ(std::vector<unsigned int>{10023}, rec.NumberedIds());
}

struct FontMenuTest : ::testing::Test {
    MsgRecorder rec;
    BCMenu bar{MenuBar({"Face", "Size", "Format"})};
    BCMainWindow w{&App()};
    BCFontList* faces = App().GetModule()->GetFontList();
    void SetUp() override {
        for (unsigned int i = 0; i < 6; ++i)
            AppendMenuA(Sub(2), MF_STRING, 141 + i, std::string(1, "LNBIUS"[i]).c_str());
        ASSERT_TRUE(w.Create("fonts"));
    }
    HMENU Sub(int pos) { return GetSubMenu(bar.GetHandle(), pos); }
    std::string Font() {
        BCFont* f = w.GetFont();
        return f ? std::string(f->GetFontName()) + " " + std::to_string(f->GetPointSize()) : "-";
    }
    // The index of the first face that takes any size.
    unsigned int ScalableFace() {
        unsigned int index = 0;
        for (int more = faces->Home(); more; more = faces->Next(), ++index) {
            BCFontList sizes(&w, faces->GetFontName());
            if (sizes.End() && sizes.GetFontPoints(&w) == 72)
                return index;
        }
        return 0;
    }
};

TEST_F(FontMenuTest, FaceAndSizeMenusFollowTheMachinesFonts) {
    const int n = static_cast<int>(faces->GetCount());
    ASSERT_TRUE(faces->HasFace("System"));
    BCFont unknown("No Such Face At All", App().GetModule(), faces);
    const unsigned long gdiBefore = BCGetGdiObjectCount();
    w.SetFont(&unknown); // a face the list lacks gives way to "System"
    EXPECT_TRUE(BCInitFontMenu(&w, &bar, 0) == 1 && Font() == "System 10");
    ASSERT_EQ(n, GetMenuItemCount(Sub(0)));
    std::string expected;
    for (int more = faces->Home(); more; more = faces->Next())
        expected += faces->GetFontName() +
                    std::string(lstrcmpiA(faces->GetFontName(), "System") ? "|" : "*|");
    EXPECT_EQ(expected, Items(Sub(0), 161, 160 + n));
    // Again: faces past the last face id are not taken out.
    BCInitFontMenu(&w, &bar, 0);
    EXPECT_EQ(n + (n > 19 ? n - 19 : 0), GetMenuItemCount(Sub(0)));

    ASSERT_EQ(1, BCInitSizeMenu(&w, &bar, 1));
    EXPECT_EQ("10*|", Items(Sub(1), 200, 299));
    // A face listing each size twice shows it once.
    ASSERT_TRUE(faces->Find(const_cast<char*>("Courier")) &&
                BCFontList(&w, "Courier").GetCount() == 2);
    EXPECT_EQ(1, BCSelectFont(&w, &bar, 161 + static_cast<unsigned int>(faces->GetCrntInd())));
    EXPECT_EQ("Courier 10|10*|", Font() + "|" + Items(Sub(1), 200, 299));
    // Choosing a face clears the other checks of the face ids only.
    for (int i = 0; i < n; ++i)
        CheckMenuItem(Sub(0), i, MF_BYPOSITION | MF_CHECKED);
    const unsigned int scalable = ScalableFace();
    ASSERT_EQ(1, BCFontMenuCommand(&w, &bar, 161 + scalable));
    ASSERT_TRUE(faces->GoToIndex(scalable));
    const std::string face = faces->GetFontName();
    EXPECT_EQ(face + "*|", Items(Sub(0), 161 + scalable, 161 + scalable));
    const std::string all = Items(Sub(0), 161, 160 + n);
    EXPECT_EQ(std::max(1, n - 19), std::count(all.begin(), all.end(), '*')) << all;
    // The sizes of a scalable face: the usual ones, those past 33 points without a command.
    EXPECT_TRUE(BCFontMenuCommand(&w, &bar, 210) == 1 && Font() == face + " 10");
    EXPECT_EQ("8|9|10*|11|12|14|16|18|20|22|24|26|28|36|48|72|", Items(Sub(1), 208, 272));
    EXPECT_TRUE(BCFontMenuCommand(&w, &bar, 213) == 1 && Font() == face + " 14"); // next listed
    EXPECT_EQ("12|14*|", Items(Sub(1), 212, 214));
    EXPECT_EQ(0, BCFontMenuCommand(&w, &bar, 236));
    // Above every size nothing changes; past the commands a size is still chosen directly.
    EXPECT_TRUE(BCSelectSize(&w, &bar, 273) == 0 && Font() == face + " 14");
    EXPECT_TRUE(BCSelectSize(&w, &bar, 236) == 1 && Font() == face + " 36");
    EXPECT_EQ("14|16|18|20|22|24|26|28|36*|", Items(Sub(1), 214, 236));

    // A face the list no longer holds: message 10078, and the window is left without font.
    BCFont* font = w.GetFont();
    EXPECT_TRUE(BCSelectFont(&w, &bar, 161 + n) == 0 && !w.GetFont());
    EXPECT_EQ((std::vector<unsigned int>{10028, 10078}), rec.NumberedIds());
    delete font; // made by the menu functions: the caller's
    EXPECT_EQ(gdiBefore, BCGetGdiObjectCount());
}

TEST_F(FontMenuTest, FormatCommandsToggleStylesAndOtherIdsAreIgnoredOrRefused) {
    BCFont font(nullptr, App().GetModule(), faces);
    w.SetFont(&font);
    const std::pair<unsigned int, const char*> steps[] = {
        {0, "L|N*|B|I|U|S|"},      {143, "L|N|B*|I|U|S|"},    {144, "L|N|B*|I*|U|S|"},
        {145, "L|N|B*|I*|U*|S|"},  {146, "L|N|B*|I*|U*|S*|"}, {141, "L*|N|B|I*|U*|S*|"},
        {147, "L*|N|B|I*|U*|S*|"}, {153, "L*|N|B|I*|U*|S*|"}, {144, "L*|N|B|I|U*|S*|"},
        {141, "L|N|B|I|U*|S*|"},   {142, "L|N*|B|I|U|S|"}};
    for (const auto& [id, checks] : steps) { // 0: the menu's first showing
        EXPECT_EQ(1, id ? BCFontMenuCommand(&w, &bar, id) : BCInitFormatMenu(&w, &bar)) << id;
        EXPECT_EQ(checks, Items(Sub(2), 141, 146)) << id;
    }
    EXPECT_TRUE(font.IsNormal() && w.GetFont() == &font);
    for (unsigned int id : {140u, 154u, 160u, 180u, 199u, 234u, 310u})
        EXPECT_EQ(0, BCFontMenuCommand(&w, &bar, id)) << id;
    EXPECT_EQ(&font, w.GetFont());

    // The menus need a window, the size menu a font and a submenu.
    EXPECT_EQ(0, BCInitFontMenu(nullptr, &bar, 0) + BCInitSizeMenu(nullptr, &bar, 1) +
                     BCSelectFont(nullptr, &bar, 161) + BCSelectSize(nullptr, &bar, 210));
    EXPECT_EQ((Seq{0, 0}), (Seq{BCInitSizeMenu(&w, &bar, 5),
                                (w.SetFont(nullptr), BCInitSizeMenu(&w, &bar, 1))}));
    EXPECT_EQ("FONTMENU:81 Null pointer:  opSizeMenu|FONTMENU:80 Null pointer:  opFont|",
              rec.Faults());
    // Without a "System" face a window without a font gets none.
    BCApplication other;
    BCFontList* list = other.GetModule()->GetFontList();
    ASSERT_TRUE(list->Find(const_cast<char*>("System")) && list->DeleteCrnt());
    BCMainWindow plain(&other);
    EXPECT_TRUE(BCInitFontMenu(&plain, &bar, 0) == 0 && !plain.GetFont());
}

} // namespace
