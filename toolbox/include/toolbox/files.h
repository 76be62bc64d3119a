// File Manager: files with two forks, named by a directory and a Mac OS Roman
// name.
//
// Places. vRefNum is a working directory number as Standard File gives it, 0
// for the default folder, or kOnSystemDisk. dirID is 0 for the folder that
// vRefNum names (with kOnSystemDisk: the default folder), or a directory number
// as FindFolder gives it. nsvErr for a vRefNum that was never given out, dirNFErr
// for such a dirID, or if the folder no longer exists.
//
// Names are Pascal strings of 1 to 63 bytes. bdNamErr for any other length,
// nil, a ':' or NUL, "." and "..", and a name beginning with "._". A '/' in a
// name is a ':' in Linux. A Linux name that has no Mac form is known by an
// alias (folders::macName). If no file has exactly that name, one is found that
// differs only in how accents are encoded, or, when a file is opened or its
// information read or set, only in case. Deleting and renaming need the case to
// be right; creating takes the name as it is.
//
// Storage. The data fork is the plain Linux file. Finder information and the
// resource fork are in "._name" beside it (AppleDouble), which exists only when
// there is something to store. Without it a file whose first KiB looks like
// text, or is empty, has type 'TEXT' and creator 'ttxt', and any other file four
// question marks for both. Folders and other things that are not regular files:
// fnfErr.
//
// A file whose mode bits deny writing to its owner is locked, also for root.
//
// Errors of the disk become ioErr, dskFulErr, wPrErr (mounted for reading),
// wrPermErr (no right to change the folder or file), permErr (no right to open
// it), tmfoErr and so on. Every call may return such an error, can be made to
// fail (host/faults.h) and is written to the trace. Callable while the Toolbox
// runs; nothing here allocates from the heap or moves blocks.
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
// new is left over.
OSErr Create(ConstStr255Param name, int16_t vRefNum, OSType creator, OSType fileType);
OSErr HCreate(int16_t vRefNum, int32_t dirID, ConstStr255Param name, OSType creator, OSType fileType);

// Opens the data fork with the mark at 0; the caller closes it with FSClose.
// fnfErr when there is no such file. On error *refNum is 0, which is never a
// file's number. Numbers are 1 to 32767, given out in turn: the number of a
// closed file is reused only after all others, so that closing a file twice is a
// harmless rfNumErr.
// permission: fsRdPerm reads. fsWrPerm and fsRdWrPerm read and write: permErr
// when the file is locked, opWrErr when it is open for writing already.
// fsCurPerm (which FSOpen uses) reads, and also writes if that is possible. Other
// values: paramErr.
OSErr FSOpen(ConstStr255Param name, int16_t vRefNum, int16_t *refNum);
OSErr HOpen(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission, int16_t *refNum);
// rfNumErr when it is not open. With any other error it is closed all the
// same, but something written may be lost. A file that counted as text only
// because it looked like it, and no longer does, has that type stored.
OSErr FSClose(int16_t refNum);

// Reads or writes *count bytes at the mark and moves it; *count becomes the number
// moved. Reading past the end gives what there is, and eofErr. A write that fails
// may have written a part. rfNumErr (*count 0), wrPermErr when opened for
// reading only, paramErr for a negative count, dskFulErr beyond 2^31 - 1 bytes.
OSErr FSRead(int16_t refNum, int32_t *count, void *buffer);
OSErr FSWrite(int16_t refNum, int32_t *count, const void *buffer);
// Length in bytes; paramErr for a file of 2 GiB or more.
OSErr GetEOF(int16_t refNum, int32_t *logicalEnd);
// Cuts the file, or extends it with zeros. A mark beyond the new end moves to it.
// wrPermErr when opened for reading only; paramErr for a negative length.
OSErr SetEOF(int16_t refNum, int32_t logicalEnd);
OSErr GetFPos(int16_t refNum, int32_t *position);
// fsAtMark leaves the mark where it is; the others add offset to the start, the
// end or the mark. Before the start: posErr, and the mark stays. Beyond the
// end: eofErr, and the mark is at the end.
OSErr SetFPos(int16_t refNum, int16_t mode, int32_t offset);

// Deletes the file, both forks. fnfErr, fLckdErr, and fBsyErr while either fork
// is open.
OSErr FSDelete(ConstStr255Param name, int16_t vRefNum);
OSErr HDelete(int16_t vRefNum, int32_t dirID, ConstStr255Param name);
// Renames within the folder, both forks, open or not: open ones stay open
// under their numbers. dupFNErr when something has the new name (even the file
// itself), fLckdErr. On error the file keeps its old name.
OSErr Rename(ConstStr255Param oldName, int16_t vRefNum, ConstStr255Param newName);

// A damaged "._name" is ignored when reading; setting then gives ioErr and leaves
// it untouched. Setting what the file would have anyway, or all zeros, removes the
// stored information; the fork stays. fLckdErr when the file or "._name" is
// locked. The change is made as a whole or not at all.
OSErr GetFInfo(ConstStr255Param name, int16_t vRefNum, FInfo *info);
OSErr HGetFInfo(int16_t vRefNum, int32_t dirID, ConstStr255Param name, FInfo *info);
OSErr SetFInfo(ConstStr255Param name, int16_t vRefNum, const FInfo *info);

// Waits until what was written to files now open on the volume of vRefNum is on
// the disk. Renaming is not waited for: the disk has the old name or the new one.
// The name argument is ignored.
OSErr FlushVol(ConstStr255Param name, int16_t vRefNum);

// The folder of a kind, for use as vRefNum and dirID; both 0 on error.
// kPreferencesFolderType: the host's choice, else $XDG_CONFIG_HOME/riders or
// ~/.config/riders; with create it is made, parents included. Missing: fnfErr.
// dupFNErr when a file is in its place. kTemporaryFolderType: a folder for this
// session alone under $TMPDIR, always there while the session runs and removed
// with everything in it when the session stops. Other kinds: fnfErr.
OSErr FindFolder(int16_t vRefNum, OSType folderType, Boolean create, int16_t *foundVRefNum, int32_t *foundDirID);

#ifdef __cplusplus
}
#endif
