// A small tree in a folder of its own, with the faults that a test plants.
#pragma once

#include <string>
#include <vector>

#include "architecture/checks.h"
#include "architecture/programs.h"

namespace architecture {

// A sound tree to start with: a program in host/, with the rooms app, proof and
// io, a plug-in in source/, and a Toolbox with the rooms events and windows.
class PlantedTree {
public:
    PlantedTree();

    void put(const std::string &path, const std::string &text);
    // The row of the room, as in the document, instead of the one it has.
    void putRow(const std::string &room, const std::string &mayKnow);
    void dropRow(const std::string &room) { rows_.erase(room); }
    // Compiles a file that was written by put.
    void compile(const std::string &path);

    Table table() const;
    Tree tree() const;
    const std::vector<Compiled> &compiled() const { return compiled_; }
    std::string top() const { return folder_.path(); }

private:
    TemporaryFolder folder_;
    std::map<std::string, std::string> rows_;
    std::vector<Compiled> compiled_;
};

}  // namespace architecture
