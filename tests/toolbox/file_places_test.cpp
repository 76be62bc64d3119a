// Working directories, FindFolder, and what Standard File sees of a folder.
#include <stdlib.h>
#include <sys/stat.h>

#include "files/directory.h"
#include "support/toolbox_test.h"
#include "toolbox/files.h"

using namespace toolbox;
namespace fs = std::filesystem;

namespace {

// Sets an environment variable for the duration of a test.
class Variable {
public:
    Variable(const char *name, const char *value) : name_(name)
    {
        if (const char *before = getenv(name))
            before_ = before;
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~Variable() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *name_;
    std::optional<std::string> before_;
};

class FilePlacesTest : public ToolboxTest {
protected:
    OSErr find(OSType type, bool create, int16_t vRefNum = kOnSystemDisk)
    {
        return FindFolder(vRefNum, type, create, &foundVRefNum, &foundDirID);
    }
    fs::path found() { return folders::pathOf(foundVRefNum, foundDirID); }
    std::vector<std::string> listed(files::FolderOrder order = files::FolderOrder::mixed)
    {
        std::vector<std::string> names;
        for (const files::FolderEntry &entry : files::listFolder(folder.path(), order))
            names.push_back(entry.macName);
        return names;
    }

    int16_t foundVRefNum = 1;
    int32_t foundDirID = 1;
};

}  // namespace

TEST_F(FilePlacesTest, SameFolderSameNumber)
{
    fs::create_directory(folder / "a");
    auto first = folders::workingDirectory(folder / "a");
    ASSERT_TRUE(first);
    EXPECT_GE(*first, -32000);
    EXPECT_LT(*first, 0);
    EXPECT_EQ(folders::workingDirectory(folder.path() / "a" / ".." / "a" / ""), first);
    EXPECT_NE(folders::workingDirectory(folder.path()), first);
    EXPECT_EQ(folders::pathOf(*first), fs::canonical(folder / "a"));
    EXPECT_EQ(folders::pathOf(*first, 0, P("x/y")), fs::canonical(folder / "a") / "x:y");
}

TEST_F(FilePlacesTest, WhatIsNotAFolderHasNoNumber)
{
    writeFile(folder / "file", "");
    EXPECT_FALSE(folders::workingDirectory(folder / "file"));
    EXPECT_FALSE(folders::workingDirectory(folder / "missing"));
    EXPECT_TRUE(folders::pathOf(-31000).empty());
    EXPECT_TRUE(folders::pathOf(0, 77).empty());
    EXPECT_TRUE(folders::pathOf(0, 0, P("a:b")).empty());
}

TEST_F(FilePlacesTest, ZeroIsTheStartFolderOrHome)
{
    EXPECT_EQ(folders::pathOf(0), folder.path());
    fs::create_directory(folder / "home");
    Variable home("HOME", (folder / "home").c_str());
    configuration.startFolder.clear();
    restart();
    EXPECT_EQ(folders::pathOf(0), folder / "home");
}

TEST_F(FilePlacesTest, PreferencesFolderIsMadeWithItsParents)
{
    configuration.preferencesFolder = folder.path() / "deep" / "down" / "prefs";
    restart();
    EXPECT_EQ(find(kPreferencesFolderType, false), fnfErr);
    EXPECT_EQ(foundDirID, 0);
    EXPECT_EQ(find(kPreferencesFolderType, true), noErr);
    EXPECT_TRUE(fs::is_directory(configuration.preferencesFolder));
    EXPECT_EQ(found(), configuration.preferencesFolder);
    int32_t first = foundDirID;
    EXPECT_EQ(find(kPreferencesFolderType, false), noErr);
    EXPECT_EQ(foundDirID, first);
    EXPECT_TRUE(traced("file findFolder \"pref\" -> -43"));
}

TEST_F(FilePlacesTest, FilesAreMadeInTheFolderFound)
{
    ASSERT_EQ(find(kPreferencesFolderType, true), noErr);
    EXPECT_EQ(HCreate(foundVRefNum, foundDirID, P("Riders"), 'RIDR', 'pref'), noErr);
    EXPECT_TRUE(fs::exists(folder.path() / "preferences" / "Riders"));
    FInfo info{};
    EXPECT_EQ(HGetFInfo(foundVRefNum, foundDirID, P("Riders"), &info), noErr);
    EXPECT_EQ(HDelete(foundVRefNum, foundDirID, P("Riders")), noErr);
}

TEST_F(FilePlacesTest, PreferencesFolderFollowsTheEnvironment)
{
    configuration.preferencesFolder.clear();
    Variable home("HOME", folder.path().c_str());
    {
        Variable xdg("XDG_CONFIG_HOME", (folder / "config").c_str());
        restart();
        ASSERT_EQ(find(kPreferencesFolderType, true), noErr);
        EXPECT_EQ(found(), folder.path() / "config" / "riders");
    }
    for (const char *useless : {static_cast<const char *>(nullptr), "", "relative"}) {
        Variable xdg("XDG_CONFIG_HOME", useless);
        restart();
        ASSERT_EQ(find(kPreferencesFolderType, true), noErr);
        EXPECT_EQ(found(), folder.path() / ".config" / "riders");
    }
}

TEST_F(FilePlacesTest, FileInTheWayOfTheFolderIsReported)
{
    writeFile(folder / "preferences", "a file");
    EXPECT_EQ(find(kPreferencesFolderType, true), dupFNErr);
    configuration.preferencesFolder = folder.path() / "preferences" / "below";
    restart();
    EXPECT_EQ(find(kPreferencesFolderType, true), dupFNErr);
    EXPECT_EQ(contentsOf(folder / "preferences"), "a file");
}

TEST_F(FilePlacesTest, TemporaryFolderIsAlwaysTheSameAndIsRemovedAtTheEnd)
{
    Variable temporary("TMPDIR", folder.path().c_str());
    ASSERT_EQ(find(kTemporaryFolderType, true), noErr);
    fs::path path = found();
    EXPECT_EQ(path.parent_path(), folder.path());
    ASSERT_EQ(find(kTemporaryFolderType, true), noErr);
    EXPECT_EQ(found(), path);
    writeFile(path / "left behind", "");
    restart();
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(FilePlacesTest, OtherFoldersAndDisksAreUnknown)
{
    EXPECT_EQ(find('macs', true), fnfErr);
    EXPECT_EQ(find(kPreferencesFolderType, true, -9), nsvErr);
    EXPECT_EQ(FindFolder(kOnSystemDisk, kPreferencesFolderType, true, nullptr, nullptr), noErr);
}

TEST_F(FilePlacesTest, PlannedFaultOfFindFolder)
{
    faults::failFileCall(FileCall::findFolder, 1, fnfErr);
    EXPECT_EQ(find(kPreferencesFolderType, true), fnfErr);
    EXPECT_FALSE(fs::exists(folder / "preferences"));
}

TEST_F(FilePlacesTest, ListLeavesOutWhatIsNotADocument)
{
    writeFile(folder / "b", "text");
    writeFile(folder / ".hidden", "");
    writeFile(folder / "._orphan", "");
    Create(P("a"), 0, 'RIDR', 'pref');
    Create(P("invisible"), 0, 'RIDR', 'pref');
    FInfo info{'pref', 'RIDR', 0x4000, {0, 0}, 0};
    SetFInfo(P("invisible"), 0, &info);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0666), 0);
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("b", folder / "link");
    EXPECT_EQ(listed(), (std::vector<std::string>{"a", "b", "link"}));
}

TEST_F(FilePlacesTest, ListHasNamesTypesAndOrder)
{
    for (const char *name : {"file 10", "File 2", "Anna", "日本語.txt"})
        writeFile(folder / name, "text");
    writeFile(folder / "data", std::string(4, '\0'));
    fs::create_directory(folder / "midway");
    EXPECT_EQ(listed(), (std::vector<std::string>{"???#1.txt", "Anna", "data", "File 2", "file 10", "midway"}));
    EXPECT_EQ(listed(files::FolderOrder::foldersFirst).front(), "midway");
    auto entries = files::listFolder(folder.path());
    EXPECT_EQ(entries[0].linuxName, "日本語.txt");
    EXPECT_EQ(entries[1].type, static_cast<OSType>('TEXT'));
    EXPECT_EQ(entries[2].type, OSType{0x3F3F3F3F});
    EXPECT_TRUE(entries[5].isFolder);
    EXPECT_TRUE(files::listFolder(folder / "missing").empty());
}

// So many are looked into by two threads.
TEST_F(FilePlacesTest, EachOfManyFilesHasItsOwnType)
{
    for (int i = 0; i < 1500; ++i)
        writeFile(folder / ("file " + std::to_string(i)), i % 3 == 0 ? std::string(4, '\0') : "text");
    const auto entries = files::listFolder(folder.path());
    ASSERT_EQ(entries.size(), 1500u);
    for (int i = 0; i < 1500; ++i)
        EXPECT_EQ(entries[i].type, i % 3 == 0 ? OSType{0x3F3F3F3F} : OSType{'TEXT'}) << entries[i].macName;
}

TEST_F(FilePlacesTest, AListWithoutTypesHasTheSameEntries)
{
    writeFile(folder / "plain", "text");
    writeFile(folder / "typed", "text");
    writeFile(folder / "unseen", "text");
    FInfo info{'PICT', 'RIDR', 0, {}, 0};
    ASSERT_EQ(SetFInfo(P("typed"), 0, &info), noErr);
    info.fdFlags = 0x4000;
    ASSERT_EQ(SetFInfo(P("unseen"), 0, &info), noErr);
    auto entries = files::listFolder(folder.path(), files::FolderOrder::mixed, files::FolderTypes::leftOut);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].macName, "plain");
    EXPECT_EQ(entries[1].macName, "typed");
    EXPECT_EQ(entries[0].type, OSType{0});
    EXPECT_EQ(listed(), (std::vector<std::string>{"plain", "typed"}));
}

TEST_F(FilePlacesTest, LookingIsNotAFileCall)
{
    writeFile(folder / "a", "");
    faults::failAnyFileCall(1, ioErr, true);
    EXPECT_EQ(listed().size(), 1u);
    EXPECT_TRUE(files::nameTaken(folder.path(), "a"));
    EXPECT_FALSE(files::nameTaken(folder.path(), "b"));
    EXPECT_FALSE(faults::met());
    EXPECT_TRUE(trace.empty());
}

TEST_F(FilePlacesTest, ParentsGoUpToTheRoot)
{
    fs::create_directory(folder / "in:side");
    EXPECT_EQ(files::parentOf(folder / "in:side"), fs::canonical(folder.path()));
    EXPECT_EQ(files::folderName(folder / "in:side"), "in/side");
    EXPECT_TRUE(files::parentOf("/").empty());
    EXPECT_EQ(files::folderName("/"), "/");
    EXPECT_EQ(files::parentOf("/tmp"), "/");
}

TEST_F(FilePlacesTest, UsableNamesAreThoseCreateTakes)
{
    EXPECT_TRUE(files::nameUsable("riders"));
    EXPECT_FALSE(files::nameUsable(""));
    EXPECT_FALSE(files::nameUsable("a:b"));
    EXPECT_FALSE(files::nameUsable("._a"));
}
