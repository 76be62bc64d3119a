// File Manager: files with two forks, named by a directory and a Mac OS Roman
// name.
//
// Places. vRefNum is a working directory number as Standard File gives it, 0
// for the default folder, or kOnSystemDisk. dirID is 0 for the folder that
// vRefNum names (with kOnSystemDisk: the default folder), or a directory number
// as FindFolder gives it. nsvErr for a vRefNum that was never given out, dirNFErr for
// such a dirID or where the folder has gone.
//
// Names are Pascal strings of 1 to 63 bytes. bdNamErr for any other length,
// nil, a ':' or NUL, "." and "..", and a name beginning with "._". A '/' in a
// name is a ':' in Linux. A Linux name that has no Mac form is known by an
// alias (folders::macName). A name that no file has as it stands finds one
// that differs only in how accents are encoded, and, when a file is opened or
// its information read or set, one that differs only in case; deleting and
// renaming want the very name, creating takes it as it is.
//
// Storage. The data fork is the plain Linux file. Finder information and the
// resource fork are in "._name" beside it (AppleDouble), which is there only
// when it has something to say. Without it a file whose first KiB looks like
// text, or is empty, has type 'TEXT' and creator 'ttxt', any other four
// question marks for both. Folders and what is no regular file: fnfErr.
//
// A file that its owner may not write (mode bits, also for root) is locked.
//
// What the disk says becomes ioErr, dskFulErr, wPrErr (mounted for reading),
// wrPermErr (no right to change the folder or file), permErr (no right to open
// it), tmfoErr and so on. Every call may give such an error, can be made to
// fail (host/faults.h) and is written to the trace. Callable whenever the
// Toolbox runs; nothing here allocates from the heap or moves blocks.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kOnSystemDisk = -32768,
    kCreateFolder = 1,
    kDontCreateFolder = 0,
    kPreferencesFolderType = 'pref',
    kTemporaryFolderType = 'temp'
};

enum { fsCurPerm = 0, fsRdPerm = 1, fsWrPerm = 2, fsRdWrPerm = 3 };
enum { fsAtMark = 0, fsFromStart = 1, fsFromLEOF = 2, fsFromMark = 3 };

typedef struct FInfo {
    OSType fdType;
    OSType fdCreator;
    uint16_t fdFlags;
    Point fdLocation;
    int16_t fdFldr;
} FInfo;

// Makes an empty file; what an earlier file of the name left in "._name"
// is dropped. dupFNErr when something has the name already. On error nothing
// is there that was not before.
OSErr Create(ConstStr255Param name, int16_t vRefNum, OSType creator, OSType fileType);
OSErr HCreate(int16_t vRefNum, int32_t dirID, ConstStr255Param name, OSType creator, OSType fileType);

// Opens the data fork with the mark at 0; the caller closes it with FSClose.
// fnfErr when there is no such file; *refNum is then 0, which is no file's.
// Numbers are 1 to 32767, given out in turn: one that was closed comes back
// only when all others have had their turn, so that closing it a second time
// is a harmless rfNumErr.
// permission: fsRdPerm reads. fsWrPerm and fsRdWrPerm read and write: permErr
// when the file is locked, opWrErr when it is open for writing already.
// fsCurPerm (as FSOpen) reads, and writes unless one of these stands against
// it. Other values: paramErr.
OSErr FSOpen(ConstStr255Param name, int16_t vRefNum, int16_t *refNum);
OSErr HOpen(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission, int16_t *refNum);
// rfNumErr when it is not open. With any other error it is closed all the
// same, and something written may be lost. A file that counted as text without
// saying so, and no longer looks it, is given its type in so many words.
OSErr FSClose(int16_t refNum);

// Reads or writes *count bytes at the mark and moves it; *count becomes what
// was done. Reading past the end: what there is, and eofErr. A write that
// fails may have written a part. rfNumErr (*count 0), wrPermErr when opened for
// reading only, paramErr for a negative count, dskFulErr beyond 2^31 - 1 bytes.
OSErr FSRead(int16_t refNum, int32_t *count, void *buffer);
OSErr FSWrite(int16_t refNum, int32_t *count, const void *buffer);
// Length in bytes; paramErr for a file of 2 GiB and more.
OSErr GetEOF(int16_t refNum, int32_t *logicalEnd);
// Cuts, or grows with zeros. A mark beyond the new end moves to it. wrPermErr;
// paramErr for a negative length.
OSErr SetEOF(int16_t refNum, int32_t logicalEnd);
OSErr GetFPos(int16_t refNum, int32_t *position);
// fsAtMark leaves the mark where it is; the others add offset to the start, the
// end or the mark. Before the start: posErr, and the mark stays. Beyond the
// end: eofErr, and the mark is at the end.
OSErr SetFPos(int16_t refNum, int16_t mode, int32_t offset);

// Deletes the file, both forks. fnfErr, fLckdErr, fBsyErr while either fork is
// open.
OSErr FSDelete(ConstStr255Param name, int16_t vRefNum);
OSErr HDelete(int16_t vRefNum, int32_t dirID, ConstStr255Param name);
// Renames within the folder, both forks, open or not: open ones stay open
// under their numbers. dupFNErr when something has the new name (also the file
// itself), fLckdErr. On error the file has its old name.
OSErr Rename(ConstStr255Param oldName, int16_t vRefNum, ConstStr255Param newName);

// A damaged "._name" counts as none for reading, and makes setting an ioErr
// that leaves it untouched. Setting what the file counts as anyway, or all
// zeros, takes the information away; the fork stays. fLckdErr when the file
// or "._name" is locked. The change is whole or not at all.
OSErr GetFInfo(ConstStr255Param name, int16_t vRefNum, FInfo *info);
OSErr HGetFInfo(int16_t vRefNum, int32_t dirID, ConstStr255Param name, FInfo *info);
OSErr SetFInfo(ConstStr255Param name, int16_t vRefNum, const FInfo *info);

// Waits until what was written to files now open on the volume of vRefNum is on
// the disk. A name given to a file later is not waited for: the disk then has
// the old name or the new. The name argument is not looked at.
OSErr FlushVol(ConstStr255Param name, int16_t vRefNum);

// The folder of a kind, for use as vRefNum and dirID; both 0 on error.
// kPreferencesFolderType: the host's choice, else $XDG_CONFIG_HOME/riders or
// ~/.config/riders; with create it is made, parents and all. Missing: fnfErr.
// dupFNErr when a file is in its place. kTemporaryFolderType: a folder of this
// session's own under $TMPDIR, always there, gone with everything in it when
// the session stops. Other kinds: fnfErr.
OSErr FindFolder(int16_t vRefNum, OSType folderType, Boolean create, int16_t *foundVRefNum, int32_t *foundDirID);

#ifdef __cplusplus
}
#endif
