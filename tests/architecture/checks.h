// What must not be in the tree. Each check returns a sentence for each place
// that is wrong, with file and line, and with what to do.
#pragma once

#include <string>
#include <vector>

#include "architecture/symbols.h"
#include "architecture/table.h"
#include "architecture/tree.h"

namespace architecture {

using Findings = std::vector<std::string>;

// The table: rooms without files, and unknown rooms.
Findings wrongRows(const Table &table, const Tree &tree);
// Files in no room.
Findings homelessFiles(const Table &table, const Tree &tree);
// Quoted includes that name no file of the tree.
Findings lostIncludes(const Tree &tree);
// Headers that are not the C++ standard library's, in rooms that the table of
// libraries does not name.
Findings wrongLibraries(const Table &table, const Tree &tree);
// Includes from one room to another that the table does not allow.
Findings wrongIncludes(const Table &table, const Tree &tree);
// Uses of what is defined in a room that the table does not allow. A room that
// may know `x/include/...` may use everything in x/ that the headers there
// declare, whichever room of x/ it lives in, unless the room is in x/ itself.
Findings wrongUses(const Table &table, const Tree &tree, const Symbols &symbols);
// Rooms that `host/CMakeLists.txt`, a file with this text, links otherwise than
// the table says: after KNOWS are rooms of the row only, and the row has no other
// room of these, unless one after KNOWS leads there.
Findings wrongLinks(const Table &table, const std::string &file, const std::string &text);
// Files that know each other in a circle, by includes and by uses; a header and
// the source file of its name are one.
Findings fileCircles(const Tree &tree, const Symbols &symbols);
// The same for rooms.
Findings roomCircles(const Table &table, const Tree &tree, const Symbols &symbols);
// The same for what the table allows.
Findings tableCircles(const Table &table);
// Types of one name that are defined in two files which one program may hold.
Findings typesTwice(const Tree &tree);

}  // namespace architecture
