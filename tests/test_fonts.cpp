#include <algorithm>

#include "test_devices.h"

namespace {

struct FontTest : Quiet {};

TEST_F(FontTest, TheModuleListsTheFacesInOrderAndFindsThemWhateverTheCase) {
    BCModule module(GetModuleHandleA(nullptr), "test_devices", 0);
    BCFontList* faces = module.GetFontList();
    ASSERT_TRUE(faces && faces == module.GetFontList()); // listed once, kept
    std::vector<std::string> names;
    for (int more = faces->Home(); more; more = faces->Next())
        names.push_back(faces->GetFontName());
    EXPECT_TRUE(names.size() > 3 && // in order, once each
                std::is_sorted(names.begin(), names.end(), [](auto& a, auto& b) {
                    return lstrcmpiA(a.c_str(), b.c_str()) <= 0;
                }));
    // Found by name whatever the case; the index is the menu position.
    const size_t index = std::min<size_t>(2, names.size() - 1);
    std::string third = names[index], upper = third;
    CharUpperA(&upper[0]);
    ASSERT_NE(nullptr, faces->Find(const_cast<char*>(upper.c_str())));
    EXPECT_TRUE(faces->GetCrntInd() == index &&
                !faces->Find(const_cast<char*>("No Such Face At All")));

    BCMemoryDevice dev(10, 10);
    // A face's size list gives the context back, whether or not it found any.
    EXPECT_TRUE(BCFontList(&dev, "No Such Face At All").GetCount() == 0 &&
                BCFontList(&dev, third.c_str()).GetCount() > 0 && !dev.GetDC());
}

TEST_F(FontTest, SizeAndStyleChangeWhatIsDrawnEvenWhileSelected) {
    BCModule module(GetModuleHandleA(nullptr), "test_devices", 0);
    BCFontList* faces = module.GetFontList();
    const std::string face = FirstFace(module);
    BCFont font(face.c_str(), &module, faces);
    EXPECT_TRUE(face == font.GetFontName() && font.GetPointSize() == 10u);
    BCMemoryDevice dev(300, 100);
    ASSERT_EQ(nullptr, dev.SetFont(&font));
    const short small = dev.GetStrSize("Hello").GetHeight();
    dev.SetFont(nullptr); // out of the device while it changes (the size menus set sizes too)
    font.SetPointSize(24);
    dev.SetFont(&font);
    EXPECT_TRUE(font.GetPointSize() == 24 && dev.GetStrSize("Hello").GetHeight() > 2 * small);
    // Changed while the device holds a context: followed, and no handle is left behind.
    ASSERT_TRUE(dev.SelectDC());
    const unsigned long before = BCGetGdiObjectCount();
    for (int i = 0; i < 50; ++i) {
        font.SetPointSize(i % 2 ? 10 : 24);
        dev.GetChrHeight('H');
    }
    EXPECT_TRUE(dev.GetStrSize("Hello").GetHeight() == small && dev.ReleaseDC() &&
                before == BCGetGdiObjectCount());
    dev.SetFont(nullptr);

    // Light and bold exclude each other, normal clears all; each says whether it was set.
    EXPECT_EQ(
        (Seq{0, 1, 0, 0, 0, 1, 0, 0, 0}),
        (Seq{font.SetBold(1), font.SetBold(1), font.SetLight(1), font.IsBold(), font.SetItalic(1),
             font.SetItalic(1), font.SetUnderline(1), font.SetStrikeOut(1), font.SetNormal()}));
    EXPECT_TRUE(font.IsNormal() && font.GetPointSize() == 10u && !font.IsUnderline() &&
                !font.IsStrikeOut() && !font.IsItalic() && !font.IsLight());
    // Renamed in place; without a face the list's current entry names it.
    faces->Next();
    ASSERT_TRUE(font.SetFontName(faces->GetFontName()));
    EXPECT_EQ(std::string(faces->GetFontName()) + "|" + faces->GetFontName(),
              std::string(font.GetFontName()) + "|" +
                  BCFont(nullptr, &module, faces).GetFontName());
}

} // namespace
