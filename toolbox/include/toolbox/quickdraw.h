// QuickDraw: ports, pens, shapes, text, regions, screens.
//
// Coordinates are int16 lines between pixels; a pixel lies below and right of
// its coordinate. Everything draws into the current port, in its local
// coordinates, clipped to the port, its visible and its clip region.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct Pattern { unsigned char pat[8]; } Pattern;

// rgnSize is 10 for a rectangle; otherwise the region's own data follows the
// bounding box and is QuickDraw's business.
typedef struct Region {
    int16_t rgnSize;
    Rect rgnBBox;
} Region;
typedef Region **RgnHandle;

typedef struct BitMap {
    Ptr baseAddr;
    int16_t rowBytes;
    Rect bounds;
} BitMap;

typedef struct GrafPort {
    BitMap portBits;     // a local point is global minus portBits.bounds' top left
    Rect portRect;       // the drawing area, local
    RgnHandle visRgn;    // local
    RgnHandle clipRgn;   // local
    Pattern bkPat;
    Point pnLoc;
    Point pnSize;
    int16_t pnMode;
    Pattern pnPat;
    int16_t pnVis;
    int16_t txFont;
    uint8_t txFace;
    int16_t txMode;
    int16_t txSize;
    int32_t fgColor;     // one of the eight colour constants
    int32_t bkColor;
    void *machinePort;   // where the pixels are; QuickDraw's own
} GrafPort, *GrafPtr;

typedef struct PolyRec { int16_t polySize; Rect polyBBox; Point polyPoints[1]; } PolyRec, **PolyHandle;

typedef struct PixMap { Rect bounds; int16_t pixelSize; } PixMap, *PixMapPtr, **PixMapHandle;
typedef struct GDevice GDevice, *GDPtr, **GDHandle;
struct GDevice {
    int16_t gdFlags;
    Rect gdRect;         // global
    PixMapHandle gdPMap;
    GDHandle gdNextGD;
};
enum { mainScreen = 11, screenDevice = 13, screenActive = 15 };

typedef struct Cursor { uint16_t data[16]; uint16_t mask[16]; Point hotSpot; } Cursor;

typedef struct QDGlobals {
    GrafPtr thePort;
    BitMap screenBits;   // bounds: the main screen, menu bar included
    Cursor arrow;
    Pattern white, black, gray, ltGray, dkGray;
    int32_t randSeed;
} QDGlobals;
extern QDGlobals qd;

enum { patCopy = 8, patOr = 9, patXor = 10, patBic = 11, srcCopy = 0, srcOr = 1, srcXor = 2, srcBic = 3 };
enum {
    blackColor = 33, whiteColor = 30, redColor = 205, greenColor = 341,
    blueColor = 409, cyanColor = 273, magentaColor = 137, yellowColor = 69
};
enum { normal = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 16, condense = 32, extend = 64 };
enum { systemFont = 0, applFont = 1, geneva = 3, monaco = 4 };

void GetPort(GrafPtr *port);
void SetPort(GrafPtr port);
void SetOrigin(int16_t h, int16_t v);
void LocalToGlobal(Point *point);
void GlobalToLocal(Point *point);

void SetRect(Rect *r, int16_t left, int16_t top, int16_t right, int16_t bottom);
void OffsetRect(Rect *r, int16_t dh, int16_t dv);
void InsetRect(Rect *r, int16_t dh, int16_t dv);
// *result is the overlap, all zero when there is none; true when there is one.
Boolean SectRect(const Rect *a, const Rect *b, Rect *result);
void UnionRect(const Rect *a, const Rect *b, Rect *result);
Boolean PtInRect(Point point, const Rect *r);
Boolean EqualRect(const Rect *a, const Rect *b);
Boolean EmptyRect(const Rect *r);
void SetPt(Point *point, int16_t h, int16_t v);

void PenNormal(void);
void PenSize(int16_t width, int16_t height);
void PenMode(int16_t mode);
void PenPat(const Pattern *pattern);
void MoveTo(int16_t h, int16_t v);
void Move(int16_t dh, int16_t dv);
void LineTo(int16_t h, int16_t v);
void Line(int16_t dh, int16_t dv);
void GetPen(Point *point);
void FrameRect(const Rect *r);
void PaintRect(const Rect *r);
void EraseRect(const Rect *r);
void InvertRect(const Rect *r);
void FillRect(const Rect *r, const Pattern *pattern);
void FrameRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void PaintRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void EraseRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void InvertRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void ForeColor(int32_t color);
void BackColor(int32_t color);

// One polygon is open at a time; lines drawn meanwhile are collected, not shown.
// The caller owns what OpenPoly answers: KillPoly.
PolyHandle OpenPoly(void);
void ClosePoly(void);
void PaintPoly(PolyHandle polygon);
void FramePoly(PolyHandle polygon);
void KillPoly(PolyHandle polygon);

void TextFont(int16_t font);
void TextSize(int16_t points);
void TextFace(int16_t face);
void TextMode(int16_t mode);
typedef struct FontInfo { int16_t ascent, descent, widMax, leading; } FontInfo;
void GetFontInfo(FontInfo *info);
// Pixels the pen would advance, in the port's font, size and face.
int16_t StringWidth(ConstStr255Param text);
int16_t TextWidth(const void *text, int16_t first, int16_t count);
int16_t CharWidth(int16_t character);
void DrawString(ConstStr255Param text);
void DrawText(const void *text, int16_t first, int16_t count);
void DrawChar(int16_t character);

// The caller owns a region it makes: DisposeRgn.
RgnHandle NewRgn(void);
void DisposeRgn(RgnHandle region);
void SetRectRgn(RgnHandle region, int16_t left, int16_t top, int16_t right, int16_t bottom);
void RectRgn(RgnHandle region, const Rect *r);
void SetEmptyRgn(RgnHandle region);
void CopyRgn(RgnHandle source, RgnHandle destination);
void OffsetRgn(RgnHandle region, int16_t dh, int16_t dv);
// The result may be one of the sources.
void SectRgn(RgnHandle a, RgnHandle b, RgnHandle result);
void UnionRgn(RgnHandle a, RgnHandle b, RgnHandle result);
void DiffRgn(RgnHandle a, RgnHandle b, RgnHandle result);
void XorRgn(RgnHandle a, RgnHandle b, RgnHandle result);
Boolean EmptyRgn(RgnHandle region);
Boolean EqualRgn(RgnHandle a, RgnHandle b);
Boolean PtInRgn(Point point, RgnHandle region);
// True when a pixel of the rectangle lies in the region.
Boolean RectInRgn(const Rect *r, RgnHandle region);
void EraseRgn(RgnHandle region);
void PaintRgn(RgnHandle region);
void ClipRect(const Rect *r);
void SetClip(RgnHandle region);
void GetClip(RgnHandle region);
void ScrollRect(const Rect *r, int16_t dh, int16_t dv, RgnHandle update);
// All screens less the menu bar, global. The Toolbox's: neither change nor
// dispose.
RgnHandle GetGrayRgn(void);

GDHandle GetMainDevice(void);
GDHandle GetDeviceList(void);
GDHandle GetNextDevice(GDHandle device);
Boolean TestDeviceAttribute(GDHandle device, int16_t attribute);

void SetCursor(const Cursor *cursor);
void InitCursor(void);
void HideCursor(void);
void ShowCursor(void);

// Signed 16 bits, from qd.randSeed by the minimal standard generator.
int16_t Random(void);

#ifdef __cplusplus
}
#endif
