#pragma once
#include "bcgdi.h"
#include "bcsllist.h"

class BCDisplayDevice;
class BCFontList;

// A font: face, size and style. Changing any of them makes the platform font again, so a
// font that is changed should be out of the device (SetFont(null)) while it is changed.
class NORLIB1_API BCFont : public BCGdiObject {
  public:
    // A font of `face` at 10 points. Without a face it takes the face of the list's current
    // entry; a face that a given list does not hold is reported with message 10028 (the
    // platform then draws with the nearest face it has).
    BCFont(const char* face, BCModule* module = nullptr, BCFontList* list = nullptr);

    const char* GetFontName() const { return caFaceName; }
    int SetFontName(const char* face);
    // Points on the screen.
    unsigned int GetPointSize() const;
    int SetPointSize(unsigned int points);
    // Width and height as the platform takes them: a negative height is the characters'
    // height, a positive one the cell's; width 0 lets the face choose. Returns the previous.
    BCSize GetSize() const { return BCSize(coWidth, coHeight); }
    BCSize SetSize(const BCSize& size);

    // Normal is regular weight without italic, underline or strike-out. Queries return 1 or
    // 0; setters return the previous state.
    int IsNormal() const;
    int IsLight() const;
    int IsBold() const;
    int IsItalic() const { return blItalic; }
    int IsUnderline() const { return blUnderline; }
    int IsStrikeOut() const { return blStrikeOut; }
    int SetNormal();
    int SetLight(int on);
    int SetBold(int on);
    int SetItalic(int on);
    int SetUnderline(int on);
    int SetStrikeOut(int on);

    void Display(const char* prefix) override;

  private:
    int SetWeight(unsigned int weight, int on);
    int SetStyle(unsigned char& style, int on);
    int Make();

    char caFaceName[32];
    short coWidth;
    short coHeight;
    unsigned int wWeight;
    unsigned char blItalic;
    unsigned char blUnderline;
    unsigned char blStrikeOut;
};

// One entry of a font list: a face and, for a list of sizes, one size of it.
class NORLIB1_API BCFontEntry : public BCObject {
  public:
    BCFontEntry(const char* face, short width, short height);
    const char* GetFontName() const { return caFaceName; }
    // As BCFont::GetSize takes them.
    short GetWidth() const { return coWidth; }
    short GetHeight() const { return coHeight; }
    // The size in points on `device` (the screen when null).
    unsigned int GetFontPoints(BCDisplayDevice* device) const;
    void Display(const char* prefix) override;

  private:
    char caFaceName[32];
    short coWidth;
    short coHeight;
};

// A list of font entries (BCFontEntry items, owned) keyed by face name, compared without
// regard to case.
class NORLIB1_API BCFontList : public BCSingleLinkedList {
  public:
    // The faces of the machine, one entry each, in alphabetical order.
    BCFontList();
    // The sizes of `face` on `device`, smallest first: each size of a bitmap face, the
    // usual sizes of a scalable one. Empty when the device has no such face.
    BCFontList(BCDisplayDevice* device, const char* face);
    ~BCFontList() override;

    int CmpKey(void* key, void* itemKey) override;
    int DeleteItem(void* key, void* item) override;

    // Whether a face is listed; the current entry does not move.
    int HasFace(const char* face) const;
    BCFontEntry* GetCrntEntry() { return static_cast<BCFontEntry*>(GetCrntItem()); }
    // Of the current entry; empty or 0 without one.
    const char* GetFontName();
    unsigned int GetFontPoints(BCDisplayDevice* device);

  private:
    int Add(const char* face, short width, short height);
};
