// Files by name: making, deleting, renaming them, their Finder information.
#pragma once

#include <cstdint>
#include <filesystem>

#include "files/linuxfile.h"
#include "files/names.h"
#include "toolbox/files.h"

namespace toolbox::files {

// The path and the status of the file that a call is about.
OSErr locateFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, Match match, Aim aim,
                 std::filesystem::path &path, struct stat &status);

OSErr createFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, OSType creator, OSType fileType);
OSErr removeFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name);
OSErr renameFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param oldName, ConstStr255Param newName);
OSErr getInfo(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, FInfo *info);
OSErr setInfo(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, const FInfo *info);

}  // namespace toolbox::files
