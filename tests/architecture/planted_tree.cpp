#include "architecture/planted_tree.h"

#include <filesystem>
#include <fstream>

namespace architecture {

namespace {

const std::vector<std::string> kLookedIn = {"host", "include", "toolbox/include", "toolbox", "source", "tests"};

}  // namespace

PlantedTree::PlantedTree()
{
    put("toolbox/include/toolbox/windows.h", "#pragma once\nint FindWindow(int place);\nint FrontWindow();\n");
    put("toolbox/windows/windows.cpp", "#include \"toolbox/windows.h\"\n#include \"windows/list.h\"\n"
                                       "int FindWindow(int place) { return place; }\n"
                                       "int FrontWindow() { return windows().first; }\n");
    put("toolbox/windows/list.h", "#pragma once\nstruct List { int first = 0; };\n"
                                  "inline List windows() { return {}; }\n");
    put("toolbox/events/queue.h", "#pragma once\nint waiting();\n");
    put("toolbox/events/queue.cpp", "#include \"events/queue.h\"\nint waiting() { return 0; }\n");
    put("source/spot.cpp", "#include <vector>\n#include \"toolbox/windows.h\"\n"
                           "int spot() { return FrontWindow(); }\n");
    put("host/app/words.h", "#pragma once\nnamespace app { struct Words { int count; }; }\n");
    put("host/app/start.cpp",
        "#include \"app/words.h\"\n#include \"proof/proof.h\"\n#include \"toolbox/windows.h\"\n"
        "int start() { return proof() + FindWindow(1); }\n");
    put("host/proof/proof.h", "#pragma once\nint proof();\n");
    put("host/proof/proof.cpp", "#include \"proof/proof.h\"\n#include \"io/bytes.h\"\n#include <unistd.h>\n"
                                "int proof() { return Bytes().count; }\n");
    put("host/io/bytes.h", "#pragma once\nstruct Bytes { int count = 0; };\n");
    putRow("toolbox/include/toolbox/", "");
    putRow("toolbox/windows/", "`toolbox/include/*`, `toolbox/events/`");
    putRow("toolbox/events/", "`toolbox/include/*`");
    putRow("source/", "`toolbox/include/toolbox/`");
    putRow("host/app/", "`host/proof/`, `toolbox/include/toolbox/`");
    putRow("host/proof/", "`host/io/`");
    putRow("host/io/", "");
}

void PlantedTree::put(const std::string &path, const std::string &text)
{
    std::filesystem::path whole = std::filesystem::path(top()) / path;
    std::filesystem::create_directories(whole.parent_path());
    std::ofstream(whole) << text;
}

void PlantedTree::putRow(const std::string &room, const std::string &mayKnow)
{
    rows_[room] = "| `" + room + "` | a room | " + mayKnow + " |\n";
}

void PlantedTree::compile(const std::string &path)
{
    std::string object = top() + "/build/" + std::to_string(compiled_.size()) + ".o", folders;
    std::filesystem::create_directories(top() + "/build");
    for (const std::string &folder : kLookedIn)
        folders += " -I" + top() + "/" + folder;
    outputOf(RIDERS_CXX " -std=c++20 -flto -ffat-lto-objects -c " + top() + "/" + path + folders + " -o " +
             object);
    compiled_.push_back({path, object, kLookedIn, true});
}

Table PlantedTree::table() const
{
    std::string text = "# Rooms\n\n| Room | What it is | May know |\n|---|---|---|\n";
    for (const auto &[room, row] : rows_)
        text += row;
    text += "\n| Library | Headers | Used in | For |\n|---|---|---|---|\n"
            "| SDL2 | `SDL.h`, `SDL_*.h` | `toolbox/windows/` | the window |\n"
            "| POSIX | `unistd.h`, `sys/*` | `host/*`, `toolbox/*` | |\n";
    return readTable("docs/ARCHITECTURE.md", text);
}

Tree PlantedTree::tree() const
{
    // Where nothing has been compiled yet, a file that is not there says where to look.
    std::vector<Compiled> compiled = compiled_;
    compiled.push_back({"main.cpp", "", kLookedIn, false});
    return readTree(top(), compiled);
}

}  // namespace architecture
