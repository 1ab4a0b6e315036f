#include "bctextdata.h"

#include <new>

#include "bcids2.h"

namespace {
constexpr unsigned long kNoLine = 0xFFFFFFFFul;
} // namespace

BCTextData::BCTextData(BCText* text, BCWindow* window, const char* fileExt, const char* fileName,
                       unsigned int flags, BCUpdaterList* updaters)
    : BCFileData(text, window, fileExt, fileName, flags, updaters), blLfOnly(0) {
    SetObjectType(bcids::kTypeTextData);
    if (!text)
        SetObject(new (std::nothrow) BCText(nullptr, 0));
}

BCTextData::BCTextData(BCWindow* window, const char* fileExt, const char* fileName)
    : BCFileData(new (std::nothrow) BCText(nullptr, 0), window, fileExt, fileName, 0, nullptr),
      blLfOnly(0) {
    SetObjectType(bcids::kTypeTextData);
}

BCRenderableData* BCTextData::Dup() {
    return new (std::nothrow) BCTextData(*this);
}

BCText* BCTextData::GetTextObject() const {
    return opData && opData->GetObjectType() == bcids::kTypeText ? static_cast<BCText*>(opData)
                                                                 : nullptr;
}

unsigned long BCTextData::GetText(char* buffer, unsigned long offset, unsigned long count) {
    BCText* text = GetTextObject();
    return text ? text->GetText(buffer, offset, count) : 0;
}

int BCTextData::Search(const char* pattern, unsigned long& position, int matchCase, int wholeWord) {
    BCText* text = GetTextObject();
    return text ? text->Search(pattern, position, matchCase, wholeWord) : 0;
}

unsigned long BCTextData::GetLineOfs(unsigned long line) {
    BCText* text = GetTextObject();
    return text ? text->GetLineOfs(line) : kNoLine;
}

int BCTextData::GetLineStartLen(unsigned long offset, unsigned long& start, unsigned int& length) {
    BCText* text = GetTextObject();
    return text ? text->GetLineStartLen(offset, start, length) : 0;
}

unsigned long BCTextData::GetLineRelOfs(unsigned long offset, long lines) {
    BCText* text = GetTextObject();
    return text ? text->GetLineRelOfs(offset, lines) : 0;
}

unsigned long BCTextData::GetNumLines(unsigned long from, unsigned long to) {
    BCText* text = GetTextObject();
    return text ? text->GetNumLines(from, to) : 0;
}

unsigned int BCTextData::GetTextLine(unsigned int line, char* buffer, unsigned int size) {
    BCText* text = GetTextObject();
    return text ? text->GetTextLine(line, buffer, size) : 0;
}

unsigned long BCTextData::GetTextLen() {
    BCText* text = GetTextObject();
    return text ? text->GetLen(BCGetTextFormat()) : 0;
}

unsigned long BCTextData::Changed(unsigned long result) {
    if (result && (dwFlags & BC_FLAG_NOTIFY))
        UpdateDependents(BC_UPDATE_CHANGED, nullptr);
    return result;
}

unsigned long BCTextData::SetText(const char* chars, unsigned long offset, unsigned long count,
                                  int insert) {
    BCText* text = GetTextObject();
    if (!text)
        return 0;
    SetModified(true);
    return Changed(text->SetText(chars, offset, count, insert));
}

unsigned long BCTextData::DeleteText(unsigned long offset, unsigned long count) {
    BCText* text = GetTextObject();
    if (!text)
        return 0;
    SetModified(true);
    return Changed(text->DeleteText(offset, count));
}

// The text is replaced only once the whole file is in memory.
int BCTextData::ReadDocument(std::istream& is) {
    BCText* text = GetTextObject();
    if (!text)
        return BCFileData::ReadDocument(is);
    int lfOnly = 0;
    int read = text->LoadLines(is, lfOnly);
    if (read > 0) {
        // Views hear of the old contents going as they did when the document was emptied
        // first.
        blLfOnly = lfOnly;
        SetModified(true);
        Notify(BC_UPDATE_CLEARED);
    }
    return read > 0 ? BC_READ_DONE : read < 0 ? BC_READ_NO_MEMORY : BC_READ_FAILED;
}

int BCTextData::WriteDocument(std::ostream& os) {
    BCText* text = GetTextObject();
    return text && blLfOnly ? text->SaveLines(os, blLfOnly) : BCFileData::WriteDocument(os);
}
