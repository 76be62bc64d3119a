// Whole resource forks by file, for the Resource Manager.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "toolbox/types.h"

namespace toolbox::files {

struct ForkAddress {
    std::int16_t vRefNum;
    std::int32_t dirID;
    std::string name;  // Mac OS Roman, no length byte
};

// Where the file of the fork is, or would be.
OSErr locateFork(const ForkAddress &address, std::filesystem::path &path);

// The bytes of the resource fork, empty where the file has none. fnfErr when
// there is neither the file nor its companion, ioErr when the companion is
// damaged (bytes is then empty).
OSErr readFork(const ForkAddress &address, std::string &bytes);

// Replaces the fork, and makes the file (empty) when there is none. Afterwards
// the fork is wholly the new one, or with an error wholly the old one.
// fLckdErr when the file or its companion is read-only, ioErr when the
// companion is damaged: what it holds is then left as it is.
// Checks the table of faults as a write.
OSErr writeFork(const ForkAddress &address, const std::string &bytes);

}  // namespace toolbox::files
