// TextEdit: one style of editable text, and its private scrap.
//
// Offsets count from 0 and lie between characters. CR ends a line; lines are
// broken between words at the width of destRect unless crOnly is set, when the
// text scrolls sideways instead. At most 32767 characters: a call that would make
// it longer, or for which memory is short, changes nothing. Every call that
// changes a text or its selection draws it, in inPort, and leaves that port's
// settings alone. A TEHandle must come from TENew and not have been disposed of.
// May be called between start and stop of the Toolbox; every call may allocate.
#pragma once

#include "toolbox/quickdraw.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct TERec {
    Rect destRect, viewRect;   // local to inPort
    int16_t selStart, selEnd;  // offsets from 0; equal: a caret
    int16_t active;
    int16_t teLength;          // characters
    Handle hText;              // the characters, no length byte; owned by TextEdit
    int16_t txFont, txSize;
    uint8_t txFace;
    int16_t just;
    GrafPtr inPort;
    uint32_t caretTime;
    int16_t caretState;
    Point scroll;              // how far the text is shifted to show the caret
    Boolean crOnly;
} TERec, **TEHandle;

// Makes it in the current port, with its text settings. Nil when the heap has no room.
// The caller owns it: TEDispose.
TEHandle TENew(const Rect *destRect, const Rect *viewRect);
// Frees the record and its characters.
void TEDispose(TEHandle text);
// Replaces all characters, caret after the last one; draws nothing. The characters
// are copied.
void TESetText(const void *characters, int32_t length, TEHandle text);
// hText, which the record owns: do not dispose of it.
Handle TEGetText(TEHandle text);
// Offsets are cut to the text's length.
void TESetSelect(int32_t start, int32_t end, TEHandle text);
// Inserts any character; Backspace and forward delete (0x7F), the arrows, Home
// and End edit. The caller must keep Command keys away.
void TEKey(int16_t character, TEHandle text);
// Inserts in front of the selection, which stays selected.
void TEInsert(const void *characters, int32_t length, TEHandle text);
// Deletes what is selected.
void TEDelete(TEHandle text);
// Follows the mouse from the press at the local point until the release, and
// scrolls the text while it rests outside. A second press at the same place
// within GetDblTime selects the word; dragging then selects whole words. extend:
// selects from the existing selection to the point.
void TEClick(Point where, Boolean extend, TEHandle text);
// Only an active text shows its selection or caret.
void TEActivate(TEHandle text);
void TEDeactivate(TEHandle text);
// Makes the caret blink; to be called often.
void TEIdle(TEHandle text);
// Redraws the text, clipped to the rectangle, local, and to viewRect.
void TEUpdate(const Rect *r, TEHandle text);
// To be called when the characters were changed through hText: takes over its
// length and cuts the selection to it; draws nothing.
void TECalText(TEHandle text);
// To and from the private scrap, which is not the desk scrap. TECopy with
// nothing selected empties it.
void TECut(TEHandle text);
void TECopy(TEHandle text);
void TEPaste(TEHandle text);
// Copy the private scrap to the desk scrap (call ZeroScrap first) and back;
// noTypeErr when there is no text to bring back, and then the private scrap stays
// as it was.
OSErr TEToScrap(void);
OSErr TEFromScrap(void);
// The private scrap, owned by the Toolbox (do not dispose of it), and its length
// in bytes.
Handle TEScrapHandle(void);
int32_t TEGetScrapLength(void);
// Erases the rectangle and draws the text within it in the current port's text
// settings, wrapped at words. just: 0 left, 1 centre, -1 right.
void TETextBox(const void *characters, int32_t length, const Rect *box, int16_t just);

#ifdef __cplusplus
}
#endif
