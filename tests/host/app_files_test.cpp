// Files in the window: which the dialogs list, what becomes of one that is removed, and saving a large job.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <thread>

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
    user.wait(90);
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
    EXPECT_TRUE(info.starts_with("[Trash Info]\nPath=" + (folder / "film").string() + "\nDeletionDate=20"))
        << info;
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
    EXPECT_TRUE(fs::exists(folder / "preferences/Riders Preferences"))
        << "which is written anew without a question";
}

// In memory, where a file takes the place that the trash would have.
TEST_F(AppFiles, WithoutTrashItIsAskedAboutAgain)
{
    struct stat here, memory;
    const fs::path top = "/dev/shm/.Trash-" + std::to_string(geteuid());
    if (stat(folder.path().c_str(), &here) != 0 || stat("/dev/shm", &memory) != 0 ||
        here.st_dev == memory.st_dev || fs::exists(top))
        GTEST_SKIP() << "there is no file system without a trash here";
    const fs::path place = "/dev/shm/riders-trash-test-" + std::to_string(getpid());
    fs::create_directory(place);
    writeFile(top, "no folder");
    for (const char *name : {"film", "other"})
        writeFile(place / name, contentsOf(folder / "film"));
    configuration.startFolder = place;
    restart();
    for (const int answer : {2, 1}) {
        user.chooseFromBar("Riders", "Remove Riders File...");
        user.in(0);
        user.answerOpen(place / (answer == 1 ? "other" : "film"));
        user.in(trash);
        user.press(1);
        user.in(deleteIt);
        user.then([] { keepPicture("delete"); });
        user.press(answer);
        user.in(0);
    }
    quitByMenu();
    run();
    EXPECT_TRUE(fs::exists(place / "film"));
    EXPECT_FALSE(fs::exists(place / "other"));
    fs::remove_all(place);
    fs::remove(top);
}

TEST_F(AppFiles, NameInTheTrashIsTakenOnce)
{
    writeFile(folder / "a b%\xC3\xA9.riders", "one");
    riders::io::moveToTrash(folder / "a b%\xC3\xA9.riders");
    writeFile(folder / "a b%\xC3\xA9.riders", "two");
    riders::io::moveToTrash(folder / "a b%\xC3\xA9.riders");
    EXPECT_EQ(contentsOf(trashed("a b%\xC3\xA9.riders")), "one");
    EXPECT_EQ(contentsOf(trashed("a b%\xC3\xA9.2.riders")), "two");
    EXPECT_NE(
        contentsOf(folder / "data/Trash/info/a b%\xC3\xA9.2.riders.trashinfo").find("/a%20b%25%C3%A9.riders\n"),
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
    fs::resize_file(folder / "job.ps", 33 << 20);
    const auto saved = [this](const std::string &name) {
        user.in(0);
        user.answerSave(folder / name);
        for (int i = 0; i < 100; ++i) {
            user.wait(6);
            user.then([name] {
                if (windowTitle() != name)
                    std::this_thread::sleep_for(std::chrono::milliseconds(50));
            });
        }
        user.in(window);
        user.then([name] { EXPECT_EQ(windowTitle(), name); });
    };
    user.in(window);
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "film");
    saved("job-riders.ps");
    user.press(takeOutButton);
    saved("plain.ps");
    user.press(closeButton);
    quitByMenu();
    run(folder / "job.ps");
    EXPECT_EQ(tracedTimes("dialog 1020 shown"), 2);
    EXPECT_NE(contentsOf(folder / "job-riders.ps").find("%!Zu3_Riders"), std::string::npos);
    EXPECT_TRUE(contentsOf(folder / "plain.ps") == contentsOf(folder / "job.ps"));
}

}  // namespace
