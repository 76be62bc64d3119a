// What is checked: the source files with what they include, and what the build
// made of them. Paths of the tree start at its top: `host/main.cpp`.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "architecture/source_text.h"

namespace architecture {

// A source file that the build compiles.
struct Compiled {
    std::string source;
    std::string object;                 // a full path
    std::vector<std::string> lookedIn;  // folders of the tree given to the compiler with -I or -iquote: `host`
    bool keepsTypes = false;            // with -flto: the object holds what the compiler knew about types
};

struct Include {
    IncludeLine at;
    std::string target;  // the file of the tree that it names, or nothing
};

struct SourceFile {
    std::string text;
    std::vector<Include> includes;
};

struct Tree {
    std::string top;
    std::map<std::string, SourceFile> files;
    std::vector<Compiled> compiled;
};

// Reads all C++ files below the top, except in hidden folders and in `build`. A
// file that was not compiled itself looks where those beside it look, or else
// those of the folder above, and so on.
Tree readTree(const std::string &top, const std::vector<Compiled> &compiled);

// From the compile_commands.json that CMake writes; what lies outside the tree
// or in the build folder is left out. But what the build makes of a file of the
// tree, such as `host/proof.ps.cpp` of `host/proof.ps`, is there, as if it lay
// beside it.
std::vector<Compiled> readCompileCommands(const std::string &file, const std::string &top);

// The whole file, empty where it cannot be read.
std::string readFile(const std::string &path);

}  // namespace architecture
