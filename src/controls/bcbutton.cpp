#include "bcbutton.h"

#include <initializer_list>

#include "bcgdi.h"
#include "bcids2.h"
#include "bclib2.h"
#include "bcmodule.h"
#include "bcplatform.h"

namespace {
constexpr long kVisibleChild = WS_CHILD | WS_VISIBLE;
constexpr long kRadioStyle = kVisibleChild | BS_RADIOBUTTON;
constexpr long kCheckStyle = kVisibleChild | BS_CHECKBOX;
constexpr long kGroupStyle = kVisibleChild | BS_GROUPBOX;
constexpr long kSizeBoxStyle = kVisibleChild | SBS_SIZEBOX;
constexpr long kIconStyle = kVisibleChild | SS_ICON;
static_assert(kRadioStyle == 0x50000004 && kCheckStyle == 0x50000002 && kGroupStyle == 0x50000007 &&
                  kSizeBoxStyle == 0x50000008 && kIconStyle == 0x50000003,
              "control styles");
// The control id that makes a push button the default one.
constexpr unsigned int kDefaultButtonId = 1;
// Longest label read from the string table for a static text.
constexpr unsigned int kResTextMax = 80;

// The shared text operations of buttons and labels; 0 without a window.
int PutText(HWND window, const char* text) {
    return window ? BCTraced(SetWindowTextA(window, text ? text : ""), "SetWindowTextA") : 0;
}

int TakeText(HWND window, char* buffer, unsigned int size) {
    if (!window || !buffer || size == 0)
        return 0;
    int count = GetWindowTextA(window, buffer, static_cast<int>(size));
    buffer[count] = '\0';
    return count;
}

int TextLength(HWND window) {
    return window ? GetWindowTextLengthA(window) : 0;
}

HICON FindIcon(const BCResID& icon, BCModule* own) {
    BCModule* library = BCGetDLLModule2();
    for (BCModule* module : {icon.GetModule(), own, library}) {
        HICON found =
            module ? LoadIconA(static_cast<HINSTANCE>(module->GetResources()), icon.GetResource())
                   : nullptr;
        if (found)
            return found;
    }
    // The system's own icons (IDI_...) have no module.
    return BCTraced(LoadIconA(nullptr, icon.GetResource()), "LoadIconA");
}

BCSize IconSize() {
    return BCSize(static_cast<short>(GetSystemMetrics(SM_CXICON)),
                  static_cast<short>(GetSystemMetrics(SM_CYICON)));
}

BCSize ScrollBarSize() {
    return BCSize(static_cast<short>(GetSystemMetrics(SM_CXVSCROLL)),
                  static_cast<short>(GetSystemMetrics(SM_CYHSCROLL)));
}
} // namespace

BCButtonControl::BCButtonControl(const BCResID& id, BCDialog* dialog, unsigned int typeCode,
                                 BCApplication* app)
    : BCControlWindow(id, dialog, typeCode, app) {}

BCButtonControl::BCButtonControl(long style, unsigned int id, BCWindow* parent,
                                 const BCPosition& pos, const BCSize& size, unsigned int typeCode,
                                 const char* text, BCApplication* app)
    : BCControlWindow("BUTTON", style, id, parent, pos, size, typeCode, app) {
    if (text)
        Create(text);
}

LRESULT BCButtonControl::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(hWnd, message, wParam, lParam);
}

int BCButtonControl::SetText(const char* text) {
    return PutText(HandleCheck() ? hWnd : nullptr, text);
}

int BCButtonControl::GetText(char* buffer, unsigned int size) {
    return TakeText(HandleCheck() ? hWnd : nullptr, buffer, size);
}

int BCButtonControl::GetTextLen() const {
    return TextLength(HandleCheck() ? hWnd : nullptr);
}

BCRadioButton::BCRadioButton(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCButtonControl(id, dialog, bcids::kTypeRadioButton, app) {}

BCRadioButton::BCRadioButton(unsigned int id, BCWindow* parent, const BCPosition& pos,
                             const BCSize& size, const char* text, BCApplication* app)
    : BCButtonControl(kRadioStyle, id, parent, pos, size, bcids::kTypeRadioButton, text, app) {}

int BCRadioButton::GetState() const {
    return HandleCheck() && Send(BM_GETCHECK, 0, 0) ? 1 : 0;
}

int BCRadioButton::SetState(unsigned int state) {
    return HandleCheck() ? static_cast<int>(Send(BM_SETCHECK, state, 0)) : 0;
}

BCPushButton::BCPushButton(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCButtonControl(id, dialog, bcids::kTypePushButton, app) {}

BCPushButton::BCPushButton(unsigned int id, BCWindow* parent, const BCPosition& pos,
                           const BCSize& size, const char* text, BCApplication* app)
    : BCButtonControl(kVisibleChild | (id == kDefaultButtonId ? BS_DEFPUSHBUTTON : 0), id, parent,
                      pos, size, bcids::kTypePushButton, text, app) {}

BCCheckBox::BCCheckBox(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCButtonControl(id, dialog, bcids::kTypeCheckBox, app) {}

BCCheckBox::BCCheckBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                       const char* text, BCApplication* app)
    : BCButtonControl(kCheckStyle, id, parent, pos, size, bcids::kTypeCheckBox, text, app) {}

int BCCheckBox::GetState() const {
    return HandleCheck() && Send(BM_GETCHECK, 0, 0) ? 1 : 0;
}

int BCCheckBox::SetState(int state) {
    return HandleCheck() ? static_cast<int>(Send(BM_SETCHECK, static_cast<WPARAM>(state), 0)) : 0;
}

BCGroupBox::BCGroupBox(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCButtonControl(id, dialog, bcids::kTypeGroupBox, app) {}

BCGroupBox::BCGroupBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                       const char* text, BCApplication* app)
    : BCButtonControl(kGroupStyle, id, parent, pos, size, bcids::kTypeGroupBox, text, app) {}

BCGroupBox::~BCGroupBox() {
    Intercept(-1);
    delete SetBackground(nullptr);
}

BCSizeBox::BCSizeBox(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCScrollBar(id, dialog, BC_SCROLL_SIZEBOX, bcids::kTypeSizeBox, app) {}

BCSizeBox::BCSizeBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                     BCApplication* app)
    : BCScrollBar(BC_SCROLL_SIZEBOX, kSizeBoxStyle, id, parent, pos, size, bcids::kTypeSizeBox,
                  app) {
    Intercept(-1);
}

BCSizeBox::BCSizeBox(unsigned int id, BCWindow* parent, BCApplication* app)
    : BCSizeBox(id, parent, BCGetNullPos(), ScrollBarSize(), app) {}

// The system's picture first, then a right and a bottom edge line over it.
LRESULT BCSizeBox::Paint(BCEvent* event) {
    long result = DefaultEvent(event);
    BCRectangle client = GetClientRect();
    short right = static_cast<short>(client.GetWidth() - 1);
    short bottom = static_cast<short>(client.GetHeight() - 1);
    if (!SelectDC())
        return result;
    MoveTo(BCPosition(right, 0));
    LineTo(BCPosition(right, bottom));
    LineTo(BCPosition(0, bottom));
    ReleaseDC();
    return result;
}

BCStaticControl::BCStaticControl(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCControlWindow(id, dialog, bcids::kTypeStaticControl, app) {}

BCStaticControl::BCStaticControl(unsigned int id, BCWindow* parent, const BCPosition& pos,
                                 const BCSize& size, long style, int create, BCApplication* app)
    : BCControlWindow("STATIC", style, id, parent, pos, size, id, app) {
    if (create)
        Create("");
}

BCStaticText::BCStaticText(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCStaticControl(id, dialog, app) {
    SetObjectType(bcids::kTypeStaticText);
}

BCStaticText::BCStaticText(unsigned int id, BCWindow* parent, const BCPosition& pos,
                           const BCSize& size, const char* text, long style, BCApplication* app)
    : BCStaticControl(id, parent, pos, size, style, 0, app) {
    SetObjectType(bcids::kTypeStaticText);
    if (text) {
        Create(text);
    } else if (id != 0) {
        char label[kResTextMax + 1] = "";
        BCGetResString(id, label, sizeof label, GetModule());
        Create(label);
    }
}

int BCStaticText::SetText(const char* text) {
    return PutText(HandleCheck() ? hWnd : nullptr, text);
}

int BCStaticText::GetText(char* buffer, unsigned int size) {
    return TakeText(HandleCheck() ? hWnd : nullptr, buffer, size);
}

int BCStaticText::GetTextLen() const {
    return TextLength(HandleCheck() ? hWnd : nullptr);
}

BCStaticIcon::BCStaticIcon(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCStaticControl(id, dialog, app) {
    SetObjectType(bcids::kTypeStaticIcon);
}

BCStaticIcon::BCStaticIcon(unsigned int id, BCWindow* parent, const BCPosition& pos,
                           const BCResID& icon, BCApplication* app)
    : BCStaticControl(id, parent, pos, IconSize(), kIconStyle, 0, app) {
    SetObjectType(bcids::kTypeStaticIcon);
    // Loaded icons are shared by the system: nothing to free later.
    HICON picture = FindIcon(icon, GetModule());
    if (Create("") && picture)
        SendMessageA(hWnd, STM_SETICON, reinterpret_cast<WPARAM>(picture), 0);
}
