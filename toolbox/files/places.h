// Folders by number: working directories, directory numbers, and the folders
// that FindFolder knows.
#pragma once

#include <cstdint>
#include <filesystem>

#include "toolbox/host/session.h"
#include "toolbox/types.h"

namespace toolbox::files {

void startPlaces(const Configuration &configuration);
// Removes the temporary folder with everything in it.
void stopPlaces();

// nsvErr for an unknown vRefNum, dirNFErr for an unknown dirID. The folder may no
// longer exist.
OSErr folderOf(std::int16_t vRefNum, std::int32_t dirID, std::filesystem::path &folder);

OSErr findFolder(std::int16_t vRefNum, OSType folderType, bool create, std::int16_t &foundVRefNum,
                 std::int32_t &foundDirID);

}  // namespace toolbox::files
