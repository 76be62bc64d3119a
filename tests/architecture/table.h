// The tables of docs/ARCHITECTURE.md: the rooms, whom each may know, and the
// libraries with the rooms that use them.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace architecture {

// A room is a folder, its path ending in a slash, without the rooms inside it;
// or a single file. Paths start at the top of the tree.
struct Room {
    std::string path;
    int line = 0;  // of the document
    bool knowsEverything = false;
    std::vector<std::string> mayKnow;  // `folder/` a room, `folder/*` all in the folder, or a file
};

// The headers of a library, as they are included: `SDL*.h`, `sys/*`.
struct Library {
    std::string name;
    std::vector<std::string> headers;
    std::vector<std::string> rooms;  // as in Room::mayKnow
};

struct Table {
    std::string document;  // its path, for messages
    std::vector<Room> rooms;
    std::vector<Library> libraries;

    // The room that a file is in: the innermost. Null where it is in none.
    const Room *roomOf(const std::string &file) const;
};

// Reads every table of the text whose first and third heads are "Room" and
// "May know", and every one with the heads "Headers" and "Used in" in its second
// and third. Paths are in backticks; other words are for people, except
// "everything" as the first word of what a room may know.
Table readTable(const std::string &document, const std::string &text);

// Whether one of the entries, as in Room::mayKnow, covers this file, which lies
// in this room.
bool covers(const std::vector<std::string> &entries, const Room &room, const std::string &file);

// Whether `name` matches the pattern, where * stands for any characters.
bool matches(const std::string &pattern, const std::string &name);

}  // namespace architecture
