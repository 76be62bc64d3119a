// "._name": a file's Finder information and resource fork, kept beside it.
//
// The companion is there only when it has something to say. Without one a file
// that looks like text is of type TEXT and creator ttxt, any other of type and
// creator '????'; it has no flags and no fork.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "toolbox/host/appledouble.h"
#include "toolbox/types.h"

namespace toolbox::files {

std::filesystem::path companionOf(const std::filesystem::path &file);

// An empty beginning is text: a new file is what is then written to it.
bool looksLikeText(std::string_view beginning);
bool openFileLooksLikeText(int descriptor);

enum class Companion { none, present, damaged };
// Contents are those of newAppleDouble where there is none.
Companion loadCompanion(const std::filesystem::path &file, AppleDouble &contents);
// Writes it, or removes it where it would say nothing. Old or new, as
// replaceWhole. fLckdErr when the file or the companion is read-only.
OSErr storeCompanion(const std::filesystem::path &file, const AppleDouble &contents);

// The 32 bytes, type and creator filled in where nothing says them. A damaged
// companion counts as none.
std::string finderInfoOf(const std::filesystem::path &file);
// Whether the companion gives the file a type or creator.
bool hasTypeOfItsOwn(const std::filesystem::path &file);
// Replaces the first bytes of the Finder information. ioErr for a damaged
// companion: what it holds may still be of use.
OSErr setFinderInfoOf(const std::filesystem::path &file, std::string_view firstBytes);

OSType typeIn(std::string_view finderInfo);

}  // namespace toolbox::files
