#pragma once
#include "bcdialog.h"
#include "bcfwd.h"
#include "norlib2api.h"

class BCCheckBox;
class BCPushButton;
class BCStringEdit;

// Option bits of the find and replace dialogs.
enum BCFindOption : unsigned int {
    BC_FIND_MATCH_CASE = 1,
    BC_FIND_WHOLE_WORD = 2,
    BC_FIND_QUERY = 4 // replace dialog only: ask before each replacement
};

// Results of the find, replace and string dialogs (the message dialog gives the button id).
enum BCFindResult : int { BC_FIND_CANCELLED = 0, BC_FIND_ONE = 1, BC_FIND_ALL = 2 };

// The find dialog runs inside its constructor; read GetResult (1 search, 0 cancelled), the
// pattern and the option bits afterwards. The flags change as the boxes are clicked, so a
// cancelled dialog still holds the toggled flags.
class NORLIB2_API BCFindDialog : public BCModalDialog {
  public:
    BCFindDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* pattern,
                 unsigned int flags, BCApplication* app);
    ~BCFindDialog() override;
    BCFindDialog(const BCFindDialog&) = delete;
    BCFindDialog& operator=(const BCFindDialog&) = delete;

    LRESULT Initialize(BCEvent* event) override;
    LRESULT ButtonSnglClk(BCEvent* event) override;
    LRESULT EditChange(BCEvent* event) override;
    // Closing the window is cancelling.
    LRESULT Close(BCEvent* event) override;
    // Deletes the control objects; they live only while the dialog runs.
    void Reset();
    // Texts are kept cut to 120 characters.
    void SetPattern(const char* pattern);
    // Copies into `buffer` (121 bytes) and returns it; with null, the dialog's own text.
    char* GetPattern(char* buffer);
    unsigned int GetFlags() const { return wFlags; }

  private:
    char caPattern[121];
    unsigned int wFlags;
    BCStringEdit* opPatternEdit;
    BCCheckBox* opMatchCase;
    BCCheckBox* opWholeWord;
    BCPushButton* opFindButton;
};

// Results: 1 replace the next, 2 replace all, 0 cancelled.
class NORLIB2_API BCReplaceDialog : public BCModalDialog {
  public:
    BCReplaceDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* pattern,
                    const char* replacement, unsigned int flags, BCApplication* app);
    ~BCReplaceDialog() override;
    BCReplaceDialog(const BCReplaceDialog&) = delete;
    BCReplaceDialog& operator=(const BCReplaceDialog&) = delete;

    LRESULT Initialize(BCEvent* event) override;
    LRESULT ButtonSnglClk(BCEvent* event) override;
    LRESULT EditChange(BCEvent* event) override;
    LRESULT Close(BCEvent* event) override;
    void Reset();
    void SetPattern(const char* pattern);
    char* GetPattern(char* buffer);
    void SetReplacement(const char* replacement);
    char* GetReplacement(char* buffer);
    unsigned int GetFlags() const { return wFlags; }

  private:
    // Reads both texts, lets the controls go and ends with `result`.
    int Accept(int result);
    int EnableReplace(bool on);

    char caPattern[121];
    char caReplacement[121];
    unsigned int wFlags;
    BCStringEdit* opPatternEdit;
    BCStringEdit* opReplaceEdit;
    BCCheckBox* opMatchCase;
    BCCheckBox* opWholeWord;
    BCCheckBox* opQuery;
    BCPushButton* opReplaceButton;
    BCPushButton* opReplaceAllButton;
};

// One line of text of at most 80 characters. Given a text, it runs at once; given null, the
// derived class runs it (Create("")). Results: 1 accepted, 0 cancelled.
class NORLIB2_API BCStringDialog : public BCModalDialog {
  public:
    BCStringDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* text,
                   unsigned int maxLen, BCApplication* app, unsigned int typeCode = 63);
    ~BCStringDialog() override;
    BCStringDialog(const BCStringDialog&) = delete;
    BCStringDialog& operator=(const BCStringDialog&) = delete;

    LRESULT Initialize(BCEvent* event) override;
    LRESULT ButtonSnglClk(BCEvent* event) override;
    LRESULT EditChange(BCEvent* event) override;
    LRESULT Close(BCEvent* event) override;
    // Makes the OK button, disabled while the text is empty.
    virtual void OkInit();
    void SetString(const char* text);
    char* GetString(char* buffer);
    unsigned int GetMaxLen() const { return wMaxLen; }

  protected:
    char caString[81];
    unsigned int wMaxLen;
    BCStringEdit* opStringEdit;
    BCPushButton* opOkButton;
};

// Shows a message with the template's buttons; GetResult is the id of the button pressed.
// The message is the caller's and is not copied; with none, the template's own text stays.
class NORLIB2_API BCMessageDialog : public BCModalDialog {
  public:
    BCMessageDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* message,
                    BCApplication* app);

    LRESULT Initialize(BCEvent* event) override;
    LRESULT ButtonSnglClk(BCEvent* event) override;

  private:
    const char* lpMessage;
};
