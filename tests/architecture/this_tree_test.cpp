// This tree keeps to the tables of docs/ARCHITECTURE.md.
#include "architecture/findings.h"
#include "architecture/one_definition.h"

#include <gtest/gtest.h>

namespace {

using namespace architecture;

const char *const kDocument = "docs/ARCHITECTURE.md";

const Table &table()
{
    static const Table read = readTable(kDocument, readFile(std::string(RIDERS_SOURCE_DIR "/") + kDocument));
    return read;
}

const Tree &tree()
{
    static const Tree read = readTree(
        RIDERS_SOURCE_DIR, readCompileCommands(RIDERS_BINARY_DIR "/compile_commands.json", RIDERS_SOURCE_DIR));
    return read;
}

// The files of the plug-in, the program with its window, the resource compiler
// and the example of a host: not those of tests and the like, nor what is built
// only on request.
std::vector<Compiled> product()
{
    std::vector<Compiled> found;
    for (const Compiled &one : tree().compiled)
        for (const char *folder : {"source/", "toolbox/", "host/", "tools/rescomp/", "examples/"})
            if (one.source.starts_with(folder))
                found.push_back(one);
    return found;
}

const Symbols &symbols()
{
    static const Symbols read = readSymbols(RIDERS_NM, product());
    return read;
}

void expectNone(const Findings &findings)
{
    EXPECT_TRUE(findings.empty()) << lines(findings);
}

TEST(Rooms, AreThoseOfTheTable)
{
    ASSERT_GT(table().rooms.size(), 10u);
    ASSERT_GT(tree().files.size(), 300u);
    expectNone(wrongRows(table(), tree()));
    expectNone(homelessFiles(table(), tree()));
}

TEST(Rooms, KnowOnlyWhatTheTableAllows)
{
    expectNone(lostIncludes(tree()));
    expectNone(wrongIncludes(table(), tree()));
}

TEST(Rooms, UseOnlyWhatTheTableAllows)
{
    ASSERT_GT(symbols().homes.size(), 1000u);
    expectNone(wrongUses(table(), tree(), symbols()));
}

TEST(Rooms, AreLinkedAsTheTableSays)
{
    const std::string file = "host/CMakeLists.txt", text = readFile(tree().top + "/" + file);
    ASSERT_NE(text.find("riders_room(app KNOWS "), std::string::npos);
    expectNone(wrongLinks(table(), file, text));
}

TEST(Rooms, UseOnlyTheirLibraries)
{
    ASSERT_GT(table().libraries.size(), 5u);
    expectNone(wrongLibraries(table(), tree()));
}

// What they do so is done in one way only.
TEST(Rooms, LeaveItToOneToRenameSyncLockAndStartPrograms)
{
    constexpr const char *kCalls[] = {"rename",  "renameat", "renameat2", "fsync", "fdatasync",
                                      "sync",    "flock",    "lockf",     "execv", "execvp",
                                      "execvpe", "vfork",    "setrlimit"};
    int users = 0;
    for (const auto &[name, file] : tree().files)
        for (const char *call : kCalls) {
            if (!name.starts_with("host/") || !words(file.text).contains(call))
                continue;
            ++users;
            EXPECT_TRUE(name.starts_with("host/io/"))
                << name << ":" << lineOfWord(file.text, call) << ": " << call;
        }
    EXPECT_GT(users, 5);
}

TEST(Rooms, AreInNoCircle)
{
    expectNone(tableCircles(table()));
    expectNone(roomCircles(table(), tree(), symbols()));
}

TEST(Files, AreInNoCircle)
{
    expectNone(fileCircles(tree(), symbols()));
}

TEST(Types, OfOneNameAreDefinedOnce)
{
    expectNone(typesTwice(tree()));
}

// The main files of the resource compiler, the printer and the example belong to other programs.
TEST(Types, AreTheSameInEveryFile)
{
    std::vector<Compiled> together;
    for (const Compiled &one : product())
        if (one.source != "tools/rescomp/main.cpp" && one.source != "host/printer_main.cpp" &&
            !one.source.starts_with("examples/"))
            together.push_back(one);
    ASSERT_GT(together.size(), 150u);
    expectNone(differingDefinitions(RIDERS_CXX, tree().top, together));
}

// Without its object, it is not known what a file uses.
TEST(Objects, AreAllThere)
{
    Findings missing;
    for (const std::string &source : symbols().missing)
        missing.push_back(source + " has not been compiled; build everything first");
    expectNone(missing);
}

}  // namespace
