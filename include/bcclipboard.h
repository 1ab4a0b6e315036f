#pragma once
// The platform header first: its GetObject macro must rename the member here as it does in
// every source that includes it.
#include <windows.h>

#include "norlib2api.h"
#include "bcformat.h"
#include "bcrendata.h"

class BCBitmap;
class BCWindow;

// The system clipboard, bound to an owner window (not owned; may be null). Each operation
// opens and closes the clipboard itself, so nothing stays open between calls; when another
// program holds it, operations return 0 (GetType format 0) without a message.
//
// The private formats 0x8001-0x8003 are registered with the system by name ("Norlib2 Private
// Text", "Norlib2 Private Binary", "Norlib2 Text Data"), so any program can find them under
// the numbers the system gives those names. Callers always use 0x8001-0x8003: the class
// translates them on the way in and translates the system's numbers back on the way out.
//
// Blocks given to the clipboard are movable, shareable global memory (flags 0x2002) and
// belong to it from then on; a block that could not be handed over is freed here.
class NORLIB2_API BCClipboard : public BCObject {
  public:
    explicit BCClipboard(BCWindow* owner);
    ~BCClipboard() override;

    // Hands `handle` over under the format without emptying the clipboard first (Clear does
    // that); a null handle asks for delayed rendering. Returns 1 when the clipboard opened.
    int SetHandle(const BCFormat& format, void* handle);
    // Copies `size` bytes into a new block; null `data` puts a null handle. A block that
    // cannot be allocated is reported with message 10069.
    int SetData(const BCFormat& format, const void* data, unsigned long size);
    // The text and its terminating NUL.
    int SetText(const char* text);
    // Hands the bitmap's picture over (flag 8 marks it as no longer the bitmap's); a null
    // bitmap puts a null handle.
    int SetBitmap(BCBitmap* bitmap);
    // Puts the object's rendering in the format with a NUL after it. An object that renders
    // nothing fails and leaves the clipboard as it was.
    int SetObject(const BCFormat& format, BCRenderableData& object);

    int IsType(const BCFormat& format);
    // The format the system lists after `previous`; start with format 0. Format 0 means the
    // end, or that the clipboard could not be opened.
    BCFormat GetType(const BCFormat& previous);

    // The system's handle for the format (null when there is none); non-zero when non-null.
    // The handle stays the clipboard's.
    int GetHandle(const BCFormat& format, void*& handle);
    // Copies exactly `size` bytes, whatever the block's size: the caller must know it.
    int GetData(const BCFormat& format, void* buffer, unsigned long size);
    // Copies the text, at most max - 1 characters and a NUL.
    int GetText(char* buffer, unsigned long max);
    // Length of the clipboard's text; 0 when there is none.
    unsigned long GetTextLen();
    // A new bitmap (the caller owns it) over the clipboard's picture, flag 16 set: the picture
    // itself stays the clipboard's. `out` is null on failure.
    int GetBitmap(BCBitmap*& out);
    // Gives the whole block, as large as the system made it, to the object's SetData and
    // returns its result.
    unsigned long GetObject(const BCFormat& format, BCRenderableData& object);

    int Clear();
    void Display(const char* prefix) override;

  private:
    HWND OwnerHandle() const;

    BCWindow* opWindow;
};
