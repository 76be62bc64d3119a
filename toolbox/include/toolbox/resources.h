// Resource Manager: typed, numbered pieces of data in the resource forks of
// files, by the documented fork format.
//
// Open resource files form a list, the latest first; GetResource looks from
// the current file towards the earlier ones, the Get1 calls in the current
// file alone. A resource handle belongs to its file: ReleaseResource or
// closing the file frees it, DisposeHandle never. A resource marked purgeable
// may be emptied by the Memory Manager when memory runs short; ask again for
// it rather than keep it. One that is marked changed is never emptied.
//
// Every call sets ResError. Calls that take a resource set resNotFound
// there for a handle that is none, and do nothing. Any call that loads or
// writes may move memory.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    resPurgeable = 32,   // when loaded, may be emptied
    resLocked = 16,      // when loaded, does not move
    resProtected = 8,    // is neither changed nor removed
    resPreload = 4,      // is loaded when its file is opened
    resChanged = 2       // is to be written; set by ChangedResource alone
};

// Opens the resource fork and makes it current. Returns its reference number,
// or -1 with ResError set: fnfErr no such file, eofErr an empty fork,
// mapReadErr a damaged one, or what reading the file met. permission: 1
// reading, anything else reading and writing. A file that is open for writing
// already is made current and its number returned; it is closed once.
int16_t HOpenResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission);
// Gives a file (made if missing) an empty resource fork; does not open it.
// ResError dupFNErr when it has one already, or what writing the file met.
void HCreateResFile(int16_t vRefNum, int32_t dirID, ConstStr255Param name);
// Writes what has changed, frees the file's resources and closes it, even when
// writing fails (ResError). If it was the current file, the one opened before
// it becomes current. resFNotFound for what is not open.
void CloseResFile(int16_t refNum);
// Writes what has changed. The fork in the file is replaced as a whole: after
// an error, the errors of WriteResource, it is as before.
void UpdateResFile(int16_t refNum);
// The current file; -1 when none is open.
int16_t CurResFile(void);
// resFNotFound for what is not open; the current file stays.
void UseResFile(int16_t refNum);
// The result of the last Resource Manager call.
OSErr ResError(void);

// The resource, loaded; nil when there is none, with ResError resNotFound, or
// noErr when no open file has the type at all: test for nil. memFullErr when
// there is no room to load it. The first of two with the same number wins.
// While it stays loaded the same handle is returned.
Handle GetResource(ResType type, int16_t id);
Handle Get1Resource(ResType type, int16_t id);
// Case does not matter, accents do.
Handle GetNamedResource(ResType type, ConstStr255Param name);
// The number of resources of the type in the open files, and the index'th of
// them (from 1): the file opened last comes first, in a file the order of its
// map. Nil and resNotFound beyond the last.
int16_t CountResources(ResType type);
int16_t Count1Resources(ResType type);
Handle GetIndResource(ResType type, int16_t index);
Handle Get1IndResource(ResType type, int16_t index);
// Number, type and name of a resource, the empty string when it has none. What
// is not wanted may be nil.
void GetResInfo(Handle resource, int16_t *id, ResType *type, Str255 name);
// A sum of the attributes above. Those set are in force when the resource is
// next loaded, resProtected at once; they are stored with the next change.
int16_t GetResAttrs(Handle resource);
void SetResAttrs(Handle resource, int16_t attributes);
// Length of the resource in its file, in bytes, also when purged; -1 for a
// handle that is no resource.
Size SizeResource(Handle resource);
// Loads a purged resource again.
void LoadResource(Handle resource);

// Frees the resource's memory and forgets the handle; changes not written are
// lost, and so is a resource that was added and never written. For anything
// but a resource: ResError resNotFound.
void ReleaseResource(Handle resource);
// Makes the block an ordinary handle of the caller's, not purgeable any more;
// the next GetResource loads another. resAttrErr when it is marked changed.
void DetachResource(Handle resource);
// Adds a block to the current file; from then on it belongs to the file and is
// marked changed, its other attributes 0. An earlier resource of the same type
// and number goes on winning. addResFailed for nil or a handle that is a
// resource already, resFNotFound when no file is open.
void AddResource(Handle data, ResType type, int16_t id, ConstStr255Param name);
// Marks it to be written by the next WriteResource, UpdateResFile or close.
// resAttrErr for a protected one.
void ChangedResource(Handle resource);
// Writes a changed resource to its file now; one that is not marked changed is
// left alone. wrPermErr: the file was opened for reading. addResFailed: more
// than a resource fork can hold. Otherwise what writing the file met; the
// resource is still marked changed then and the file as before.
void WriteResource(Handle resource);
// Takes it out of its file, for good with the next write. The block is an
// ordinary handle of the caller's from then on. rmvResFailed for a protected
// one.
void RmveResource(Handle resource);

// 'STR ' id as a handle to a Pascal string, nil when missing or shorter than
// its length byte says. A resource: not for DisposeHandle.
StringHandle GetString(int16_t id);
// String number index (from 1) of 'STR#' id; the empty string when missing.
// The list stays loaded, as GetResource leaves it.
void GetIndString(Str255 text, int16_t id, int16_t index);

#ifdef __cplusplus
}
#endif
