// Files in the window: which the dialogs list, what becomes of one that is removed, and saving a large job.
#include <sys/stat.h>
#include <unistd.h>

#include "host/app_fixture.h"
#include "io/refusal.h"
#include "io/trash.h"

namespace fs = std::filesystem;

namespace {

using namespace app;

enum { openDialog = 1001, ridersDialog = 1002, trash = 1014, deleteIt = 1015, errand = 1020 };

class AppFiles : public App {
protected:
    void remove(const std::string &name)
    {
        user.chooseFromBar("Riders", "Remove Riders File...");
        user.in(0);
        user.answerOpen(folder / name);
    }
    fs::path trashed(const std::string &name) const { return folder / "data/Trash/files" / name; }
};

TEST_F(AppFiles, DialogsListWhatFits)
{
    writeFile(folder / "letter", "Dear printer,\n");
    writeFile(folder / "unnamed", "%!PS\nshowpage\n");
    writeFile(folder / "page.PDF", "");
    user.chooseFromBar("File", "Open...");
    user.in(openDialog);
    const auto isOffered = [this](const std::string &name, bool offered) {
        user.wait(90);
        user.type(name);
        user.then([name, offered] { EXPECT_EQ(!isDimmed(1), offered) << name; });
    };
    user.then([] { keepPicture("open"); });
    isOffered("letter", false);
    isOffered("unnamed", true);
    isOffered("film", true);
    isOffered("page", true);
    user.key("tab");
    user.key("space");
    user.then([] { keepPicture("open_all"); });
    user.key("tab");
    isOffered("letter", true);
    user.key("escape");
    user.in(0);
    quitByMenu();
    run();
}

TEST_F(AppFiles, OnlyRidersFilesAreListedToBeAdded)
{
    writeFile(folder / "letter.riders", "Dear printer,\n");
    user.in(window);
    user.press(addButton);
    user.in(ridersDialog);
    user.type("job");
    user.then([] { EXPECT_TRUE(isDimmed(1)); });
    user.wait(90);
    user.type("letter");
    user.then([] { EXPECT_TRUE(isDimmed(1)); });
    user.wait(90);
    user.type("film");
    user.then([] { EXPECT_FALSE(isDimmed(1)); });
    user.press(allFiles);
    user.type("job");
    user.then([] { EXPECT_FALSE(isDimmed(1)); });
    user.key("escape");
    user.in(window);
    user.press(closeButton);
    quitByMenu();
    run(folder / "job.ps");
}

TEST_F(AppFiles, RemovedOneIsInTheTrash)
{
    const std::string riders = contentsOf(folder / "film");
    remove("film");
    user.in(trash);
    user.then([this] {
        keepPicture("trash");
        EXPECT_TRUE(traced("params \"Move film in "));
    });
    user.press(1);
    user.in(0);
    user.wait(2);
    user.then([] { keepPicture("trashed"); });
    quitByMenu();
    run();
    EXPECT_FALSE(fs::exists(folder / "film"));
    EXPECT_EQ(contentsOf(trashed("film")), riders);
    const std::string info = contentsOf(folder / "data/Trash/info/film.trashinfo");
    EXPECT_TRUE(info.starts_with("[Trash Info]\nPath=" + (folder / "film").string() + "\nDeletionDate=20")) << info;
    EXPECT_EQ(info.size(), info.find("DeletionDate=") + 33) << info;
}

TEST_F(AppFiles, KeptOneStays)
{
    remove("film");
    user.in(trash);
    user.key("escape");
    user.in(0);
    quitByMenu();
    run();
    EXPECT_TRUE(fs::exists(folder / "film"));
    EXPECT_FALSE(fs::exists(folder / "data/Trash/files/film"));
    EXPECT_TRUE(fs::exists(folder / "preferences/Riders Preferences")) << "which is written anew without a question";
}

TEST_F(AppFiles, WithoutTrashItIsAskedAboutAgain)
{
    writeFile(folder / "data", "no folder");
    writeFile(folder / "other", contentsOf(folder / "film"));
    setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    const fs::path atTop = "/.Trash-" + std::to_string(geteuid());
    if (fs::exists(atTop) || access("/", W_OK) == 0)
        GTEST_SKIP() << "there is a trash for the whole file system here";
    remove("film");
    user.in(trash);
    user.press(1);
    user.in(deleteIt);
    user.press(2);
    remove("other");
    user.in(trash);
    user.press(1);
    user.in(deleteIt);
    user.press(1);
    user.in(0);
    quitByMenu();
    run();
    EXPECT_TRUE(fs::exists(folder / "film"));
    EXPECT_FALSE(fs::exists(folder / "other"));
}

TEST_F(AppFiles, NameInTheTrashIsTakenOnce)
{
    writeFile(folder / "a b%\xC3\xA9.riders", "one");
    riders::io::moveToTrash(folder / "a b%\xC3\xA9.riders");
    writeFile(folder / "a b%\xC3\xA9.riders", "two");
    riders::io::moveToTrash(folder / "a b%\xC3\xA9.riders");
    EXPECT_EQ(contentsOf(trashed("a b%\xC3\xA9.riders")), "one");
    EXPECT_EQ(contentsOf(trashed("a b%\xC3\xA9.2.riders")), "two");
    EXPECT_NE(contentsOf(folder / "data/Trash/info/a b%\xC3\xA9.2.riders.trashinfo").find("/a%20b%25%C3%A9.riders\n"),
              std::string::npos);
    struct stat status;
    ASSERT_EQ(stat((folder / "data/Trash/files").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_THROW(riders::io::moveToTrash(folder / "not there"), riders::io::Refusal);
    EXPECT_FALSE(fs::exists(folder / "data/Trash/info/not there.trashinfo"));
}

TEST_F(AppFiles, OnAnotherFileSystemItsOwnTrashIsUsed)
{
    struct stat here, memory;
    if (stat(folder.path().c_str(), &here) != 0 || stat("/dev/shm", &memory) != 0 || here.st_dev == memory.st_dev)
        GTEST_SKIP() << "there is one file system only";
    const fs::path file = "/dev/shm/riders-trash-test-" + std::to_string(getpid());
    const fs::path top = "/dev/shm/.Trash-" + std::to_string(geteuid());
    const bool isNew = !fs::exists(top);
    writeFile(file, "one");
    riders::io::moveToTrash(file);
    const std::string name = file.filename();
    EXPECT_EQ(contentsOf(top / "files" / name), "one");
    EXPECT_NE(contentsOf(top / "info" / (name + ".trashinfo")).find("\nPath=" + name + "\n"), std::string::npos);
    fs::remove(top / "files" / name);
    fs::remove(top / "info" / (name + ".trashinfo"));
    if (isNew)
        fs::remove_all(top);
}

TEST_F(AppFiles, LargeJobIsSavedBesideTheWindow)
{
    waits = true;
    fs::resize_file(folder / "job.ps", 33 << 20);
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "film");
    user.in(0);
    user.answerSave(folder / "job-riders.ps");
    user.in(window);
    user.then([] { EXPECT_EQ(windowTitle(), "job-riders.ps"); });
    user.press(takeOutButton);
    user.in(0);
    user.answerSave(folder / "plain.ps");
    user.in(window);
    user.then([] { EXPECT_EQ(windowTitle(), "plain.ps"); });
    user.press(closeButton);
    quitByMenu();
    run(folder / "job.ps");
    EXPECT_EQ(tracedTimes("dialog 1020 shown"), 2);
    EXPECT_NE(contentsOf(folder / "job-riders.ps").find("%!Zu3_Riders"), std::string::npos);
    EXPECT_EQ(contentsOf(folder / "plain.ps"), contentsOf(folder / "job.ps"));
}

}  // namespace
