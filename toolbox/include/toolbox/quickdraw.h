// QuickDraw: ports, pens, shapes, text, regions, displays.
//
// Coordinates are 16-bit numbers of the lines between pixels; a pixel lies below
// and to the right of its coordinate, and belongs to a round or slanted shape if
// its centre does. Everything draws into the current port, in its local
// coordinates, clipped to the port, its visible and its clip region. Sums beyond
// 16 bits wrap around.
//
// A display may have 2 by 2 or 3 by 3 device pixels for each pixel: its scale.
// Rectangles, lines, regions and patterns cover all of them; round rectangles
// and polygons are smooth, and letters as sharp, as the device allows. Images
// keep their own pixels.
//
// A display shows the colours that its depth allows: black and white at 1 bit
// per pixel, four greys at 2, sixteen colours at 4, a table of 256 at 8.
// Everything is drawn in the nearest one.
//
// All calls are allowed once the Toolbox has started. Only those that make or
// change a region or polygon can fail for lack of memory (nil, or unchanged;
// MemError says why). Those that make none may be called while unlocked handles
// are in use: drawing moves no blocks. A missing font file ends the call with an
// exception that names it.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct Pattern { unsigned char pat[8]; } Pattern;

// rgnSize is 10 for a rectangle; otherwise the region's own data follows the
// bounding box and is private to QuickDraw.
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
    void *machinePort;   // where the pixels are; private to QuickDraw
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
    BitMap screenBits;   // bounds: the main display, menu bar included
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

// The current port; the desktop's until one is set, and again when the current
// one is closed.
void GetPort(GrafPtr *port);
// nil: the desktop's. The port must exist for as long as it is current.
void SetPort(GrafPtr port);
// Gives the top left of the current port's portRect these coordinates. Pixels,
// pen and clip region keep theirs.
void SetOrigin(int16_t h, int16_t v);
// Convert between the current port's coordinates and those of the desktop.
void LocalToGlobal(Point *point);
void GlobalToLocal(Point *point);

// These change rectangles and points, which may be of any coordinates; they draw
// nothing and need no port. SetRect stores its sides as they are given.
void SetRect(Rect *r, int16_t left, int16_t top, int16_t right, int16_t bottom);
void OffsetRect(Rect *r, int16_t dh, int16_t dv);
// Moves each side inwards (negative: outwards); all zero when nothing is left.
void InsetRect(Rect *r, int16_t dh, int16_t dv);
// *result is the overlap, all zero when there is none; true when there is one.
Boolean SectRect(const Rect *a, const Rect *b, Rect *result);
// The smallest rectangle around both; empty ones do not count. *result may be
// one of the sources, here and in SectRect.
void UnionRect(const Rect *a, const Rect *b, Rect *result);
// Whether the pixel right of and below the point is in the rectangle.
Boolean PtInRect(Point point, const Rect *r);
Boolean EqualRect(const Rect *a, const Rect *b);
// Whether no pixel is in it: bottom not below top, or right not right of left.
Boolean EmptyRect(const Rect *r);
void SetPt(Point *point, int16_t h, int16_t v);

// One pixel, patCopy, black.
void PenNormal(void);
// In pixels; a pen with a side of 0 or less draws nothing.
void PenSize(int16_t width, int16_t height);
// One of the pat modes.
void PenMode(int16_t mode);
// Copied; anchored to the port's origin.
void PenPat(const Pattern *pattern);
// Move the pen without drawing: to a point, or by a distance.
void MoveTo(int16_t h, int16_t v);
void Move(int16_t dh, int16_t dv);
// Inks every pixel under the pen, which hangs below and to the right of its
// point, on the way to the new point, both ends included; the pen stays there.
// The same pixels backwards. Line: by a distance.
void LineTo(int16_t h, int16_t v);
void Line(int16_t dh, int16_t dv);
// Where the pen is.
void GetPen(Point *point);
// Frame draws the rim inside the rectangle, as wide as the pen; Paint fills
// with the pen's pattern and mode; Erase with the background; Invert flips
// every pixel, so that inverting twice changes nothing; Fill takes a pattern,
// anchored to the port's origin. None moves the pen; empty rectangles draw
// nothing.
void FrameRect(const Rect *r);
void PaintRect(const Rect *r);
void EraseRect(const Rect *r);
void InvertRect(const Rect *r);
void FillRect(const Rect *r, const Pattern *pattern);
// The same with rounded corners: quarters of an oval with these diameters, at
// most as large as the rectangle.
void FrameRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void PaintRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void EraseRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
void InvertRoundRect(const Rect *r, int16_t ovalWidth, int16_t ovalHeight);
// One of the eight constants; any other is drawn as black, and so is all but
// white on a display of one bit per pixel. On two bits the others are greys.
void ForeColor(int32_t color);
void BackColor(int32_t color);

// One polygon is open at a time (nil for a second one, or if memory is full);
// lines drawn meanwhile are collected, not shown. The caller owns what OpenPoly
// returns: KillPoly. It has its points after ClosePoly, 8188 at most.
PolyHandle OpenPoly(void);
void ClosePoly(void);
// Fills what the points enclose, closed from the last to the first; what is
// enclosed twice is outside.
void PaintPoly(PolyHandle polygon);
// Draws the lines again with the pen as it is now; the pen stays where it is.
void FramePoly(PolyHandle polygon);
void KillPoly(PolyHandle polygon);

// Fonts: 0 system, 1 application, 3 Geneva, 4 Monaco, 2 and 20 to 23 New York,
// Times, Helvetica, Courier, Symbol; any other number is the application font.
void TextFont(int16_t font);
// In pixels per em; 0 means 12, and anything above 1000 means 1000.
void TextSize(int16_t points);
// A sum of the style bits. Outline, shadow and extend make a character a pixel
// wider, condense makes it a pixel narrower. Outlined letters are hollow, with a
// line one pixel wide around them; shadow thickens it below and to the right.
void TextFace(int16_t face);
// One of the src modes; srcOr, the usual one, leaves the background.
void TextMode(int16_t mode);
typedef struct FontInfo { int16_t ascent, descent, widMax, leading; } FontInfo;
// In pixels. The height of a line is ascent, descent and leading together: 16 at
// size 12.
void GetFontInfo(FontInfo *info);
// Pixels the pen would advance, in the port's font, size and face: the sum of
// the characters' own widths, 32767 at most, the same on every display.
int16_t StringWidth(ConstStr255Param text);
// Of count characters, starting at byte first.
int16_t TextWidth(const void *text, int16_t first, int16_t count);
int16_t CharWidth(int16_t character);
// Draws on the baseline, starting at the pen, and leaves the pen after the text. A
// character that the font lacks is drawn as '?'; 0x11 to 0x14 are the Command
// sign, a check mark, a diamond and an apple in every font.
void DrawString(ConstStr255Param text);
void DrawText(const void *text, int16_t first, int16_t count);
void DrawChar(int16_t character);

// The bytes of a 'PICT' resource, big-endian as stored.
typedef struct PictureResource **PicHandle;
// The loaded resource, owned by the Resource Manager; nil when there is none.
PicHandle GetPicture(int16_t id);
// Draws it with its frame stretched to the rectangle, in the foreground and
// background colours that it sets itself; the port's pen and colours stay. Of
// versions 1 and 2 it draws lines, rectangles and images of all depths; text,
// round shapes, polygons and regions are skipped. Draws nothing for nil, for a
// purged resource, for an empty rectangle, and for bytes that are damaged anywhere.
void DrawPicture(PicHandle picture, const Rect *box);

// The caller owns a region it makes: DisposeRgn. Empty at first; nil if memory is
// full. A nil region counts as empty; a nil result is ignored. Calls that change a
// region may move blocks.
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
// True when any pixel of the rectangle lies in the region.
Boolean RectInRgn(const Rect *r, RgnHandle region);
// As EraseRect and PaintRect: with the background, and with the pen's pattern and
// mode.
void EraseRgn(RgnHandle region);
void PaintRgn(RgnHandle region);
// The current port's clip region; SetClip and GetClip copy.
void ClipRect(const Rect *r);
void SetClip(RgnHandle region);
void GetClip(RgnHandle region);
// Moves the visible pixels of the rectangle to the right and down; what leaves it
// is lost. The vacated part is erased and stored in update, unless that is nil.
void ScrollRect(const Rect *r, int16_t dh, int16_t dv, RgnHandle update);
// All displays minus the menu bar, global. Owned by the Toolbox: do not change or
// dispose of it.
RgnHandle GetGrayRgn(void);

// The displays as they are at this moment, the main one first, nil after the
// last. Owned by the Toolbox, and not to be moved or disposed of; a device whose
// display is gone stays readable but is no longer active.
GDHandle GetMainDevice(void);
GDHandle GetDeviceList(void);
GDHandle GetNextDevice(GDHandle device);
// Whether the bit of gdFlags is set; false for nil.
Boolean TestDeviceAttribute(GDHandle device, int16_t attribute);

// The machine shows its arrow for qd.arrow, and its text cursor for any other.
void SetCursor(const Cursor *cursor);
void InitCursor(void);
void HideCursor(void);
void ShowCursor(void);

// -32767 to 32767, from qd.randSeed by the minimal standard generator (16807
// times the seed modulo 2^31 - 1). Set the seed to choose a sequence; it is 1 at
// start.
int16_t Random(void);

#ifdef __cplusplus
}
#endif
