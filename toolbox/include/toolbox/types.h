// The basic types that all managers share, and the result codes.
//
// Records here are plain C records for use in memory. Anything stored in a
// file or a resource is read and written field by field as big-endian bytes;
// these records are never copied to or from a file as they are.
//
// Strings are Mac OS Roman. Str255 and the shorter types are Pascal strings:
// byte 0 is the length, the characters follow, and there is no terminator.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t Boolean;
typedef int16_t OSErr;
typedef uint32_t OSType;   // four characters, the first in the high byte: 'TEXT'
typedef uint32_t ResType;
typedef int32_t Fixed;     // 16.16
typedef int32_t Size;      // bytes

typedef char *Ptr;         // a block that never moves
typedef Ptr *Handle;       // address of a master pointer; *h may change at any
                           // allocation unless the block is locked

typedef unsigned char Str255[256];
typedef unsigned char Str63[64];
typedef unsigned char Str31[32];
typedef unsigned char Str15[16];
typedef unsigned char *StringPtr;
typedef const unsigned char *ConstStr255Param;
typedef StringPtr *StringHandle;

typedef void (*ProcPtr)(void);

// Vertical first, as everywhere in the Toolbox.
typedef struct Point {
    int16_t v;
    int16_t h;
} Point;

// Lies between pixels: covers top <= v < bottom and left <= h < right.
typedef struct Rect {
    int16_t top;
    int16_t left;
    int16_t bottom;
    int16_t right;
} Rect;

enum {
    noErr = 0,
    dirFulErr = -33,
    dskFulErr = -34,
    nsvErr = -35,
    ioErr = -36,
    bdNamErr = -37,
    fnOpnErr = -38,
    eofErr = -39,
    posErr = -40,
    tmfoErr = -42,
    fnfErr = -43,
    wPrErr = -44,
    fLckdErr = -45,
    vLckdErr = -46,
    fBsyErr = -47,
    dupFNErr = -48,
    opWrErr = -49,
    paramErr = -50,
    rfNumErr = -51,
    volOffLinErr = -53,
    permErr = -54,
    fsRnErr = -59,
    wrPermErr = -61,
    noTypeErr = -102,
    memFullErr = -108,
    nilHandleErr = -109,
    memWZErr = -111,
    memLockedErr = -117,
    dirNFErr = -120,
    badMovErr = -122,
    resNotFound = -192,
    resFNotFound = -193,
    addResFailed = -194,
    rmvResFailed = -196,
    resAttrErr = -198,
    mapReadErr = -199,
    notAFileErr = -1302,
    gestaltUndefSelectorErr = -5551
};

#ifdef __cplusplus
}
#endif
