#include "bcfont.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "bcdevice.h"
#include "bcids1.h"
#include "bcplatform.h"
#include "devices/bcdcscope.h"

namespace {
constexpr unsigned int kDefaultPoints = 10;
constexpr unsigned int kLight = FW_LIGHT, kNormal = FW_NORMAL, kBold = FW_BOLD;

void CopyFace(char (&to)[32], const char* face) {
    lstrcpynA(to, face ? face : "", sizeof to);
}

// Pixels per inch down the device (the screen when null, or when the device has no context).
int PixelsPerInch(BCDisplayDevice* device) {
    HDC dc = device ? static_cast<HDC>(device->GetDC()) : nullptr;
    if (dc)
        return GetDeviceCaps(dc, LOGPIXELSY);
    static int screen = 0;
    if (!screen) {
        BCWindowDC display(nullptr);
        screen = display.Get() ? GetDeviceCaps(display.Get(), LOGPIXELSY) : 0;
    }
    return screen > 0 ? screen : 96;
}

unsigned int HeightToPoints(short height, int pixelsPerInch) {
    int pixels = height < 0 ? -height : height;
    return static_cast<unsigned int>(MulDiv(pixels, 72, pixelsPerInch));
}

short PointsToHeight(unsigned int points, int pixelsPerInch) {
    return static_cast<short>(-MulDiv(static_cast<int>(points), pixelsPerInch, 72));
}
} // namespace

// ---- font ----

BCFont::BCFont(const char* face, BCModule* module, BCFontList* list)
    : BCGdiObject(bcids::kTypeFont, module), coWidth(0),
      coHeight(PointsToHeight(kDefaultPoints, PixelsPerInch(nullptr))), wWeight(kNormal),
      blItalic(0), blUnderline(0), blStrikeOut(0) {
    CopyFace(caFaceName, face ? face : (list ? list->GetFontName() : ""));
    if (face && list && !list->HasFace(face))
        DispObjectMsg(bcids::kMsgFontNotFound, face);
    Make();
}

int BCFont::Make() {
    LOGFONTA font = {};
    font.lfHeight = coHeight;
    font.lfWidth = coWidth;
    font.lfWeight = static_cast<LONG>(wWeight);
    font.lfItalic = blItalic;
    font.lfUnderline = blUnderline;
    font.lfStrikeOut = blStrikeOut;
    font.lfCharSet = DEFAULT_CHARSET;
    CopyFace(reinterpret_cast<char(&)[32]>(font.lfFaceName), caFaceName);
    HFONT handle = BCTraced(CreateFontIndirectA(&font), "CreateFontIndirectA");
    if (!handle) {
        DispObjectMsg(bcids::kMsgFontFailed);
        return 0;
    }
    SetObjectHandle(handle, 1);
    return 1;
}

int BCFont::SetFontName(const char* face) {
    if (!face)
        return 0;
    CopyFace(caFaceName, face);
    return Make();
}

unsigned int BCFont::GetPointSize() const {
    return HeightToPoints(coHeight, PixelsPerInch(nullptr));
}

int BCFont::SetPointSize(unsigned int points) {
    coWidth = 0;
    coHeight = PointsToHeight(points, PixelsPerInch(nullptr));
    return Make();
}

BCSize BCFont::SetSize(const BCSize& size) {
    BCSize previous = GetSize();
    coWidth = size.GetWidth();
    coHeight = size.GetHeight();
    Make();
    return previous;
}

int BCFont::IsNormal() const {
    return wWeight == kNormal && !blItalic && !blUnderline && !blStrikeOut;
}

int BCFont::IsLight() const {
    return wWeight == kLight;
}

int BCFont::IsBold() const {
    return wWeight == kBold;
}

int BCFont::SetNormal() {
    int previous = IsNormal();
    wWeight = kNormal;
    blItalic = blUnderline = blStrikeOut = 0;
    Make();
    return previous;
}

// Light and bold exclude each other; turning one off gives the regular weight.
int BCFont::SetWeight(unsigned int weight, int on) {
    int previous = wWeight == weight;
    if (on)
        wWeight = weight;
    else if (previous)
        wWeight = kNormal;
    Make();
    return previous;
}

int BCFont::SetStyle(unsigned char& style, int on) {
    int previous = style;
    style = on ? 1 : 0;
    Make();
    return previous;
}

int BCFont::SetLight(int on) {
    return SetWeight(kLight, on);
}

int BCFont::SetBold(int on) {
    return SetWeight(kBold, on);
}

int BCFont::SetItalic(int on) {
    return SetStyle(blItalic, on);
}

int BCFont::SetUnderline(int on) {
    return SetStyle(blUnderline, on);
}

int BCFont::SetStrikeOut(int on) {
    return SetStyle(blStrikeOut, on);
}

void BCFont::Display(const char* prefix) {
    DispObjectMsg("%scaFaceName=%s, coWidth=%d, coHeight=%d, wWeight=%u, blItalic=%d, "
                  "blUnderline=%d, blStrikeOut=%d",
                  prefix ? prefix : "", caFaceName, coWidth, coHeight, wWeight, blItalic,
                  blUnderline, blStrikeOut);
}

// ---- font list entry ----

BCFontEntry::BCFontEntry(const char* face, short width, short height)
    : BCObject(), coWidth(width), coHeight(height) {
    CopyFace(caFaceName, face);
}

unsigned int BCFontEntry::GetFontPoints(BCDisplayDevice* device) const {
    return HeightToPoints(coHeight, PixelsPerInch(device));
}

void BCFontEntry::Display(const char* prefix) {
    DispObjectMsg("%scaFaceName=%s, coWidth=%d, coHeight=%d", prefix ? prefix : "", caFaceName,
                  coWidth, coHeight);
}

// ---- font list ----

namespace {
struct FaceEntry {
    char face[32];
    short width;
    short height;
};

// Enumeration results, kept in a plain growing array: the callbacks must not throw.
struct Collected {
    FaceEntry* entries = nullptr;
    unsigned int count = 0;
    unsigned int capacity = 0;
    int scalable = 0;
    ~Collected() { delete[] entries; }
    void Add(const char* face, short width, short height) {
        if (count == capacity) {
            unsigned int grown = capacity ? 2 * capacity : 64;
            FaceEntry* more = new (std::nothrow) FaceEntry[grown];
            if (!more)
                return;
            std::copy(entries, entries + count, more);
            delete[] entries;
            entries = more;
            capacity = grown;
        }
        FaceEntry& e = entries[count++];
        CopyFace(e.face, face);
        e.width = width;
        e.height = height;
    }
};

int CALLBACK CollectFace(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM context) {
    if (font->lfFaceName[0] != '@') // vertical writing variants
        reinterpret_cast<Collected*>(context)->Add(font->lfFaceName,
                                                   static_cast<short>(font->lfWidth),
                                                   static_cast<short>(font->lfHeight));
    return 1;
}

// Bitmap faces come in fixed sizes; a scalable face answers once and takes any size.
int CALLBACK CollectSize(const LOGFONTA* font, const TEXTMETRICA* metrics, DWORD type,
                         LPARAM context) {
    Collected* sizes = reinterpret_cast<Collected*>(context);
    if (!(type & RASTER_FONTTYPE))
        sizes->scalable = 1;
    else
        sizes->Add(font->lfFaceName, static_cast<short>(metrics->tmAveCharWidth),
                   static_cast<short>(-(metrics->tmHeight - metrics->tmInternalLeading)));
    return 1;
}

int CompareFaces(const FaceEntry& a, const FaceEntry& b) {
    return lstrcmpiA(a.face, b.face);
}

// Larger magnitudes are larger fonts, whatever the sign convention of the height.
int Magnitude(short height) {
    return height < 0 ? -height : height;
}
} // namespace

BCFontList::BCFontList() : BCSingleLinkedList(BC_FLAG_STRING_KEY, 0) {
    SetObjectType(bcids::kTypeFontList);
    Collected faces;
    LOGFONTA all = {};
    all.lfCharSet = DEFAULT_CHARSET;
    BCWindowDC screen(nullptr);
    EnumFontFamiliesExA(screen.Get(), &all, reinterpret_cast<FONTENUMPROCA>(CollectFace),
                        reinterpret_cast<LPARAM>(&faces), 0);
    std::sort(faces.entries, faces.entries + faces.count,
              [](const FaceEntry& a, const FaceEntry& b) { return CompareFaces(a, b) < 0; });
    for (unsigned int i = 0; i < faces.count; ++i)
        if (i == 0 || CompareFaces(faces.entries[i - 1], faces.entries[i]) != 0)
            Add(faces.entries[i].face, faces.entries[i].width, faces.entries[i].height);
    Home();
}

BCFontList::BCFontList(BCDisplayDevice* device, const char* face)
    : BCSingleLinkedList(BC_FLAG_STRING_KEY, 0) {
    SetObjectType(bcids::kTypeFontList);
    if (!face || !*face)
        return;
    BCDCScope scope(device);
    BCWindowDC screen(nullptr);
    HDC dc = scope.dc() ? scope.dc() : screen.Get();
    Collected sizes;
    LOGFONTA wanted = {};
    wanted.lfCharSet = DEFAULT_CHARSET;
    CopyFace(reinterpret_cast<char(&)[32]>(wanted.lfFaceName), face);
    EnumFontFamiliesExA(dc, &wanted, reinterpret_cast<FONTENUMPROCA>(CollectSize),
                        reinterpret_cast<LPARAM>(&sizes), 0);
    if (sizes.scalable) {
        static const unsigned int usual[] = {8,  9,  10, 11, 12, 14, 16, 18,
                                             20, 22, 24, 26, 28, 36, 48, 72};
        for (unsigned int points : usual)
            sizes.Add(face, 0, PointsToHeight(points, PixelsPerInch(device)));
    }
    std::stable_sort(sizes.entries, sizes.entries + sizes.count,
                     [](const FaceEntry& a, const FaceEntry& b) {
                         return Magnitude(a.height) < Magnitude(b.height);
                     });
    for (unsigned int i = 0; i < sizes.count; ++i)
        Add(sizes.entries[i].face, sizes.entries[i].width, sizes.entries[i].height);
    Home();
}

BCFontList::~BCFontList() {
    // Our DeleteItem is not reached from the base's destructor.
    Clear(1);
}

int BCFontList::Add(const char* face, short width, short height) {
    BCFontEntry* entry = new (std::nothrow) BCFontEntry(face, width, height);
    if (!entry || !Append(const_cast<char*>(entry->GetFontName()), entry)) {
        delete entry;
        DispObjectMsg(bcids::kMsgFontListInsert);
        return 0;
    }
    return 1;
}

int BCFontList::CmpKey(void* key, void* itemKey) {
    return lstrcmpiA(key ? static_cast<const char*>(key) : "",
                     itemKey ? static_cast<const char*>(itemKey) : "");
}

int BCFontList::DeleteItem(void*, void* item) {
    if (!(dwFlags & BC_FLAG_KEEP_ITEMS))
        delete static_cast<BCFontEntry*>(item);
    return 1;
}

int BCFontList::HasFace(const char* face) const {
    for (BCSingleLinkNode* node = GetHead(); node && face; node = node->opNext)
        if (lstrcmpiA(face, static_cast<const char*>(node->lpKey)) == 0)
            return 1;
    return 0;
}

const char* BCFontList::GetFontName() {
    BCFontEntry* entry = GetCrntEntry();
    return entry ? entry->GetFontName() : "";
}

unsigned int BCFontList::GetFontPoints(BCDisplayDevice* device) {
    BCFontEntry* entry = GetCrntEntry();
    return entry ? entry->GetFontPoints(device) : 0;
}
