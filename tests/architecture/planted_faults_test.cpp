// Each kind of fault, planted in a small tree, is found and reported with its
// place; and nothing is reported for a sound tree.
#include "architecture/findings.h"
#include "architecture/one_definition.h"
#include "architecture/planted_tree.h"

#include <gtest/gtest.h>

namespace {

using namespace architecture;

struct Planted : testing::Test {
    PlantedTree planted;

    std::string rows() const { return lines(wrongRows(planted.table(), planted.tree())); }
    std::string includes() const { return lines(wrongIncludes(planted.table(), planted.tree())); }
    std::string libraries() const { return lines(wrongLibraries(planted.table(), planted.tree())); }
    std::string types() const { return lines(typesTwice(planted.tree())); }
    Symbols symbols() const { return readSymbols(RIDERS_NM, planted.compiled()); }
    std::string uses() const { return lines(wrongUses(planted.table(), planted.tree(), symbols())); }
    std::string circles() const { return lines(fileCircles(planted.tree(), symbols())); }
    std::string rooms() const { return lines(roomCircles(planted.table(), planted.tree(), symbols())); }
};

TEST_F(Planted, NothingIsFoundInASoundTree)
{
    for (const char *file : {"toolbox/windows/windows.cpp", "toolbox/events/queue.cpp", "source/spot.cpp",
                             "host/app/start.cpp", "host/proof/proof.cpp"})
        planted.compile(file);
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(lines(homelessFiles(planted.table(), planted.tree())), "");
    EXPECT_EQ(lines(lostIncludes(planted.tree())), "");
    EXPECT_EQ(libraries(), "");
    EXPECT_EQ(includes(), "");
    EXPECT_EQ(uses(), "");
    EXPECT_EQ(circles(), "");
    EXPECT_EQ(rooms(), "");
    EXPECT_EQ(lines(tableCircles(planted.table())), "");
    EXPECT_EQ(types(), "");
    EXPECT_EQ(lines(differingDefinitions(RIDERS_CXX, planted.top(), planted.compiled())), "");
}

TEST_F(Planted, AnIncludeThatTheTableDoesNotAllow)
{
    planted.put("host/proof/page.cpp", "// A page.\n\n#include \"app/words.h\"\n");
    EXPECT_EQ(includes(),
              "host/proof/page.cpp:3 includes \"app/words.h\": host/proof/ may not know host/app/; see the "
              "table in docs/ARCHITECTURE.md\n");
    planted.putRow("host/proof/", "`host/io/` and `host/app/words.h`");
    EXPECT_EQ(includes(), "") << "one file may be named in a row";
}

TEST_F(Planted, APrivateHeaderIncludedFromOutside)
{
    planted.put("host/app/bar.cpp", "#include \"windows/list.h\"\n");
    EXPECT_EQ(includes(),
              "host/app/bar.cpp:1 includes \"windows/list.h\": it is private to toolbox/, and host/app/ may "
              "not look inside: use what is public, or name the file in the row of host/app/; see the table "
              "in docs/ARCHITECTURE.md\n");
}

TEST_F(Planted, AUseThroughAPublicHeader)
{
    planted.put("toolbox/events/queue.cpp",
                "#include \"events/queue.h\"\n#include \"toolbox/windows.h\"\n"
                "// FindWindow comes first.\nint waiting() { return FindWindow(2); }\n");
    planted.compile("toolbox/windows/windows.cpp");
    planted.compile("toolbox/events/queue.cpp");
    EXPECT_EQ(includes(), "") << "the header is open to all";
    EXPECT_EQ(uses(), "toolbox/events/queue.cpp:4 uses FindWindow, which lives in toolbox/windows/windows.cpp: "
                      "toolbox/events/ may not know toolbox/windows/; see the table in docs/ARCHITECTURE.md\n");
}

TEST_F(Planted, AUseOfWhatTheHeadersDoNotDeclare)
{
    planted.put("host/io/guess.cpp", "int waiting();\nint guess() { return waiting(); }\n");
    planted.compile("toolbox/events/queue.cpp");
    planted.compile("host/io/guess.cpp");
    EXPECT_EQ(uses(),
              "host/io/guess.cpp:1 uses waiting, which lives in toolbox/events/queue.cpp: it is private to "
              "toolbox/, and host/io/ may not look inside: use what is public, or name the file in the row of "
              "host/io/; see the table in docs/ARCHITECTURE.md\n");
}

TEST_F(Planted, AUseOfWhatNoPublicHeaderDeclares)
{
    planted.put("host/app/start.cpp", "#include \"toolbox/windows.h\"\nint waiting();\n"
                                      "int start() { return FindWindow(waiting()); }\n");
    planted.compile("toolbox/windows/windows.cpp");
    planted.compile("toolbox/events/queue.cpp");
    planted.compile("host/app/start.cpp");
    EXPECT_EQ(uses(),
              "host/app/start.cpp:2 uses waiting, which lives in toolbox/events/queue.cpp: it is private to "
              "toolbox/, and host/app/ may not look inside: use what is public, or name the file in the row of "
              "host/app/; see the table in docs/ARCHITECTURE.md\n");
    planted.put("toolbox/include/toolbox/windows.h", "int FindWindow(int);\nint waiting();\n");
    EXPECT_EQ(uses(), "");
}

TEST_F(Planted, AUseOfWhatReturnsAString)
{
    planted.put("host/proof/title.cpp", "#include <string>\nstd::string title() { return {}; }\n");
    planted.put("host/io/guess.cpp", "#include <string>\nstd::string title();\n"
                                     "std::string guess() { return title(); }\n");
    planted.compile("host/proof/title.cpp");
    planted.compile("host/io/guess.cpp");
    EXPECT_EQ(uses(), "host/io/guess.cpp:2 uses title, which lives in host/proof/title.cpp: host/io/ may not know "
                      "host/proof/; see the table in docs/ARCHITECTURE.md\n");
}

TEST_F(Planted, LinksThatTheTableDoesNotSay)
{
    auto links = [&](const std::string &text) {
        return lines(wrongLinks(planted.table(), "host/CMakeLists.txt", text));
    };
    EXPECT_EQ(links("riders_room(io LINKS png)\nriders_room(proof PIXELS KNOWS io)\n"
                    "riders_room(app KNOWS proof)\n"),
              "");
    EXPECT_EQ(links("# riders_room(FOLDER KNOWS ROOM...)\nriders_room(io)\nriders_room(proof LINKS io)\n"
                    "riders_room(app\n  KNOWS proof io # both\n  LINKS png)\nriders_room(page)\n"),
              "host/CMakeLists.txt:4: host/app/ links host/io/, which is not in its row in docs/ARCHITECTURE.md; "
              "take it from after KNOWS, or put it in the row\n"
              "host/CMakeLists.txt:7: host/page/ is not in the table in docs/ARCHITECTURE.md; give it a row\n"
              "host/CMakeLists.txt:3: host/proof/ does not link host/io/, which is in its row in "
              "docs/ARCHITECTURE.md; put it after KNOWS, or take it out of the row\n");
    planted.putRow("host/app/", "`host/proof/`, `host/io/`");
    EXPECT_EQ(links("riders_room(io)\nriders_room(proof KNOWS io)\nriders_room(app KNOWS proof)\n"), "")
        << "the room is reached through another";
}

TEST_F(Planted, ACircleOfFiles)
{
    planted.put("host/app/words.h", "#pragma once\n#include \"app/menus.h\"\n");
    planted.put("host/app/menus.cpp", "#include \"app/menus.h\"\n#include \"app/items.h\"\n");
    planted.put("host/app/menus.h", "#pragma once\n");
    planted.put("host/app/items.h", "#pragma once\n\n#include \"app/words.h\"\n");
    EXPECT_EQ(
        circles(),
        "files know each other in a circle: host/app/items -> host/app/words -> host/app/menus -> host/app/items\n"
        "    host/app/items.h:3 includes \"app/words.h\"\n"
        "    host/app/words.h:2 includes \"app/menus.h\"\n"
        "    host/app/menus.cpp:2 includes \"app/items.h\"\n"
        "    take one of these out, or move what both need to a place of its own\n");
}

TEST_F(Planted, ACircleOfFilesByUse)
{
    planted.put("host/io/in.cpp", "#include \"io/bytes.h\"\nint out();\nint in() { return out(); }\n");
    planted.put("host/io/out.cpp", "int in();\n\n// The other way.\nint out() { return in(); }\n");
    planted.compile("host/io/in.cpp");
    planted.compile("host/io/out.cpp");
    EXPECT_EQ(circles(), "files know each other in a circle: host/io/in -> host/io/out -> host/io/in\n"
                         "    host/io/in.cpp:2 uses out, which lives in host/io/out.cpp\n"
                         "    host/io/out.cpp:1 uses in, which lives in host/io/in.cpp\n"
                         "    take one of these out, or move what both need to a place of its own\n");
}

TEST_F(Planted, ACircleOfRooms)
{
    planted.put("toolbox/windows/click.cpp", "#include \"events/queue.h\"\n");
    planted.put("toolbox/events/queue.cpp",
                "#include \"toolbox/windows.h\"\nint waiting() { return FrontWindow(); }\n");
    planted.compile("toolbox/windows/windows.cpp");
    planted.compile("toolbox/events/queue.cpp");
    EXPECT_EQ(rooms(),
              "rooms know each other in a circle: toolbox/events/ -> toolbox/windows/ -> toolbox/events/\n"
              "    toolbox/events/queue.cpp:2 uses FrontWindow, which lives in toolbox/windows/windows.cpp\n"
              "    toolbox/windows/click.cpp:1 includes \"events/queue.h\"\n"
              "    take one of these out, or move what both need to a place of its own\n");
}

TEST_F(Planted, ACircleInTheTable)
{
    planted.putRow("toolbox/events/", "`toolbox/windows/`");
    EXPECT_EQ(lines(tableCircles(planted.table())),
              "docs/ARCHITECTURE.md: the table lets rooms know each other in a circle: toolbox/events/ -> "
              "toolbox/windows/ -> toolbox/events/; take one of these out of its row\n");
}

TEST_F(Planted, AFileInNoRoom)
{
    planted.put("host/ideas/idea.cpp", "\n");
    EXPECT_EQ(lines(homelessFiles(planted.table(), planted.tree())),
              "host/ideas/idea.cpp is in no room; move it to one, or give its folder a row in the table in "
              "docs/ARCHITECTURE.md\n");
}

TEST_F(Planted, ARoomWithNothingInIt)
{
    planted.putRow("host/attic/", "`host/cellar/`");
    EXPECT_EQ(rows(),
              "docs/ARCHITECTURE.md:6: there is nothing in the room host/attic/; take its row out of the table\n"
              "docs/ARCHITECTURE.md:6: host/attic/ may know host/cellar/, which is neither a room with a row nor "
              "a file; mend the row\n");
}

TEST_F(Planted, AnIncludeOfNoFile)
{
    planted.put("source/spot.cpp", "#include \"vector\"\n");
    EXPECT_EQ(
        lines(lostIncludes(planted.tree())),
        "source/spot.cpp:1 includes \"vector\", which is no file of the tree; a library's header stands between < "
        "and >\n");
}

TEST_F(Planted, ALibraryOutsideItsRoom)
{
    planted.put("host/app/start.cpp", "#include <SDL_events.h>\n");
    planted.put("source/spot.cpp", "#include <cstdio>\n#include <sys/stat.h>\n");
    planted.put("host/io/print.cpp", "#include <pappl/pappl.h>\n");
    EXPECT_EQ(
        libraries(),
        "host/app/start.cpp:1 includes <SDL_events.h>, which is SDL2's, which host/app/ may not use; see "
        "docs/ARCHITECTURE.md\n"
        "host/io/print.cpp:1 includes <pappl/pappl.h>, which is of no library in the table of libraries; see "
        "docs/ARCHITECTURE.md\n"
        "source/spot.cpp:2 includes <sys/stat.h>, which is POSIX's, which source/ may not use; see "
        "docs/ARCHITECTURE.md\n");
}

TEST_F(Planted, ATypeDefinedTwice)
{
    planted.put("host/io/place.h", "namespace riders {\nstruct Place { int offset; };\n}\n");
    planted.put("host/app/place.h", "namespace riders {\n\nclass Place final : public Words {\n};\n}\n");
    EXPECT_EQ(types(),
              "host/io/place.h:2 defines riders::Place, and so does host/app/place.h:3: in one program these "
              "are one type; rename one, or give each room its namespace\n");
}

TEST_F(Planted, NoTypeDefinedTwice)
{
    planted.put("host/io/place.h", "namespace io {\nstruct Place { enum class Kind : int { A }; };\n}\n"
                                   "namespace {\nstruct Own {};\n}\nstruct Later;\n");
    planted.put("host/app/place.cpp",
                "struct Later *later();\n/* struct Bytes {}; */ const char *text = \"struct Bytes {\";\n"
                "namespace {\nstruct Own {};\nstruct Bytes {};\n}\n"
                "struct Frame { struct Place {} place; enum Kind { A } kind; };\n"
                "template <class Bytes> int f(Bytes b) { struct List { int n; } l{1'000}; return l.n; }\n");
    planted.put("tests/host/fixture.cpp", "struct Fixture {};\n");
    planted.put("tests/source/fixture.cpp", "struct Fixture {};\n");
    EXPECT_EQ(types(), "");
    planted.put("tests/support/fixture.h", "extern \"C\" {\nstruct Fixture {};\n}\n");
    EXPECT_NE(types(), "") << "what the tests share meets each of them";
}

TEST_F(Planted, DefinitionsThatDiffer)
{
    planted.put("host/io/a.cpp",
                "namespace riders {\nstruct Place { int offset; };\nint a(Place p) { return p.offset; "
                "}\n}\n");
    planted.put("host/app/b.cpp", "namespace riders {\n#define PLACE struct Place { double x, y; }\nPLACE;\n"
                                  "double b(Place p) { return p.x; }\n}\n");
    planted.compile("host/io/a.cpp");
    planted.compile("host/app/b.cpp");
    EXPECT_EQ(types(), "") << "hidden from who reads the text only";
    std::string found = lines(differingDefinitions(RIDERS_CXX, planted.top(), planted.compiled()));
    EXPECT_NE(found.find("host/io/a.cpp:2:8: warning: type 'struct Place' violates"), std::string::npos) << found;
    EXPECT_NE(found.find("\n    host/app/b.cpp:3:"), std::string::npos) << found;
}

TEST_F(Planted, ObjectsThatAreNotThere)
{
    planted.compile("host/proof/proof.cpp");
    std::vector<Compiled> compiled = planted.compiled();
    compiled.push_back({"host/app/start.cpp", planted.top() + "/build/none.o", {}, true});
    EXPECT_EQ(readSymbols(RIDERS_NM, compiled).missing, std::vector<std::string>{"host/app/start.cpp"});
    compiled = planted.compiled();
    compiled[0].keepsTypes = false;
    EXPECT_EQ(lines(differingDefinitions(RIDERS_CXX, planted.top(), compiled)),
              "host/proof/proof.cpp is compiled without -flto, so its types cannot be compared\n");
}

}  // namespace
