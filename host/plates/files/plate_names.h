// Plates' names: as the interpreter writes them, for people, and for files.
#pragma once

#include <set>
#include <string>

namespace riders::plates {

// UTF-8 of a text in UTF-8 or, where it is none, Latin-1; control characters become blanks.
std::string plainText(const std::string &bytes);

// The same of a name whose odd bytes are written as %25 and so on.
std::string plateNameFrom(const std::string &interpreters);

// The bytes of such a name as the job has them.
std::string inkBytesFrom(const std::string &interpreters);

// A name for a file: small letters, digits and hyphens, 40 at most; not one
// of those taken already, to which it is added.
std::string fileNameFor(const std::string &plate, std::set<std::string> &taken);

}  // namespace riders::plates
