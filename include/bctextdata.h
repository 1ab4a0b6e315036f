#pragma once
#include "bcfiledata.h"
#include "bctext.h"

// The document of the text editor: a file data object wrapping a BCText, so that every
// change is reported to its updaters. Saved alone it is a plain text file.
// Files from other systems: a file whose lines end in LF alone (it holds no CR at all) is
// read with CR LF line ends and written back with LF alone. Any other file, including one
// that mixes CR LF with lone LFs, NUL bytes or bytes 128-255, is taken and written back byte
// for byte; a lone LF then stays inside its line. A file too large for memory is refused and
// the document kept as it was.
class NORLIB2_API BCTextData : public BCFileData {
  public:
    // A null text gets an empty one.
    BCTextData(BCText* text, BCWindow* window, const char* fileExt, const char* fileName,
               unsigned int flags, BCUpdaterList* updaters);
    BCTextData(BCWindow* window, const char* fileExt, const char* fileName);

    BCRenderableData* Dup() override;

    // Forwarded to the text; 0 without one (GetLineOfs: all bits set).
    unsigned long GetText(char* buffer, unsigned long offset, unsigned long count);
    int Search(const char* pattern, unsigned long& position, int matchCase, int wholeWord);
    unsigned long GetLineOfs(unsigned long line);
    int GetLineStartLen(unsigned long offset, unsigned long& start, unsigned int& length);
    unsigned long GetLineRelOfs(unsigned long offset, long lines);
    unsigned long GetNumLines(unsigned long from, unsigned long to);
    unsigned int GetTextLine(unsigned int line, char* buffer, unsigned int size);
    unsigned long GetTextLen();
    // Change the text: modified, forwarded, and code 4 to the updaters when it changed and
    // notification is on.
    unsigned long SetText(const char* text, unsigned long offset, unsigned long count, int insert);
    unsigned long DeleteText(unsigned long offset, unsigned long count);

    // The wrapped text, null when the wrapped object is none or not a text.
    BCText* GetTextObject() const;

    // Whether the document's file had lines ending in LF alone, as it will be written.
    int HasLfOnlyLines() const { return blLfOnly; }

  protected:
    int ReadDocument(std::istream& is) override;
    int WriteDocument(std::ostream& os) override;

  private:
    unsigned long Changed(unsigned long result);

    int blLfOnly;
};
