// Resource Manager: typed, numbered pieces of data in the resource forks of
// files, by the documented fork format.
//
// Open resource files form a list, the latest first; GetResource looks from
// the current file towards the earlier ones, the Get1 calls in the current
// file alone. A resource handle belongs to its file: ReleaseResource or
// closing the file frees it, DisposeHandle never. A resource marked purgeable
// may be emptied by the Memory Manager when memory runs short; ask again for
// it rather than keep it.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    resPurgeable = 32,
    resLocked = 16,
    resProtected = 8,
    resPreload = 4,
    resChanged = 2
};

// Opens the resource fork and makes it current. Answers its reference number,
// or -1 with ResError set: fnfErr no such file, eofErr an empty fork,
// mapReadErr a damaged one. permission: 0 or 3 reading and writing, 1 reading.
int16_t HOpenResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission);
// Gives a file (made if missing) an empty resource fork. ResError dupFNErr when
// it has one already.
void HCreateResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name);
// Writes what has changed, frees the file's resources and closes it; the file
// opened before it becomes current.
void CloseResFile(int16_t refNum);
// Writes what has changed.
void UpdateResFile(int16_t refNum);
int16_t CurResFile(void);
void UseResFile(int16_t refNum);
// The result of the last Resource Manager call.
OSErr ResError(void);

// The resource, loaded; nil when there is none, with ResError resNotFound, or
// noErr when no open file has the type at all: test for nil. The first of two
// with the same number wins.
Handle GetResource(ResType type, int16_t id);
Handle Get1Resource(ResType type, int16_t id);
Handle GetNamedResource(ResType type, ConstStr255Param name);
// The number of resources of the type in the open files, and the index'th of
// them (from 1), in no particular order of numbers.
int16_t CountResources(ResType type);
int16_t Count1Resources(ResType type);
Handle GetIndResource(ResType type, int16_t index);
Handle Get1IndResource(ResType type, int16_t index);
// Number, type and name of a loaded resource.
void GetResInfo(Handle resource, int16_t *id, ResType *type, Str255 name);
int16_t GetResAttrs(Handle resource);
void SetResAttrs(Handle resource, int16_t attributes);
// Length of the resource in its file, in bytes, also when purged; -1 for a
// handle that is no resource.
Size SizeResource(Handle resource);
// Loads a purged resource again.
void LoadResource(Handle resource);

// Frees the resource's memory and forgets the handle; changes not written are
// lost. For anything but a resource: ResError resNotFound.
void ReleaseResource(Handle resource);
// Makes the block an ordinary handle of the caller's.
void DetachResource(Handle resource);
// Adds a block to the current file; from then on it belongs to the file.
// addResFailed for nil or a handle that is a resource already.
void AddResource(Handle data, ResType type, int16_t id, ConstStr255Param name);
// Marks it to be written by the next WriteResource, UpdateResFile or close.
void ChangedResource(Handle resource);
// Writes a changed resource to its file now.
void WriteResource(Handle resource);
void RmveResource(Handle resource);

// 'STR ' id as a handle to a Pascal string, nil when missing. A resource: not
// for DisposeHandle.
StringHandle GetString(int16_t id);
// String number index (from 1) of 'STR#' id; the empty string when missing.
void GetIndString(Str255 text, int16_t id, int16_t index);

#ifdef __cplusplus
}
#endif
