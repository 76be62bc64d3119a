// Files in the wrong place on the command line: what somebody has only once is not written over by mistake, and a
// riders file and a job that were taken for each other are told apart.
#include <filesystem>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *kPhoto = "\xFF\xD8\xFF\xE0 not to be lost";
constexpr const char *kShowing = "%!PS\nshowpage\n";

class ForeignFiles : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(riders({"make", "-o", "film.riders", "--angle", "45"}).status, 0);
        writeFile(folder / "job.ps", kShowing);
        writeFile(folder / "photo.jpg", kPhoto);
    }
    CommandResult riders(const std::vector<std::string> &words) { return runRiders(words, {}, folder.path()); }
    // The line that refuses, without the command's name.
    std::string refused(const std::vector<std::string> &words)
    {
        const CommandResult result = riders(words);
        EXPECT_EQ(result.status, 1) << words[0];
        EXPECT_EQ(result.out, "");
        const std::string start = "riders " + words[0] + ": ";
        EXPECT_TRUE(result.err.starts_with(start) && result.err.ends_with('\n')) << result.err;
        return result.err.size() > start.size()
                   ? result.err.substr(start.size(), result.err.size() - start.size() - 1)
                   : "";
    }
    std::string file(const std::string &name) const { return contentsOf(folder / name); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(ForeignFiles, MakeReplacesOnlyRidersFilesUnlessItMust)
{
    const std::string words = ": exists and is no riders file; name another file, or replace it with --force";
    EXPECT_EQ(refused({"make", "-o", "photo.jpg", "--angle", "45"}), "photo.jpg" + words);
    EXPECT_EQ(file("photo.jpg"), kPhoto);
    EXPECT_EQ(refused({"make", "-o", "job.ps", "--angle", "45"}), "job.ps" + words);
    EXPECT_EQ(file("job.ps"), kShowing);
    fs::create_symlink("photo.jpg", folder / "link");
    EXPECT_EQ(refused({"make", "-o", "link", "--angle", "45"}), "link" + words);
    EXPECT_EQ(riders({"make", "-o", "photo.jpg", "--angle", "45", "--force"}).status, 0);
    EXPECT_EQ(file("photo.jpg"), file("film.riders"));
}

TEST_F(ForeignFiles, WhatIsEmptyOrCutOffMayBeReplaced)
{
    const std::string whole = file("film.riders");
    for (const std::string &bytes : {std::string(), whole.substr(0, 100), whole}) {
        writeFile(folder / "film.riders", bytes);
        EXPECT_EQ(riders({"make", "-o", "film.riders", "--angle", "45"}).status, 0) << bytes.size();
        EXPECT_EQ(file("film.riders"), whole);
    }
    writeFile(folder / "new.ps", "");
    EXPECT_EQ(riders({"apply", "film.riders", "job.ps", "-o", "new.ps"}).status, 0);
}

TEST_F(ForeignFiles, ApplyAndStripReplaceOnlyJobsUnlessTheyMust)
{
    const std::string words = ": exists and is no PostScript job; name another file, or replace it with --force";
    EXPECT_EQ(refused({"apply", "film.riders", "job.ps", "-o", "photo.jpg"}), "photo.jpg" + words);
    ASSERT_EQ(riders({"apply", "film.riders", "job.ps", "-o", "applied.ps"}).status, 0);
    EXPECT_EQ(refused({"strip", "applied.ps", "-o", "photo.jpg"}), "photo.jpg" + words);
    EXPECT_EQ(file("photo.jpg"), kPhoto);
    writeFile(folder / "other.riders", file("film.riders"));
    EXPECT_EQ(
        refused({"strip", "applied.ps", "-o", "other.riders"}),
        "other.riders: exists and is a riders file, not a job; name another file, or replace it with --force");
    EXPECT_EQ(file("other.riders"), file("film.riders"));
    EXPECT_EQ(riders({"apply", "film.riders", "job.ps", "-o", "photo.jpg", "--force"}).status, 0);
    EXPECT_EQ(file("photo.jpg"), file("applied.ps"));
    EXPECT_EQ(riders({"strip", "applied.ps", "-o", "other.riders", "--force"}).status, 0);
    EXPECT_EQ(file("other.riders"), kShowing);
    writeFile(folder / "job.ps", "\x04%!PS\nold\n");
    EXPECT_EQ(riders({"strip", "applied.ps", "-o", "job.ps"}).status, 0) << "as a driver may write one";
    EXPECT_EQ(file("job.ps"), kShowing);
}

TEST_F(ForeignFiles, ARidersFileIsNoJob)
{
    writeFile(folder / "other.riders", file("film.riders"));
    const std::string is = "other.riders: is a riders file, not a job; ";
    const std::string name = is + "name the job to which it is to be added, or from which one is to be taken";
    EXPECT_EQ(refused({"apply", "film.riders", "other.riders", "-o", "new.ps"}), name);
    EXPECT_EQ(refused({"strip", "other.riders", "-o", "new.ps"}), name);
    for (const char *command : {"proof", "film"})
        EXPECT_EQ(refused({command, "other.riders"}), is + "name the job, and the riders file with --riders");
    writeFile(folder / "other.riders", file("film.riders").substr(0, 500));
    EXPECT_EQ(refused({"apply", "film.riders", "other.riders", "-o", "new.ps"}), name);
    EXPECT_FALSE(fs::exists(folder / "new.ps"));
    EXPECT_FALSE(fs::exists(folder / "other-proof"));
}

TEST_F(ForeignFiles, AJobThatBeginsWithARidersFileIsAJob)
{
    writeFile(folder / "both.ps", file("film.riders") + kShowing);
    EXPECT_EQ(riders({"apply", "film.riders", "both.ps", "-o", "new.ps"}).status, 0);
    EXPECT_EQ(riders({"strip", "new.ps", "-o", "again.ps"}).status, 0);
    EXPECT_EQ(file("again.ps"), file("both.ps"));
}

TEST_F(ForeignFiles, AJobIsNoRidersFile)
{
    const std::string words =
        "job.ps: is not a riders file (it does not begin with %!Zu3_Riders); it is a job, to "
        "which a riders file is added: riders make makes one";
    EXPECT_EQ(refused({"apply", "job.ps", "film.riders", "-o", "new.ps"}), words);
    for (const char *command : {"proof", "film"})
        EXPECT_EQ(refused({command, "job.ps", "--riders", "job.ps", "--dpi", "100"}), words);
}
