#include "bccombo.h"

#include <cstring>
#include <vector>

#include "bcformat.h"
#include "bcids2.h"
#include "bclist.h"

namespace {
// Child, visible, border, vertical scroll bar.
constexpr long kComboStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL;
// The edit text that a selected-text read looks at, with its terminator.
constexpr unsigned int kSelectionWindow = 132;
// An item rendered as an entry's text, and an entry read back for a list.
constexpr unsigned long kRenderSize = 256;
constexpr unsigned int kEntrySize = 260;
} // namespace

BCComboBox::BCComboBox(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCListControl(id, dialog, bcids::kTypeComboBox, app) {}

BCComboBox::BCComboBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                       long style, const char* text, BCApplication* app, int create)
    : BCListControl("COMBOBOX", style | kComboStyle, id, parent, pos, size, bcids::kTypeComboBox,
                    app) {
    if (!create)
        return;
    Create(text ? text : "");
    if (text && *text)
        SetText(text);
}

LRESULT BCComboBox::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(hWnd, message, wParam, lParam);
}

// A failed add shows message 0 on purpose: callers of old tell an add failure from an insert
// failure by it, so only Insert names the failure.
int BCComboBox::Append(void* item) {
    if (!HandleCheck())
        return -1;
    int index = static_cast<int>(
        Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item ? item : const_cast<char*>(""))));
    if (index < 0)
        DispObjectMsg(0u);
    return index;
}

int BCComboBox::Insert(void* item, int index) {
    if (!HandleCheck())
        return 0;
    int result =
        static_cast<int>(Send(CB_INSERTSTRING, static_cast<WPARAM>(index),
                              reinterpret_cast<LPARAM>(item ? item : const_cast<char*>(""))));
    if (result >= 0)
        return 1;
    DispObjectMsg(result == CB_ERR ? bcids::kMsgComboError : bcids::kMsgComboNoMemory);
    return 0;
}

int BCComboBox::Delete(int index) {
    if (!HandleCheck())
        return 0;
    if (index == -1)
        index = GetCount() - 1;
    return Send(CB_DELETESTRING, static_cast<WPARAM>(index), 0) >= 0;
}

int BCComboBox::DeleteAll() {
    return HandleCheck() ? (Send(CB_RESETCONTENT, 0, 0), 1) : 0;
}

int BCComboBox::GetCount() {
    return HandleCheck() ? static_cast<int>(Send(CB_GETCOUNT, 0, 0)) : -1;
}

int BCComboBox::GetCrntInd() {
    return HandleCheck() ? static_cast<int>(Send(CB_GETCURSEL, 0, 0)) : -1;
}

int BCComboBox::GoTo(int index) {
    return HandleCheck() && Send(CB_SETCURSEL, static_cast<WPARAM>(index), 0) != CB_ERR;
}

int BCComboBox::GetCrntItem(char* buffer) {
    int index = GetCrntInd();
    return index >= 0 && buffer &&
           Send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)) > 0;
}

// The entry is read as a value; a box with texts gives their first bytes, never more than the
// buffer holds.
void* BCComboBox::GetCrntItem() {
    int index = GetCrntInd();
    if (index < 0)
        return nullptr;
    int length = GetItemLen(index);
    std::vector<char> bytes(static_cast<size_t>(length > 0 ? length : 0) + sizeof(void*) + 1);
    if (Send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(bytes.data())) <= 0)
        return nullptr;
    void* value = nullptr;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

unsigned int BCComboBox::GetText(char* buffer, unsigned int size) {
    if (!HandleCheck() || !buffer || size == 0)
        return size;
    int count =
        GetWindowTextA(hWnd, buffer, static_cast<int>(size > 0x7FFFFFFFu ? 0x7FFFFFFFu : size));
    buffer[count] = '\0';
    return static_cast<unsigned int>(count);
}

int BCComboBox::SetText(const char* text) {
    if (!HandleCheck())
        return 0;
    SetWindowTextA(hWnd, text ? text : "");
    return 1;
}

int BCComboBox::GetTextLen() {
    return HandleCheck() ? GetWindowTextLengthA(hWnd) : 0;
}

int BCComboBox::SetCharLimit(unsigned int count) {
    return HandleCheck() ? (Send(CB_LIMITTEXT, count, 0), 1) : 0;
}

BCLimits BCComboBox::GetCrntSelection() {
    if (!HandleCheck())
        return BCLimits(0, 0);
    DWORD both = static_cast<DWORD>(Send(CB_GETEDITSEL, 0, 0));
    return BCLimits(LOWORD(both), HIWORD(both));
}

void BCComboBox::SetCrntSelection(BCLimits limits) {
    if (HandleCheck())
        Send(CB_SETEDITSEL, 0,
             static_cast<LPARAM>((static_cast<DWORD>(limits.GetEnd()) << 16) +
                                 (static_cast<DWORD>(limits.GetStart()) & 0xFFFFu)));
}

unsigned int BCComboBox::GetSelectedText(char* buffer, unsigned int size) {
    if (!HandleCheck() || !buffer)
        return 0;
    BCLimits selection = GetCrntSelection();
    char local[kSelectionWindow];
    unsigned int count = GetText(local, kSelectionWindow);
    unsigned long start = static_cast<unsigned long>(selection.GetStart());
    unsigned long end = static_cast<unsigned long>(selection.GetEnd());
    if (count == 0 || size == 0 || end < start || start > count)
        return 0;
    if (end > count)
        end = count;
    if (end - start > size)
        end = start + size - 1;
    std::memcpy(buffer, local + start, end - start);
    buffer[end - start] = '\0';
    return static_cast<unsigned int>(end - start);
}

int BCComboBox::GetItem(int index, char* buffer) {
    return HandleCheck() && buffer &&
           Send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)) !=
               CB_ERR;
}

int BCComboBox::GetItemLen(int index) {
    return HandleCheck() ? static_cast<int>(Send(CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0))
                         : -1;
}

void* BCComboBox::GetItemData(int index) {
    if (!HandleCheck())
        return nullptr;
    LRESULT data = Send(CB_GETITEMDATA, static_cast<WPARAM>(index), 0);
    return data == CB_ERR ? nullptr : reinterpret_cast<void*>(data);
}

int BCComboBox::SetItemData(int index, void* data) {
    return HandleCheck() && Send(CB_SETITEMDATA, static_cast<WPARAM>(index),
                                 reinterpret_cast<LPARAM>(data)) != CB_ERR;
}

int BCComboBox::Find(void* key, int start, int select, int byData) {
    if (!HandleCheck())
        return -1;
    if (byData)
        return FindByData(key, start, select);
    return static_cast<int>(Send(select ? CB_SELECTSTRING : CB_FINDSTRING,
                                 static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(key)));
}

// After `start` to the end, then from the top up to `start` itself, which comes last.
int BCComboBox::FindByData(void* key, int start, int select) {
    int count = GetCount();
    for (int step = 0; step < count; ++step) {
        int i = (start + 1 + step) % count;
        if (i < 0)
            i += count;
        if (Send(CB_GETITEMDATA, static_cast<WPARAM>(i), 0) != reinterpret_cast<LRESULT>(key))
            continue;
        if (!select)
            return i;
        return GoTo(i);
    }
    return -1;
}

int BCComboBox::LoadFromList(BCList* list, BCFormat& format, int byPointer, int keepData) {
    if (!HandleCheck() || !list || !list->IsRenderable(format))
        return 0;
    if (!list->Home())
        return 1;
    unsigned long count = list->GetCount();
    EnableRedraw(0);
    bool loaded = true;
    for (unsigned long i = 0; i < count && loaded; ++i) {
        void* key = list->GetCrntKey();
        void* item = list->GetCrntItem();
        loaded = LoadItem(list, format, byPointer, keepData, key, item);
        if (!loaded)
            list->Unlock(key, item);
        else
            list->Next();
    }
    EnableRedraw(1);
    return loaded ? 1 : 0;
}

bool BCComboBox::LoadItem(BCList* list, BCFormat& format, int byPointer, int keepData, void* key,
                          void* item) {
    int index;
    if (byPointer) {
        index = Append(item);
    } else {
        char text[kRenderSize] = "";
        if (!list->GetItemData(key, item, text, kRenderSize, format))
            return false;
        text[kRenderSize - 1] = '\0';
        index = Append(text);
    }
    if (index < 0)
        return false;
    if (keepData)
        return SetItemData(index, item) != 0;
    if (!byPointer)
        list->Unlock(key, item);
    return true;
}

int BCComboBox::SaveToList(BCList* list, BCFormat& format, int byData) {
    if (!HandleCheck() || !list || !list->IsRenderable(format))
        return 0;
    int count = GetCount();
    for (int i = 0; i < count; ++i) {
        if (byData) {
            if (!list->Append(nullptr, GetItemData(i)))
                return 0;
            continue;
        }
        int length = GetItemLen(i);
        if (length < 0 || length >= static_cast<int>(kEntrySize))
            return 0;
        char text[kEntrySize];
        if (!GetItem(i, text) || !list->SetItemData(text, std::strlen(text), format))
            return 0;
    }
    return 1;
}
