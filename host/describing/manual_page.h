// Manual pages, made of the command line's own words and of what is written beside them.
#pragma once

#include <filesystem>
#include <string>

#include "describing/command_words.h"

namespace riders::describing {

// What all pages of one manual have in common.
struct Manual {
    std::string version, date;         // as in 1.0, and 2026-11-22
    std::filesystem::path textFolder;  // what the pages say beside the options: install/manual
    std::filesystem::path pageFolder;  // where they go: riders.1, riders-make.1 and so on
};

// Writes the program's page and one for each command. Throws io::Refusal.
//
// A page begins with what it is about and how it is used. What follows is the text called as the command is, in
// mdoc, if there is one. In it, a line ".\" options" stands for the list of options, ".\" commands" for that of
// commands, and ".\" include NAME" for the text of that name.
void writeManual(const CommandWords &program, const Manual &manual);

// Only the page of a command of that program: for one that is another program, which writeManual leaves out.
void writePage(const CommandWords &program, const CommandWords &command, const Manual &manual);

}  // namespace riders::describing
