// Scrap Manager: the desk scrap, which is the desktop's clipboard.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ScrapStuff {
    int32_t scrapSize;     // bytes as stored: 8 an entry for type and length,
                           // and the data padded to even
    Handle scrapHandle;
    int16_t scrapCount;    // changes whenever ZeroScrap is called
    int16_t scrapState;    // above 0: in memory
    StringPtr scrapName;
} ScrapStuff, *PScrapStuff;

// The scrap's record; the Toolbox's, read only. A clipboard changed by another
// program is brought in first.
PScrapStuff InfoScrap(void);
#define ScrapInfo (*InfoScrap())

int32_t ZeroScrap(void);
int32_t PutScrap(int32_t length, ResType type, const void *source);
// Length in bytes, or noTypeErr; with destination not nil the data is copied
// into it, resized. TEXT is Mac OS Roman with CR line ends.
int32_t GetScrap(Handle destination, ResType type, int32_t *offset);

#ifdef __cplusplus
}
#endif
