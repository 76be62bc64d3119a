// Adding a riders file to a job: what is written, where to, and what is refused.
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/apply_support.h"

namespace fs = std::filesystem;

namespace {

namespace apply = riders::apply;

using Apply = ApplyTest;

mode_t modeOf(const fs::path &path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

// Root may write anything, so the test is another user for a while.
class NoRoot {
public:
    NoRoot()
    {
        if (geteuid() == 0 && setresuid(nobody, nobody, 0) != 0)
            ADD_FAILURE() << "root cannot become somebody else";
    }
    ~NoRoot()
    {
        uid_t real, effective, saved;
        if (getresuid(&real, &effective, &saved) == 0 && saved == 0 && setresuid(0, 0, 0) != 0)
            ADD_FAILURE() << "root cannot become itself again";
    }
    NoRoot(const NoRoot &) = delete;
    NoRoot &operator=(const NoRoot &) = delete;

private:
    static constexpr uid_t nobody = 65534;
};

TEST_F(Apply, FragmentStandsBetweenTwoMarkerLines)
{
    EXPECT_EQ(applied(plainJob), "%!PS\n%%EndComments\n%RidersBegin: 37 bytes, line ends added: none\n"
                                 "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n%RidersEnd\nshowpage\n");
}

TEST_F(Apply, FragmentInALandscapeJobGetsALineThatSaysSo)
{
    EXPECT_EQ(applied(landscapeJob), "%!PS\n%%Orientation: Landscape\n%%EndComments\n"
                                     "%RidersBegin: 37 bytes, line ends added: none, landscape\n"
                                     "userdict /Zu3_RidersTurns 1 put\n"
                                     "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n%RidersEnd\nshowpage\n");
}

TEST_F(Apply, LineEndsAreAddedWhereTheyAreMissing)
{
    writeFile(riders, "%!Zu3_Riders\n%Zu3_RidersEnd");
    EXPECT_EQ(applied("%!PS\nx"), "%!PS\n%RidersBegin: 27 bytes, line ends added: after\n"
                                  "%!Zu3_Riders\n%Zu3_RidersEnd\n%RidersEnd\nx");
    EXPECT_EQ(applied("%!PS"), "%!PS\n%RidersBegin: 27 bytes, line ends added: both\n"
                               "%!Zu3_Riders\n%Zu3_RidersEnd\n%RidersEnd\n");
}

TEST_F(Apply, RidersFileIsKnownByItsFirstFifteenBytes)
{
    writeFile(riders, "abc%!Zu3_Riders\n%Zu3_RidersEnd");
    EXPECT_EQ(apply(out), "done");
    const auto refused = riders.string() + ": is not a riders file (it does not begin with %!Zu3_Riders)";
    for (const char *bytes : {"%!Zu3_Riders\r", "abcd%!Zu3_Riders", ""}) {
        writeFile(riders, bytes);
        EXPECT_EQ(apply(out).substr(0, refused.size()), refused) << bytes;
    }
    for (const char *bytes : {"%!PS-Adobe-3.0 and more", "%PDF-1.4 and so on"}) {
        writeFile(riders, bytes);
        EXPECT_EQ(apply(out), refused + "; it is a job, to which a riders file is added: riders make makes one");
    }
}

TEST_F(Apply, RidersFileLongerThanAnyIsRefused)
{
    writeFile(riders, fragment + std::string(1 << 20, 'x'));
    EXPECT_EQ(apply(out), riders.string() + ": is longer than 1 MiB, which no riders file is");
}

TEST_F(Apply, RidersFileThatIsCutOffIsRefused)
{
    const std::string made = contentsOf(RIDERS_SOURCE_DIR "/resources/ps/setup_end.ps");
    const std::string whole = "%!Zu3_Riders\n" + made;
    const size_t earlier = whole.find("%Zu3_RidersEnd");  // as whole as a file from before there was that line
    for (size_t length = 15; length < whole.size() - 1; ++length) {
        if (length == earlier || length == earlier - 1)
            continue;
        writeFile(riders, whole.substr(0, length));
        EXPECT_EQ(apply(out), riders.string() + ": is cut off (it does not end in %Zu3_RidersEnd); make it again")
            << length;
    }
    EXPECT_FALSE(fs::exists(out));
    // Without its last line end, with others, and with blanks after it.
    std::string otherEnds = whole;
    std::replace(otherEnds.begin(), otherEnds.end(), '\n', '\r');
    for (const std::string &bytes : {whole, whole.substr(0, whole.size() - 1), otherEnds, whole + " \r\n\n"}) {
        writeFile(riders, bytes);
        EXPECT_EQ(apply(out), "done") << bytes;
    }
}

// Made before there was a last line: each of the ends that there were.
TEST_F(Apply, EarlierRidersFileIsKnownByItsLastTwoLines)
{
    for (const std::string &last :
         {std::string("/riderReady true def\nriderScreen\n/setglobal riderHas {riderGlobal setglobal} if\n"),
          std::string("riderScreen\nsystemdict /setglobal known {riderGlobal setglobal} if\n"),
          std::string("riderAngle null ne or /riderSpot load length 0 gt or\n  {riderSetScreen} if\n")}) {
        const std::string earlier = "%!Zu3_Riders\n" + last + "end end\n";
        for (const std::string &whole : {earlier, earlier.substr(0, earlier.size() - 1), earlier + "\n "}) {
            writeFile(riders, whole);
            EXPECT_EQ(apply(out), "done") << whole;
        }
        for (size_t length = 15; length < earlier.size() - 1; ++length) {
            writeFile(riders, earlier.substr(0, length));
            EXPECT_NE(apply(out), "done") << length << " of " << earlier;
        }
    }
    writeFile(riders, "%!Zu3_Riders\nsomething else\nend end\n");
    EXPECT_NE(apply(out), "done");
}

TEST_F(Apply, RefusalWritesNothing)
{
    writeFile(job, "no PostScript");
    EXPECT_EQ(apply(out), job.string() + ": is not a PostScript job (it does not begin with %!)");
    EXPECT_FALSE(fs::exists(out));
    writeFile(out, "as it was");
    EXPECT_NE(apply(out), "done");
    EXPECT_EQ(contentsOf(out), "as it was");
    EXPECT_EQ(filesInFolder(), 3u);
}

TEST_F(Apply, WhatIsMissingIsNamed)
{
    fs::remove(job);
    EXPECT_EQ(apply(out), job.string() + ": No such file or directory");
    job = folder.path();
    EXPECT_EQ(apply(out), job.string() + ": Is a directory");
    job = folder / "other.ps";
    writeFile(job, plainJob);
    EXPECT_EQ(apply(folder / "none" / "x"), (folder / "none" / "x").string() + ": No such file or directory");
    EXPECT_EQ(apply(folder.path()), folder.path().string() + ": Is a directory");
}

TEST_F(Apply, JobThatHasOneAlreadyIsRefused)
{
    const std::string once = applied(plainJob);
    writeFile(job, once);
    EXPECT_EQ(apply(out), job.string() + ": has a riders file in it already; strip it first");
    EXPECT_EQ(contentsOf(out), once);
}

TEST_F(Apply, OutputMayBeTheJob)
{
    const std::string expected = applied(plainJob);
    EXPECT_EQ(apply(job), "done");
    EXPECT_EQ(contentsOf(job), expected);
    EXPECT_EQ(filesInFolder(), 3u);
}

TEST_F(Apply, OutputMayNotBeTheRidersFile)
{
    EXPECT_EQ(apply(riders), riders.string() + ": is the riders file itself; name another output");
    EXPECT_EQ(contentsOf(riders), fragment);
}

TEST_F(Apply, SymbolicLinksAreFollowed)
{
    writeFile(folder / "target", "%!old");
    fs::create_symlink("target", folder / "link");
    EXPECT_EQ(apply(folder / "link"), "done");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(contentsOf(folder / "target"), applied(plainJob));
    fs::create_symlink("not there yet", folder / "dangling");
    EXPECT_EQ(apply(folder / "dangling"), "done");
    EXPECT_EQ(contentsOf(folder / "not there yet"), contentsOf(out));
    fs::create_symlink("loop", folder / "loop");
    EXPECT_NE(apply(folder / "loop").find("symbolic links"), std::string::npos);
}

TEST_F(Apply, PermissionsOfAnExistingOutputStay)
{
    writeFile(out, "%!old");
    for (mode_t mode : {0600, 0751}) {
        chmod(out.c_str(), mode);
        EXPECT_EQ(apply(out), "done");
        EXPECT_EQ(modeOf(out), mode);
    }
}

TEST_F(Apply, NewOutputHasTheUsualPermissions)
{
    const mode_t old = umask(027);
    EXPECT_EQ(apply(out), "done");
    umask(old);
    EXPECT_EQ(modeOf(out), 0640u);
}

TEST_F(Apply, OutputThatMayNotBeWrittenIsRefused)
{
    writeFile(out, "%!old");
    chmod(out.c_str(), 0444);
    chmod(folder.path().c_str(), 0777);
    NoRoot nobody;
    EXPECT_EQ(apply(out), out.string() + ": Permission denied");
    EXPECT_EQ(contentsOf(out), "%!old");
}

TEST_F(Apply, DeviceIsWrittenToNotReplaced)
{
    EXPECT_EQ(apply("/dev/full"), "/dev/full: No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Apply, NamedPipeIsWrittenTo)
{
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(apply(pipe), "done");
    char bytes[4096];
    const ssize_t got = read(reader, bytes, sizeof bytes);
    close(reader);
    ASSERT_GT(got, 0);
    EXPECT_EQ(std::string(bytes, static_cast<size_t>(got)), applied(plainJob));
}

// Longer than what is looked at, with data that differs from line to line.
std::string longJob()
{
    std::string job = "%!PS\n%%EndProlog\n";
    for (int i = 0; job.size() < (5u << 20); ++i)
        job += std::to_string(i) + (i % 3 ? " pop\n" : " pop\r\n");
    return job;
}

TEST_F(Apply, PipesAndFilesGiveTheSame)
{
    for (const std::string &bytes : {plainJob, longJob()}) {
        const std::string expected = applied(bytes);
        const Piped piped = runPiped(bytes, [&] { apply::applyRiders({riders}); });
        EXPECT_EQ(piped.exitCode, 0) << piped.message;
        EXPECT_TRUE(piped.output == expected);
        const Piped toFile = runPiped(bytes, [&] { apply::applyRiders({riders, {}, folder / "two"}); });
        EXPECT_EQ(toFile.exitCode, 0) << toFile.message;
        EXPECT_TRUE(contentsOf(folder / "two") == expected);
        const Piped fromFile = runPiped("", [&] { apply::applyRiders({riders, job}); });
        EXPECT_TRUE(fromFile.output == expected);
    }
}

TEST_F(Apply, StandardFilesMayBeFiles)
{
    const std::string expected = applied(longJob());
    const int in = open(job.c_str(), O_RDONLY),
              to = open((folder / "two").c_str(), O_RDWR | O_CREAT | O_APPEND, 0600);
    const Piped result = runOn(in, to, [&] { apply::applyRiders({riders}); });
    EXPECT_EQ(result.exitCode, 0) << result.message;
    EXPECT_TRUE(contentsOf(folder / "two") == expected) << "also when it is appended to";
    close(in);
    close(to);
}

TEST_F(Apply, PipesThatDoNotBlockAreWaitedFor)
{
    const std::string bytes = longJob(), expected = applied(bytes);
    const Piped piped = runPiped(bytes, [&] {
        fcntl(STDIN_FILENO, F_SETFL, O_NONBLOCK);
        fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
        apply::applyRiders({riders});
    });
    EXPECT_EQ(piped.exitCode, 0) << piped.message;
    EXPECT_TRUE(piped.output == expected);
}

TEST_F(Apply, NothingGoesToStandardOutputBeforeARefusal)
{
    const Piped piped = runPiped("hello", [&] { apply::applyRiders({riders}); });
    EXPECT_EQ(piped.exitCode, 1);
    EXPECT_EQ(piped.output, "");
    EXPECT_EQ(piped.message, "standard input: is not a PostScript job (it does not begin with %!)");
}

TEST_F(Apply, JobIsNotAppendedToItself)
{
    const int in = open(job.c_str(), O_RDONLY), to = open(job.c_str(), O_WRONLY | O_APPEND);
    const Piped result = runOn(in, to, [&] { apply::applyRiders({riders}); });
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.message.find("name the output with -o"), std::string::npos) << result.message;
    EXPECT_EQ(contentsOf(job), plainJob);
    close(in);
    close(to);
}

TEST_F(Apply, ReaderThatGoesAwayGivesOneClearLine)
{
    writeFile(job, longJob());
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const Piped result = runOn(STDIN_FILENO, ends[1], [&] { apply::applyRiders({riders, job}); });
    close(ends[1]);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.message, "standard output: Broken pipe");
}

TEST_F(Apply, FileThatCannotBeFinishedIsAsItWas)
{
    writeFile(job, longJob());
    writeFile(out, "%! as it was");
    const Piped result = runPiped("", [&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1 << 20, 1 << 20};
        setrlimit(RLIMIT_FSIZE, &limit);
        apply::applyRiders({riders, job, out});
    });
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.message, out.string() + ": File too large");
    EXPECT_EQ(contentsOf(out), "%! as it was");
    EXPECT_EQ(filesInFolder(), 3u);
}

}  // namespace
