// "._name": a file's Finder information and resource fork, kept beside it.
//
// The companion exists only when there is something to store in it. Without one a
// file that looks like text is of type TEXT and creator ttxt, any other of type and
// creator '????'; it has no flags and no fork.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "toolbox/host/appledouble.h"
#include "toolbox/types.h"

namespace toolbox::files {

// The companion's name, of a file's without its folder.
std::string companionName(const std::string &name);
std::filesystem::path companionOf(const std::filesystem::path &file);

// An empty beginning counts as text: what is then written to a new file decides.
bool looksLikeText(std::string_view beginning);
// Whether the file looks like text. False with an error when it cannot be read.
OSErr beginsAsText(int descriptor, bool &isText);

enum class Companion { none, present, damaged };
// Contents are those of newAppleDouble when there is none or it is damaged.
Companion loadCompanion(const std::filesystem::path &file, AppleDouble &contents);
// Writes it, or removes it if there is nothing to store. Like replaceWhole, leaves
// the old one or the new one. fLckdErr when the file or the companion is read-only.
OSErr storeCompanion(const std::filesystem::path &file, const AppleDouble &contents);

// The 32 bytes, with type and creator filled in if the companion has none. A
// damaged companion counts as none. With an error, when the file has to be looked at
// and cannot be read, they are those of a file of no known type.
OSErr readFinderInfo(const std::filesystem::path &file, std::string &info);
// The type of a file without a companion, by its name in an open folder.
OSType plainTypeIn(int folder, const std::string &name);
// Whether the companion gives the file a type or creator.
bool hasTypeOfItsOwn(const std::filesystem::path &file);
// Replaces the first bytes of the Finder information. ioErr for a damaged
// companion: what it holds may still be of use.
OSErr setFinderInfoOf(const std::filesystem::path &file, std::string_view firstBytes);

OSType typeIn(std::string_view finderInfo);

}  // namespace toolbox::files
