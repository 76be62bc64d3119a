// Plates' names: as the interpreter writes them, for people, and for files.
#pragma once

#include <set>
#include <string>

namespace riders::plates {

// For people (see io/plain_text.h), from a name whose odd bytes are written as %25 and so on. `spotInks` is how
// many the interpreter knows: by that, what it has added to a name can be told from what is the job's, but not
// always. A second spot ink that is named CYAN1 is taken for CYAN.
std::string plateNameFrom(const std::string &interpreters, size_t spotInks);

// The bytes of such a name as the job has them.
std::string inkBytesFrom(const std::string &interpreters, size_t spotInks);

// A name for a file: lower-case letters, digits and hyphens, 40 at most; not
// one that is already in `taken`, to which it is added.
std::string fileNameFor(const std::string &plate, std::set<std::string> &taken);

}  // namespace riders::plates
