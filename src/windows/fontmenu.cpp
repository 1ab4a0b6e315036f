#include <windows.h>

#include <cstdio>
#include <new>

#include "bcapp.h"
#include "bcfont.h"
#include "bcfontinfo.h"
#include "bcids2.h"
#include "bcmenu.h"
#include "bcmodule.h"
#include "bcmsg.h"
#include "bcwindow.h"

namespace {

const char kFile[] = "FONTMENU";
const char kFallbackFace[] = "System";
constexpr unsigned int kLineNoFont = 80;
constexpr unsigned int kLineNoSizeMenu = 81;

// Where the size menu sits in its parent: BCSelectFont rebuilds it there after a face change.
unsigned int g_sizeMenuPos = 0;

BCModule* ModuleOf(BCWindow* w) {
    if (w->GetModule())
        return w->GetModule();
    return w->GetApp() ? w->GetApp()->GetModule() : nullptr;
}

BCFontList* FacesOf(BCWindow* w) {
    BCModule* module = ModuleOf(w);
    return module ? module->GetFontList() : nullptr;
}

void DeleteRange(BCMenu& menu, unsigned int first, unsigned int last) {
    for (unsigned int id = first; id <= last; ++id)
        menu.Delete(id);
}

bool InRange(unsigned int id, unsigned int first, unsigned int last) {
    return id >= first && id <= last;
}

// The face of the window's font when the list holds it, otherwise the fallback face in a new
// font; null when neither is listed. The list's current entry is the face found.
BCFont* ListedFont(BCWindow* w, BCFontList* faces) {
    BCFont* font = w->GetFont();
    if (font && faces->Find(const_cast<char*>(font->GetFontName())))
        return font;
    if (!faces->Find(const_cast<char*>(kFallbackFace)))
        return nullptr;
    return new (std::nothrow) BCFont(kFallbackFace, ModuleOf(w), faces);
}

// The style items: each checked as its query says; toggled through its setter (normal has
// none: its command clears every style).
struct Style {
    unsigned int id;
    int (BCFont::*is)() const;
    int (BCFont::*set)(int);
};
const Style kStyles[] = {{bcids::kCmdFontNormal, &BCFont::IsNormal, nullptr},
                         {bcids::kCmdFontLight, &BCFont::IsLight, &BCFont::SetLight},
                         {bcids::kCmdFontBold, &BCFont::IsBold, &BCFont::SetBold},
                         {bcids::kCmdFontItalic, &BCFont::IsItalic, &BCFont::SetItalic},
                         {bcids::kCmdFontUnderline, &BCFont::IsUnderline, &BCFont::SetUnderline},
                         {bcids::kCmdFontStrikeOut, &BCFont::IsStrikeOut, &BCFont::SetStrikeOut}};

// Flips one style of the window's font, with the font out of the window while it changes.
void Toggle(BCWindow* w, const Style& style) {
    BCFont* font = w->SetFont(nullptr);
    if (font && style.set)
        (font->*style.set)(1 - (font->*style.is)());
    else if (font)
        font->SetNormal();
    w->SetFont(font);
}

} // namespace

int BCInitFontMenu(BCWindow* w, BCMenu* menu, unsigned int pos) {
    BCFontList* faces = w && menu ? FacesOf(w) : nullptr;
    if (!faces)
        return 0;
    BCMenu faceMenu(menu, pos, ModuleOf(w));
    DeleteRange(faceMenu, bcids::kCmdFontFaceFirst, bcids::kCmdFontFaceLast);
    // Every face gets an item, also past the last face id: those items carry no command.
    unsigned int id = bcids::kCmdFontFaceFirst;
    for (int more = faces->Home(); more; more = faces->Next())
        faceMenu.Append(id++, faces->GetFontName());
    BCFont* font = ListedFont(w, faces);
    if (!font)
        return 0;
    unsigned long index = faces->GetCrntInd();
    int checked = index != BC_NO_INDEX &&
                  menu->SetCheck(bcids::kCmdFontFaceFirst + static_cast<unsigned int>(index), 1);
    w->SetFont(font);
    return checked ? 1 : 0;
}

int BCInitSizeMenu(BCWindow* w, BCMenu* menu, unsigned int pos) {
    if (!w || !menu)
        return 0;
    BCFont* font = w->GetFont();
    BCMenu sizeMenu(menu, pos, ModuleOf(w));
    if (!w->AssertType(font, bcids::kTypeFontObject, "opFont", kLineNoFont, kFile) ||
        !w->AssertType(sizeMenu.GetHandle() ? &sizeMenu : nullptr, bcids::kTypeMenuObject,
                       "opSizeMenu", kLineNoSizeMenu, kFile))
        return 0;
    g_sizeMenuPos = pos;
    DeleteRange(sizeMenu, bcids::kCmdFontSizeFirst, bcids::kCmdFontSizeLast);
    BCFontList sizes(w, font->GetFontName());
    bool seen = false;
    unsigned int previous = 0;
    for (int more = sizes.Home(); more; more = sizes.Next()) {
        unsigned int points = sizes.GetFontPoints(w);
        if (!seen || points != previous) {
            char text[16];
            std::snprintf(text, sizeof text, "%u", points);
            sizeMenu.Append(bcids::kCmdFontSizeFirst + points, text);
        }
        seen = true;
        previous = points;
    }
    if (!seen)
        return 0;
    BCSelectSize(w, menu, bcids::kCmdFontSizeFirst + font->GetPointSize());
    return 1;
}

int BCInitFormatMenu(BCWindow* w, BCMenu* menu) {
    BCFont* font = w ? w->GetFont() : nullptr;
    for (const Style& style : kStyles)
        if (menu)
            menu->SetCheck(style.id, font && (font->*style.is)());
    return 1;
}

int BCFontMenuCommand(BCWindow* w, BCMenu* menu, unsigned int id) {
    if (InRange(id, bcids::kCmdFontFaceFirst, bcids::kCmdFontFaceLast)) {
        BCSelectFont(w, menu, id);
        return 1;
    }
    if (InRange(id, bcids::kCmdFontSizeFirst, bcids::kCmdFontSizeLast)) {
        BCSelectSize(w, menu, id);
        return 1;
    }
    if (!InRange(id, bcids::kCmdFontLight, bcids::kCmdFontReservedLast))
        return 0;
    for (const Style& style : kStyles)
        if (style.id == id && w) {
            Toggle(w, style);
            BCInitFormatMenu(w, menu);
        }
    return 1;
}

int BCSelectFont(BCWindow* w, BCMenu* menu, unsigned int id) {
    BCFontList* faces = w ? FacesOf(w) : nullptr;
    if (!faces || !menu || id < bcids::kCmdFontFaceFirst)
        return 0;
    BCFont* font = w->SetFont(nullptr);
    if (!faces->GoToIndex(id - bcids::kCmdFontFaceFirst)) {
        BCDispMsg(bcids::kMsgFontNotInList, nullptr);
        return 0;
    }
    menu->SetExclCheck(bcids::kCmdFontFaceFirst, bcids::kCmdFontFaceLast + 1, id);
    if (!font)
        font = new (std::nothrow) BCFont(faces->GetFontName(), ModuleOf(w), faces);
    else
        font->SetFontName(faces->GetFontName());
    w->SetFont(font);
    BCInitSizeMenu(w, menu, g_sizeMenuPos);
    return 1;
}

int BCSelectSize(BCWindow* w, BCMenu* menu, unsigned int id) {
    if (!w || !menu || id < bcids::kCmdFontSizeFirst)
        return 0;
    BCFont* font = w->SetFont(nullptr);
    BCFontList sizes(w, font ? font->GetFontName() : nullptr);
    if (!sizes.GetCount())
        return 0;
    const unsigned int wanted = id - bcids::kCmdFontSizeFirst;
    int set = 0;
    for (int more = sizes.Home(); more && !set; more = sizes.Next()) {
        unsigned int points = sizes.GetFontPoints(w);
        BCFontEntry* entry = sizes.GetCrntEntry();
        if (points < wanted || !entry)
            continue;
        font->SetSize(BCSize(entry->GetWidth(), entry->GetHeight()));
        menu->SetExclCheck(bcids::kCmdFontSizeFirst, bcids::kCmdFontSizeLast + 1,
                           bcids::kCmdFontSizeFirst + points);
        set = 1;
    }
    w->SetFont(font);
    return set;
}
