#pragma once
#include "bcdialog.h"
#include "bcfinddlg.h"
#include "bcfwd.h"
#include "norlib2api.h"

class BCFileListBox;
class BCPushButton;
class BCStringEdit;

// The browsing dialog: a name field, the files matching the current pattern, the directories
// and drives, the current path, OK and Cancel. It does not run by itself: the open and new
// dialogs run it in their constructors. After the run, GetResult is 1 for a chosen name (read
// it with GetFileName) and 0 for Cancel. Browsing changes the process's current directory.
class NORLIB2_API BCFileDialog : public BCModalDialog {
  public:
    BCFileDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* ext,
                 unsigned char newFile, BCApplication* app);
    ~BCFileDialog() override;
    BCFileDialog(const BCFileDialog&) = delete;
    BCFileDialog& operator=(const BCFileDialog&) = delete;

    LRESULT Initialize(BCEvent* event) override;
    LRESULT ButtonSnglClk(BCEvent* event) override;
    LRESULT ListBoxSnglClk(BCEvent* event) override;
    LRESULT ListBoxDblClk(BCEvent* event) override;
    LRESULT EditChange(BCEvent* event) override;
    // Closing the window is cancelling.
    LRESULT Close(BCEvent* event) override;

    virtual void InitFileList();
    virtual void InitOkButton();
    virtual void InitNameEdit();
    // Lets the control objects go and ends the dialog with `result`.
    virtual int WindowRst(int result);
    virtual void OkClick();
    // The selected file into `buffer` (121 bytes) and the name field.
    virtual void GetListFile(char* buffer);
    // The selected directory or drive, joined with the pattern, into `buffer` (121 bytes) and
    // the name field.
    virtual void GetListDirs(char* buffer);
    // Adds the default extension, then accepts the name, lists another directory or pattern,
    // or says why the name will not do (messages 10072, 10073, 3202).
    virtual void FileChk(char* name);

    // Names and patterns are kept cut to 120 characters.
    void SetFileName(const char* name);
    // Copies into `buffer` (121 bytes) and returns it; with null, the dialog's own text.
    char* GetFileName(char* buffer);
    // Up to 4 characters with the dot (".TXT"); while running, lists "*" + ext ("*.*" for null).
    void SetFileExt(const char* ext);
    char* GetFileExt(char* buffer);
    unsigned char IsNewFile() const { return blNewFile; }

  private:
    // Shows `text` in the name field, focused and wholly selected.
    void ShowName(const char* text);
    // Keeps the name and ends the dialog with 1.
    void Accept(const char* name);
    // Says why the name will not do; the dialog stays with the name selected.
    void Refuse(unsigned int messageId, const char* name);
    // The directory list after the file list may have changed the current directory.
    void RelistDirs();

  protected:
    char caFileName[121];
    char caFileExt[5];
    char caDirPat[121];
    BCStringEdit* opNameEdit;
    BCFileListBox* opFileList;
    BCFileListBox* opDirList;
    BCPushButton* opOkButton;
    unsigned char blNewFile;
};

// Runs at once; the chosen name must exist.
class NORLIB2_API BCOpenDialog : public BCFileDialog {
  public:
    BCOpenDialog(const char* ext, const BCResID& dialogTemplate, BCWindow* parent,
                 BCApplication* app);
};

// Runs at once; the chosen name must not exist yet.
class NORLIB2_API BCNewDialog : public BCFileDialog {
  public:
    BCNewDialog(const char* ext, const BCResID& dialogTemplate, BCWindow* parent,
                BCApplication* app);
};

// A name-entry dialog that runs at once, offering `name` (its file part when it is longer
// than the field's 65 characters): adds `ext` to a name without a dot, reports an invalid
// name (10073) and asks before overwriting (10086). Read GetResult and GetString.
class NORLIB2_API BCSaveAsDialog : public BCStringDialog {
  public:
    BCSaveAsDialog(const char* name, const char* ext, const BCResID& dialogTemplate,
                   BCWindow* parent, BCApplication* app);

  private:
    // After OK: adds the extension, then refuses an invalid name or asks before overwriting.
    void ConfirmName(const char* ext);
};
