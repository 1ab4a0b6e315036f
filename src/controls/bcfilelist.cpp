#include <cstdio>
#include <cstring>
#include <string>

#include "bccombo.h"
#include "bcdialog.h"
#include "bcids2.h"
#include "controls/bcfilepath.h"
#include "bcplatform.h"

namespace {
// The part of a directory name that CheckFile keeps, and what it appends.
constexpr size_t kDirectoryPart = 132;
constexpr const char* kAllFiles = "*.*";

// Copies at most `count` characters of `text` and terminates.
void CopyCut(char* target, const char* text, size_t count) {
    size_t length = std::strlen(text);
    if (length > count)
        length = count;
    std::memcpy(target, text, length);
    target[length] = '\0';
}

bool NamesDirectory(const char* name) {
    size_t length = std::strlen(name);
    return length == 0 || name[length - 1] == '\\' || name[length - 1] == '/';
}
} // namespace

BCFileListBox::BCFileListBox(const BCResID& list, BCDialog* dialog, const BCResID& pathLabel,
                             BCApplication* app)
    : BCListBox(list, dialog, app), caDfltPat{}, caDfltExt{}, wAttrib(0),
      wPathID(pathLabel.GetResNum()) {
    SetObjectType(bcids::kTypeFileListBox);
}

HWND BCFileListBox::DialogHandle() const {
    BCDialog* dialog = GetDialog();
    if (!HandleCheck() || !dialog || !dialog->HandleCheck())
        return nullptr;
    return dialog->GetHandle();
}

int BCFileListBox::List(char* spec, unsigned int attrib) {
    wAttrib = attrib;
    EnableRedraw(0); // a large directory would otherwise repaint the box for every name
    int listed = DlgDirListA(DialogHandle(), spec, static_cast<int>(GetID()),
                             static_cast<int>(wPathID), attrib);
    EnableRedraw(1);
    if (!listed)
        BCTraceFailure("DlgDirListA");
    return listed;
}

int BCFileListBox::ListFiles(char* spec, unsigned int attrib) {
    if (!DialogHandle() || !spec)
        return 0;
    CopyCut(caDfltPat, bcpath::Tail(spec), sizeof caDfltPat - 1);
    const char* dot = std::strchr(caDfltPat, '.');
    CopyCut(caDfltExt, dot ? dot + 1 : "", sizeof caDfltExt - 1);
    return List(spec, attrib);
}

int BCFileListBox::ListDirs(char* spec, unsigned int attrib) {
    if (!DialogHandle() || !spec)
        return 0;
    return List(spec, attrib);
}

// The length handed to the selection call is that of the cleared buffer, as callers of old
// sized it; the call then writes the selection as the platform allows.
int BCFileListBox::GetCrntFile(char* buffer) {
    if (!buffer)
        return 0;
    buffer[0] = '\0';
    HWND dialog = DialogHandle();
    if (!dialog)
        return 0;
    BOOL directory = DlgDirSelectExA(dialog, buffer, static_cast<int>(std::strlen(buffer)),
                                     static_cast<int>(GetID()));
    if (!buffer[0])
        return 0;
    if (directory)
        std::strcat(buffer, caDfltPat);
    return 1;
}

int BCFileListBox::CheckFile(char* name) {
    if (!name)
        return 1;
    if (!bcpath::HasWildcard(name)) {
        if (NamesDirectory(name))
            return CheckDirectory(name);
        return CheckExisting(name);
    }
    // The listing writes the file part back, so the drive is looked for first.
    bool drive = std::strchr(name, ':') != nullptr;
    if (!ListFiles(name, wAttrib))
        return 1;
    if (drive)
        std::strcpy(name, caDfltPat);
    return 3;
}

// 0 an existing file, 2 a new name in an existing directory, 1 anything else.
int BCFileListBox::CheckExisting(const char* name) {
    switch (bcpath::ProbeFile(name)) {
    case bcpath::Probe::kExists:
        return 0;
    case bcpath::Probe::kNew:
        return 2;
    default:
        return 1;
    }
}

// Lists the directory with the pattern last listed, or every file.
int BCFileListBox::CheckDirectory(const char* name) {
    char spec[2 * kDirectoryPart + 1];
    CopyCut(spec, name, kDirectoryPart);
    CopyCut(spec + std::strlen(spec), caDfltPat[0] ? caDfltPat : kAllFiles, kDirectoryPart);
    return ListFiles(spec, wAttrib) ? 3 : 1;
}

void BCFileListBox::Display(const char* prefix) {
    DispObjectMsg("%scaDfltPat=%s, caDfltExt=%s, wAttrib=%04X, wPathID=%d.", prefix ? prefix : "",
                  caDfltPat, caDfltExt, wAttrib, static_cast<int>(wPathID));
}
