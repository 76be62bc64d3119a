// File Manager: files with two forks, named by a directory and a Mac OS Roman
// name.
//
// vRefNum is a working directory number as Standard File gives it, or 0 for
// the default folder, or kOnSystemDisk. dirID is 0 for the folder that vRefNum
// names, or a directory number as FindFolder gives it. Names hold up to 63
// characters. The data fork is the plain Linux file; Finder information and
// the resource fork live in "._name" beside it.
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

// Makes an empty file. dupFNErr when the name exists, bdNamErr, wPrErr,
// dirNFErr.
OSErr Create(ConstStr255Param name, int16_t vRefNum, OSType creator, OSType fileType);
OSErr HCreate(int16_t vRefNum, int32_t dirID, ConstStr255Param name, OSType creator, OSType fileType);
// Opens the data fork with the mark at 0, for reading and writing where the
// file allows it. *refNum is never given out again for another file while the
// Toolbox runs, so a second close of it is a harmless rfNumErr.
OSErr FSOpen(ConstStr255Param name, int16_t vRefNum, int16_t *refNum);
OSErr HOpen(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission, int16_t *refNum);
OSErr FSClose(int16_t refNum);
// Reads or writes *count bytes at the mark and moves it; *count becomes what
// was done. Reading past the end: what there is, and eofErr.
OSErr FSRead(int16_t refNum, int32_t *count, void *buffer);
OSErr FSWrite(int16_t refNum, int32_t *count, const void *buffer);
OSErr GetEOF(int16_t refNum, int32_t *logicalEnd);
OSErr SetEOF(int16_t refNum, int32_t logicalEnd);
OSErr GetFPos(int16_t refNum, int32_t *position);
OSErr SetFPos(int16_t refNum, int16_t mode, int32_t offset);
// Deletes the file, both forks. fnfErr, fLckdErr (read-only), fBsyErr (open).
OSErr FSDelete(ConstStr255Param name, int16_t vRefNum);
OSErr HDelete(int16_t vRefNum, int32_t dirID, ConstStr255Param name);
// Renames within the folder, both forks, open or not. dupFNErr when the new
// name exists.
OSErr Rename(ConstStr255Param oldName, int16_t vRefNum, ConstStr255Param newName);
OSErr GetFInfo(ConstStr255Param name, int16_t vRefNum, FInfo *info);
OSErr HGetFInfo(int16_t vRefNum, int32_t dirID, ConstStr255Param name, FInfo *info);
OSErr SetFInfo(ConstStr255Param name, int16_t vRefNum, const FInfo *info);
// Hands everything written to the disk. name nil: the volume of vRefNum.
OSErr FlushVol(ConstStr255Param name, int16_t vRefNum);
// The folder of a kind, made if create is set (never its parents' parents).
OSErr FindFolder(int16_t vRefNum, OSType folderType, Boolean create, int16_t *foundVRefNum, int32_t *foundDirID);

#ifdef __cplusplus
}
#endif
