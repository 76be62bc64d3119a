// Scrap Manager: the desk scrap, which is the desktop's clipboard.
//
// What another program puts on the clipboard is brought in by the next call
// here, as TEXT; TEXT put on the scrap reaches the clipboard at once. May be
// called at any time between start and stop of the Toolbox; every call may
// allocate.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ScrapStuff {
    int32_t scrapSize;     // bytes as stored: 8 per entry for type and length,
                           // and the data padded to even
    Handle scrapHandle;    // the entries; read only
    int16_t scrapCount;    // changes whenever ZeroScrap is called and whenever
                           // another program has changed the clipboard
    int16_t scrapState;    // above 0: in memory
    StringPtr scrapName;
} ScrapStuff, *PScrapStuff;

// The scrap's record; owned by the Toolbox, read only, valid until stop. A
// clipboard changed by another program is brought in first.
PScrapStuff InfoScrap(void);
#define ScrapInfo (*InfoScrap())

// Empties the scrap and the clipboard. Returns noErr.
int32_t ZeroScrap(void);
// Appends length bytes under the type. A second entry of a type is kept but
// never found. paramErr for a negative length; memFullErr.
int32_t PutScrap(int32_t length, ResType type, const void *source);
// Length in bytes, or noTypeErr. Unless destination is nil, it is resized and the
// data copied into it (memFullErr); unless offset is nil, *offset is where the
// data lies in scrapHandle. TEXT is Mac OS Roman with CR line ends and no
// length byte; '?' stands for characters that Mac OS Roman lacks.
int32_t GetScrap(Handle destination, ResType type, int32_t *offset);

#ifdef __cplusplus
}
#endif
