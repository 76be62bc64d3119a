// What `riders make` does to the file it is given, and to those beside it.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

constexpr char kMagic[] = "%!Zu3_Riders";

class MakeFiles : public ::testing::Test {
protected:
    CommandResult make(const std::string &name, std::vector<std::string> options = {"--frequency", "61"})
    {
        std::vector<std::string> arguments = {"make", "-o", name};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runRiders(arguments, {}, folder.path());
    }

    bool isRiders(const std::string &name) const { return contentsOf(folder / name).starts_with(kMagic); }
    int entries() const
    {
        return static_cast<int>(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
    }
    struct stat statusOf(const std::string &name) const
    {
        struct stat status = {};
        EXPECT_EQ(lstat((folder / name).c_str(), &status), 0) << name;
        return status;
    }

    TemporaryFolder folder;
};

// Files of this process and of those that it starts may grow so far and no further.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit small = before_;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &before_); }
    SmallFiles(const SmallFiles &) = delete;
    SmallFiles &operator=(const SmallFiles &) = delete;

private:
    rlimit before_{};
};

}  // namespace

TEST_F(MakeFiles, OddNamesAreTheFilesOwnNames)
{
    const std::string odd[] = {"tab\tname",
                               "a\x02"
                               "b",
                               "line\nend",
                               "Cafe\xCC\x81.riders",
                               "not\xFFutf8",
                               " ",
                               "~",
                               "-x"};
    for (const std::string other : {"name", "ab", "tab", "line", "Caf\xC3\xA9.riders"})
        writeFile(folder / other, "mine");
    writeFile(folder / odd[3], "%!Zu3_Riders old");
    for (const std::string &name : odd) {
        const CommandResult result = make("./" + name);
        EXPECT_EQ(result.status, 0) << name << ": " << result.err;
        EXPECT_TRUE(isRiders(name)) << name;
    }
    for (const std::string other : {"name", "ab", "tab", "line", "Caf\xC3\xA9.riders"})
        EXPECT_EQ(contentsOf(folder / other), "mine") << other;
    EXPECT_EQ(entries(), 13);
}

TEST_F(MakeFiles, ASpotFileInAnotherFolderDoesNotMoveTheOutput)
{
    fs::create_directories(folder / "q");
    fs::create_directories(folder / "spots");
    writeFile(folder / "spots" / "mine.spot", "%!KT1_Spot\rpop\r");
    const CommandResult result = make("q/x.riders", {"--spot", "spots/mine.spot"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(isRiders("q/x.riders"));
    EXPECT_FALSE(fs::exists(folder / "spots/x.riders"));
    EXPECT_FALSE(fs::exists(folder / "x.riders"));
}

TEST_F(MakeFiles, AReplacedFileKeepsModeOwnerAndLinks)
{
    writeFile(folder / "real", "%!Zu3_Riders old");
    ASSERT_EQ(chmod((folder / "real").c_str(), 0640), 0);
    if (geteuid() == 0) {
        ASSERT_EQ(chown((folder / "real").c_str(), 1234, 1235), 0);
    }
    const struct stat before = statusOf("real");
    fs::create_symlink("real", folder / "link");
    const CommandResult result = make("link");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_TRUE(isRiders("real"));
    const struct stat after = statusOf("real");
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(entries(), 2);
}

TEST_F(MakeFiles, AFileThatMayNotBeChangedIsRefused)
{
    writeFile(folder / "locked", "mine");
    ASSERT_EQ(chmod((folder / "locked").c_str(), 0444), 0);
    const CommandResult result = make("locked");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("may not be changed"), std::string::npos) << result.err;
    EXPECT_EQ(contentsOf(folder / "locked"), "mine");
}

TEST_F(MakeFiles, ADeadFilesCompanionIsNotTheNewFiles)
{
    writeFile(folder / "._made", "of a file that is gone");
    EXPECT_EQ(make("made").status, 0);
    EXPECT_FALSE(fs::exists(folder / "._made"));
}

TEST_F(MakeFiles, EveryAlertIsAnsweredWhenTheDiskIsFull)
{
    CommandResult result;
    {
        SmallFiles small(4096);
        result = make("made", {"--frequency", "60", "--spot", "line"});
    }
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("(writespot)"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("(writefreq)"), std::string::npos) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(entries(), 0);
}

TEST_F(MakeFiles, AFolderWithoutPermissionIsNamedAsSuch)
{
    if (geteuid() == 0 && access("/usr/bin/setpriv", X_OK) != 0)
        GTEST_SKIP() << "root may write everywhere, and there is no setpriv";
    fs::create_directories(folder / "shut");
    writeFile(folder / "shut" / "made", "%!Zu3_Riders mine");
    for (const char *path : {"", "shut"})
        ASSERT_EQ(chmod((folder / path).c_str(), 0555), 0);
    ASSERT_EQ(chmod((folder / "shut" / "made").c_str(), 0666), 0);
    std::vector<std::string> command = {RIDERS_BINARY_DIR "/riders", "make", "-o", "shut/made", "--angle", "45"};
    if (geteuid() == 0)
        command.insert(command.begin(), {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
    const CommandResult result = runProgram(command, {}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("Permission denied"), std::string::npos) << result.err;
    EXPECT_EQ(contentsOf(folder / "shut" / "made"), "%!Zu3_Riders mine");
}

TEST_F(MakeFiles, AnEmptyNumberIsNotZero)
{
    for (const char *option : {"--frequency", "--angle", "--flatness"}) {
        const CommandResult result = make("made", {option, ""});
        EXPECT_EQ(result.status, 1) << option;
        EXPECT_NE(result.err.find(option), std::string::npos) << result.err;
    }
    EXPECT_EQ(make("made", {"--annotation", "x", "--size", " "}).status, 1);
    EXPECT_EQ(entries(), 0);
}

TEST_F(MakeFiles, ASpotFileWithTheWrongLineEndIsExplained)
{
    writeFile(folder / "mine.spot", "%!KT1_Spot\npop\n");
    const CommandResult result = make("made", {"--spot", "mine.spot"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("must end in a carriage return"), std::string::npos) << result.err;
    writeFile(folder / "other.spot", "pop\n");
    EXPECT_EQ(make("made", {"--spot", "other.spot"}).err.find("carriage return"), std::string::npos);
}
