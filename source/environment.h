// The environment record: what the plug-in needs to know about the machine it
// runs on, measured by GetEnvirInfo once in each call of the plug-in.
#pragma once

#include "toolbox/quickdraw.h"

// In memory only.
struct EnvirInfo {
    int32_t sysVersion;  // Gestalt 'sysv': 0x0700 is system 7.0
    Boolean hasColorQD;  // 1: colour QuickDraw is there
    Str31 versionStr;    // the plug-in's own version text; stored settings
                         // are only used if theirs is the same
    Rect screenRect;     // main display, 4 pixels in at left, right and bottom
    int16_t pixDepth;    // bits per pixel of the main display, 1 without colour
                         // QuickDraw; refreshed by GetCurPixDepth
    char decimalPt;      // the user's decimal separator
};

static_assert(offsetof(EnvirInfo, sysVersion) == 0);
static_assert(offsetof(EnvirInfo, hasColorQD) == 4);
static_assert(offsetof(EnvirInfo, versionStr) == 5);
static_assert(offsetof(EnvirInfo, screenRect) == 38);
static_assert(offsetof(EnvirInfo, pixDepth) == 46);
static_assert(offsetof(EnvirInfo, decimalPt) == 48);
static_assert(sizeof(EnvirInfo) == 52);

// Allocated and freed by main_entry, and valid while it runs; otherwise nil, or
// stale after a fatal error.
extern EnvirInfo *gEnvirInfo;
