#pragma once
// The platform header first: its DeleteFile macro must rename the member here as it does in
// every source that includes it.
#include <windows.h>

#include "bcdepdata.h"

// A data object tied to a file: the wrapped object's record is the file's content. Carries
// the document commands (new, open, save, save as, close, delete) and the question whether
// to save changes that guards the destructive ones. The window, when given, parents the
// boxes, lends its module and shows the wait cursor; it gets an updater in the list.
class NORLIB2_API BCFileData : public BCDependentData {
  public:
    BCFileData(BCRenderableData* data, BCWindow* window, const char* fileExt, const char* fileName,
               unsigned int flags, BCUpdaterList* updaters);
    // The copy has no window.
    BCFileData(const BCFileData& other);
    BCFileData& operator=(const BCFileData& other);
    ~BCFileData() override;

    BCRenderableData* Dup() override;
    // Each returns non-zero on success.
    virtual int NewFile();
    // Open and save-as choose the name in the library's file dialogs and keep it as a full
    // path. A cancelled dialog or a file that cannot be opened changes nothing.
    virtual int OpenFile();
    // Writes beside the file and replaces it only when the whole record was written, so a
    // failed write never costs the previous file.
    virtual int SaveFile();
    virtual int SaveAsFile();
    virtual int CloseFile();
    virtual int DeleteFile();
    virtual int QuerySaveFile();

    // Reads the named file into the wrapped object: what open does once a name is chosen.
    // A file that cannot be opened gives 0 silently; a read failure shows message 10075, a
    // file too large for memory the library's memory message.
    int LoadFile();
    // Copies of the strings; null stores null. 0 when the copy could not be made.
    int SetFileName(const char* fileName);
    int SetFileExt(const char* fileExt);
    const char* GetFileName() const { return caFileName; }
    const char* GetFileExt() const { return caFileExt; }
    BCWindow* GetWindow() const { return opWindow; }

  protected:
    // How a file's content becomes the document and back: by default the wrapped object's
    // record after emptying the document. Reading returns a BCReadResult.
    virtual int ReadDocument(std::istream& is);
    virtual int WriteDocument(std::ostream& os);

    // Notifies `code` when notification is on.
    void Notify(unsigned int code);
    // The module whose resources and owner the boxes use.
    BCModule* Module() const;
    BCApplication* App() const;

    char* caFileName;
    char* caFileExt;
    BCWindow* opWindow;

  private:
    // Asks about unsaved changes, empties the document, drops its name and sends `code`.
    int Restart(unsigned int code);
    // Reads an opened file into the document, with the wait cursor, message 10075 on a
    // read failure and code 8 on success.
    int ReadOpened(std::istream& in);
    // Writes the record to `path`; 1 when all of it was written.
    int WriteRecord(const char* path);
};

// Results of reading a document.
enum BCReadResult : int {
    BC_READ_FAILED = 0,     // a read error, reported by the caller
    BC_READ_DONE = 1,       // the document holds the file
    BC_READ_NO_MEMORY = 2,  // the file does not fit in memory; the document is as it was
    BC_READ_NOT_CLEARED = 3 // the document could not be emptied: nothing read, nothing said
};

// Notification codes of the document commands.
enum BCFileUpdateCode : unsigned int {
    BC_UPDATE_NEW = 7,
    BC_UPDATE_OPENED = 8,
    BC_UPDATE_SAVED = 9,
    BC_UPDATE_CLOSED = 10
};
