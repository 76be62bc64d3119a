// TextEdit: one style of editable text, and its private scrap.
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
    Handle hText;              // the characters, no length byte; TextEdit's
    int16_t txFont, txSize;
    uint8_t txFace;
    int16_t just;
    GrafPtr inPort;
    uint32_t caretTime;
    int16_t caretState;
    Point scroll;              // how far the text is shifted to show the caret
    Boolean crOnly;
} TERec, **TEHandle;

TEHandle TENew(const Rect *destRect, const Rect *viewRect);
void TEDispose(TEHandle text);
void TESetText(const void *characters, int32_t length, TEHandle text);
Handle TEGetText(TEHandle text);
void TESetSelect(int32_t start, int32_t end, TEHandle text);
// Inserts any character; Backspace and the arrows edit. Command keys are the
// caller's to keep away.
void TEKey(int16_t character, TEHandle text);
void TEInsert(const void *characters, int32_t length, TEHandle text);
void TEDelete(TEHandle text);
void TEClick(Point where, Boolean extend, TEHandle text);
void TEActivate(TEHandle text);
void TEDeactivate(TEHandle text);
void TEIdle(TEHandle text);
void TEUpdate(const Rect *r, TEHandle text);
void TECalText(TEHandle text);
// To and from the private scrap, which is not the desk scrap.
void TECut(TEHandle text);
void TECopy(TEHandle text);
void TEPaste(TEHandle text);
// Private scrap to desk scrap (ZeroScrap first) and back.
OSErr TEToScrap(void);
OSErr TEFromScrap(void);
Handle TEScrapHandle(void);
int32_t TEGetScrapLength(void);
// Draws text within a rectangle, wrapped at words. just: 0 left, 1 centre,
// -1 right.
void TETextBox(const void *characters, int32_t length, const Rect *box, int16_t just);

#ifdef __cplusplus
}
#endif
