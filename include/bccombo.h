#pragma once
#include "bccontrol.h"
#include "bcfwd.h"
#include "norlib2api.h"

class BCList;
class BCFormat;

// The system's combo box: a list of entries and an edit field. Every operation asks for the
// window first; the value in brackets is the result without one.
class NORLIB2_API BCComboBox : public BCListControl {
  public:
    BCComboBox(const BCResID& id, BCDialog* dialog, BCApplication* app);
    // Created at once when `create` is non-zero; a non-empty `text` then fills the edit field.
    BCComboBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
               long style, const char* text, BCApplication* app, int create);

    // The new index, or the negative failure result after a message [-1].
    int Append(void* item) override;
    // 1, or 0 after message 10071 (failure) or 10070 (no room) [0].
    int Insert(void* item, int index) override;
    // Index -1 is the last entry [0].
    int Delete(int index) override;
    int DeleteAll() override;
    int GetCount() override;
    int GetCrntInd() override;
    int GoTo(int index) override;
    int GetCrntItem(char* buffer) override;
    // The selected entry of a box whose entries are values rather than texts [null].
    void* GetCrntItem();

    // The edit field: at most size - 1 characters; `size` without a window.
    unsigned int GetText(char* buffer, unsigned int size);
    int SetText(const char* text);
    int GetTextLen();
    int SetCharLimit(unsigned int count);
    // (start, end) of the edit field's selection [(0, 0)].
    BCLimits GetCrntSelection();
    void SetCrntSelection(BCLimits limits);
    // The selected part of the edit field (of its first 131 characters), cut to size - 1
    // characters when longer than `size`; the count copied [0].
    unsigned int GetSelectedText(char* buffer, unsigned int size);

    int GetItem(int index, char* buffer);
    int GetItemLen(int index);
    void* GetItemData(int index);
    int SetItemData(int index, void* data);
    // By text (`byData` zero): the index found, selecting it when `select` is non-zero. By data
    // word: searches after `start`, wrapping once; the index, or with `select` 1 when selected
    // [-1 when nothing matched].
    int Find(void* key, int start, int select, int byData);
    // Appends every item of `list`, rendered in `format` or (with `byPointer`) as the item
    // pointer itself; with `keepData` each entry keeps its item as data and the item stays
    // locked. 1, or 0 on the first failure, the entries so far staying.
    int LoadFromList(BCList* list, BCFormat& format, int byPointer, int keepData);
    // Appends every entry to `list`: its text rendered in `format`, or (with `byData`) its data
    // word as the item. 1, or 0 on the first failure.
    int SaveToList(BCList* list, BCFormat& format, int byData);

  private:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const;
    int FindByData(void* key, int start, int select);
    // Appends item `index` of an iteration; false when the load must stop.
    bool LoadItem(BCList* list, BCFormat& format, int byPointer, int keepData, void* key,
                  void* item);
};

// A list box of a dialog showing the files and directories that match a pattern, with the
// pattern last listed; the current directory shows in the dialog's path label.
class NORLIB2_API BCFileListBox : public BCListBox {
  public:
    BCFileListBox(const BCResID& list, BCDialog* dialog, const BCResID& pathLabel,
                  BCApplication* app);

    // Lists `spec` (which may change the current directory; its file part is written back)
    // and keeps its pattern and extension; the listing's result, 0 when it cannot run.
    int ListFiles(char* spec, unsigned int attrib);
    // The same, keeping the pattern last listed.
    int ListDirs(char* spec, unsigned int attrib);
    // The selected entry; a directory or drive comes with the pattern appended. 1, else 0.
    int GetCrntFile(char* buffer);
    // 0 an existing file, 2 a new file name, 3 another directory or pattern listed, 1 invalid.
    // A wildcard name with a drive is replaced by the pattern.
    int CheckFile(char* name);
    const char* GetDfltPat() const { return caDfltPat; }
    const char* GetDfltExt() const { return caDfltExt; }
    unsigned int GetAttrib() const { return wAttrib; }
    void Display(const char* prefix) override;

  private:
    // The dialog's window when the listing can run, else null.
    HWND DialogHandle() const;
    int List(char* spec, unsigned int attrib);
    int CheckDirectory(const char* name);
    int CheckExisting(const char* name);

    char caDfltPat[121];
    char caDfltExt[10];
    unsigned int wAttrib;
    unsigned int wPathID;
};
