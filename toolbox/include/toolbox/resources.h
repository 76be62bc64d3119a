// Resource Manager: typed, numbered pieces of data in the resource forks of
// files, by the documented fork format.
//
// Open resource files form a list, the latest first; GetResource looks from
// the current file towards the earlier ones, the Get1 calls in the current
// file alone. A resource handle belongs to its file: ReleaseResource or
// closing the file frees it, DisposeHandle never. A resource marked purgeable
// may be emptied by the Memory Manager when memory runs short; ask for it again
// rather than keep it. One that is marked changed is never emptied.
//
// Every call sets ResError. Calls that take a resource set it to resNotFound
// for a handle that is not one, and do nothing. Any call that loads or writes
// may move memory.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    resPurgeable = 32,   // when loaded, may be emptied
    resLocked = 16,      // when loaded, does not move
    resProtected = 8,    // cannot be changed or removed
    resPreload = 4,      // is loaded when its file is opened
    resChanged = 2       // is yet to be written; SetResAttrs leaves it as it is
};

// Opens the resource fork and makes it current. Returns its reference number,
// or -1 with ResError set: fnfErr no such file, eofErr an empty fork,
// mapReadErr a damaged one, or the error met in reading the file. permission: 1
// reading, anything else reading and writing. A file that is open for writing
// already is made current and its number returned; it is then closed only once.
int16_t HOpenResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission);
// Gives a file (made if missing) an empty resource fork; does not open it.
// ResError dupFNErr when it has one already, or the error met in writing the file.
void HCreateResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name);
// Writes what has changed, frees the file's resources and closes it, even when
// writing fails (ResError). If it was the current file, the one opened before
// it becomes current. resFNotFound when refNum is not open.
void CloseResFile(int16_t refNum);
// Writes what has changed. The fork in the file is replaced as a whole: after an
// error (those of WriteResource) it is as before.
void UpdateResFile(int16_t refNum);
// The current file; -1 when none is open.
int16_t CurResFile(void);
// resFNotFound when refNum is not open; then the current file does not change.
void UseResFile(int16_t refNum);
// The result of the last Resource Manager call.
OSErr ResError(void);

// The resource, loaded; nil when there is none, with ResError resNotFound, or
// noErr when no open file has the type at all: test for nil. memFullErr when
// there is no room to load it. The first of two with the same number wins.
// While it stays loaded the same handle is returned.
Handle GetResource(ResType type, int16_t id);
Handle Get1Resource(ResType type, int16_t id);
// By name: case does not matter, accents do.
Handle GetNamedResource(ResType type, ConstStr255Param name);
// The number of resources of the type in the open files, and the index'th of
// them (from 1): the file opened last comes first, and in a file the order is that
// of its map. Nil and resNotFound beyond the last.
int16_t CountResources(ResType type);
int16_t Count1Resources(ResType type);
Handle GetIndResource(ResType type, int16_t index);
Handle Get1IndResource(ResType type, int16_t index);
// Number, type and name of a resource; a resource without a name has the empty
// string. Pass nil for what is not wanted.
void GetResInfo(Handle resource, int16_t *id, ResType *type, Str255 name);
// A sum of the attributes above. New ones take effect when the resource is next
// loaded, resProtected at once; they are stored with the next change.
int16_t GetResAttrs(Handle resource);
void SetResAttrs(Handle resource, int16_t attributes);
// Length of the resource in its file, in bytes, also when purged; -1 for a
// handle that is not a resource.
Size SizeResource(Handle resource);
// Loads a purged resource again.
void LoadResource(Handle resource);

// Frees the resource's memory and forgets the handle; changes not written are
// lost, and so is a resource that was added and never written. For anything
// but a resource: ResError resNotFound.
void ReleaseResource(Handle resource);
// Makes the block an ordinary handle that the caller owns, no longer purgeable;
// the next GetResource loads another copy. resAttrErr when it is marked changed.
void DetachResource(Handle resource);
// Adds a block to the current file; from then on it belongs to the file and is
// marked changed, its other attributes 0. An earlier resource of the same type
// and number is still the one found. addResFailed for nil or a handle that is a
// resource already, resFNotFound when no file is open.
void AddResource(Handle data, ResType type, int16_t id, ConstStr255Param name);
// Marks it to be written by the next WriteResource, UpdateResFile or close.
// resAttrErr for a protected one.
void ChangedResource(Handle resource);
// Writes a changed resource to its file now; one that is not marked changed is
// left alone. wrPermErr: the file was opened for reading. addResFailed: more
// than a resource fork can hold. Otherwise the error met in writing the file; the
// resource is then still marked changed and the file as before.
void WriteResource(Handle resource);
// Removes it from its file, for good with the next write. The block becomes an
// ordinary handle that the caller owns. rmvResFailed for a protected one.
void RmveResource(Handle resource);

// 'STR ' id as a handle to a Pascal string; nil when missing or shorter than
// its length byte says. It is a resource: not for DisposeHandle.
StringHandle GetString(int16_t id);
// String number index (from 1) of 'STR#' id; the empty string when missing.
// The list stays loaded, as GetResource leaves it.
void GetIndString(Str255 text, int16_t id, int16_t index);

#ifdef __cplusplus
}
#endif
