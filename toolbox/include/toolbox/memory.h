// Memory Manager: pointer blocks, relocatable blocks, a heap of a stated size.
//
// The heap counts what its callers asked for plus 16 bytes per block, whatever
// the machine has left. Any call here that allocates may move every block that
// is not locked; Resource, Dialog and Menu Manager calls allocate too.
// Every call sets MemError: for a nil handle to nilHandleErr, for one that was
// freed or never existed to memWZErr, and then nothing is done.
// May be called at any time between start and stop of the Toolbox.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// A block of byteCount bytes (0 or more), contents undefined; nil and
// memFullErr when the heap has no room. The caller owns it: DisposePtr.
Ptr NewPtr(Size byteCount);
// The same, zero-filled.
Ptr NewPtrClear(Size byteCount);
// Frees the block; nil does nothing. memWZErr for anything that is not such a
// block.
void DisposePtr(Ptr block);

// A relocatable block and its master pointer; size 0 is legal and not nil.
// Nil and memFullErr when there is no room. The caller owns it: DisposeHandle.
Handle NewHandle(Size byteCount);
// The same, zero-filled.
Handle NewHandleClear(Size byteCount);
// Frees block and master pointer. Nil or an already freed handle: memWZErr.
// Never for a resource: ReleaseResource, or DetachResource first.
void DisposeHandle(Handle handle);
// Bytes in the block; 0 with nilHandleErr for a purged one.
Size GetHandleSize(Handle handle);
// Keeps the contents as far as they fit; new bytes are undefined. The block
// may move unless locked; a locked one can shrink but not grow. memFullErr: the
// size is unchanged.
void SetHandleSize(Handle handle, Size byteCount);

// Locked is a flag, not a count: one HUnlock undoes any number of HLocks. A
// locked block neither moves nor is purged. nilHandleErr for a purged one.
void HLock(Handle handle);
void HUnlock(Handle handle);
// Lets the Memory Manager empty the block when it needs room (HPurge), or not
// (HNoPurge). Useful only for resources, which can be loaded again, and for
// handles whose contents are not needed.
void HPurge(Handle handle);
void HNoPurge(Handle handle);
// Bit 7 locked, bit 6 purgeable, bit 5 a resource; for saving and restoring.
// HSetState leaves bit 5 as it is.
int8_t HGetState(Handle handle);
void HSetState(Handle handle, int8_t state);
// Moves an unlocked block out of the way of others before it is locked; here
// there is nothing to move. memLockedErr when it is locked already.
void MoveHHi(Handle handle);

// Purges what may be purged and returns the largest block that could now be
// allocated, in bytes. *grow is set to 0 unless grow is nil: the heap does not
// grow.
Size MaxMem(Size *grow);
// As MaxMem, but purges nothing.
Size CompactMem(Size needed);
// Empties every purgeable, unlocked block. memFullErr when there is still no
// room for needed bytes.
void PurgeMem(Size needed);
// Bytes not in use.
Size FreeMem(void);
// The result of the last Memory Manager call, noErr after success.
OSErr MemError(void);

// Copies byteCount bytes, none when negative; source and destination may
// overlap.
void BlockMove(const void *source, void *destination, Size byteCount);
// Makes a new handle holding a copy; *handle is nil on failure.
OSErr PtrToHand(const void *source, Handle *handle, Size byteCount);
// Replaces *handle with a new handle that has the same contents, unlocked, not
// purgeable and not a resource. On failure *handle is as before.
OSErr HandToHand(Handle *handle);
// Appends the bytes at source, which must not move: not the contents of an
// unlocked block. On failure the block is as before.
OSErr PtrAndHand(const void *source, Handle handle, Size byteCount);
// The address itself: the address space is flat.
Ptr StripAddress(void *address);

// A byte-string search and edit in a relocatable block (Toolbox Utilities).
// With target not nil and replacement nil: returns the offset of the first
// occurrence of the target at or after offset, or a negative value. With a
// target and a replacement: replaces the first occurrence and returns
// the offset after the replacement; a target of no bytes is found at offset, so
// that the replacement is inserted there. Target nil: replaces targetLength
// bytes at offset (all to the end when negative). An offset outside the text,
// or no room (MemError): a negative value, and the text is as before. The
// replacement must not be the contents of an unlocked block.
int32_t Munger(Handle text, int32_t offset, const void *target, int32_t targetLength,
               const void *replacement, int32_t replacementLength);

#ifdef __cplusplus
}
#endif
