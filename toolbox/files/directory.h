// What is in a folder, for Standard File. Nothing here is traced or can be
// made to fail: these are not file calls.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/types.h"

namespace toolbox::files {

struct FolderEntry {
    std::string linuxName;
    std::string macName;  // by which the File Manager finds it
    bool isFolder;
    OSType type;  // Finder type; 0 for a folder, and when types were not asked for
};

enum class FolderOrder { mixed, foldersFirst };
// A file without a companion is opened to find its type, which takes time in a
// large folder.
enum class FolderTypes { included, leftOut };

// Files and folders in the order people expect: without regard to case,
// numbers by their value. Hidden ones, companions, and what is neither file
// nor folder are left out. Empty where the folder cannot be read.
std::vector<FolderEntry> listFolder(const std::filesystem::path &folder, FolderOrder order = FolderOrder::mixed,
                                    FolderTypes types = FolderTypes::included);

// Empty for the root.
std::filesystem::path parentOf(const std::filesystem::path &folder);
// The folder's own name as a Mac shows it; "/" for the root.
std::string folderName(const std::filesystem::path &folder);

// Whether Create would find the name taken.
bool nameTaken(const std::filesystem::path &folder, std::string_view macName);
// Whether a file could have the name at all.
bool nameUsable(std::string_view macName);

}  // namespace toolbox::files
