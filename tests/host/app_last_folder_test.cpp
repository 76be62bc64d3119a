// Where the program's file dialogs open, in one run and in the next.
#include <set>

#include "support/toolbox_test.h"

#include "app/application.h"
#include "standardfile/state.h"
#include "toolbox/host/user.h"

namespace fs = std::filesystem;

namespace {

constexpr int kJobWindow = 1000;

class LastFolder : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        configuration.startFolder = folder / "home";
        for (const char *name : {"home", "jobs", "other"})
            fs::create_directory(folder / name);
        for (const char *job : {"home/at-home.ps", "jobs/job.ps", "other/other.ps"})
            writeFile(folder / job, "%!PS\n");
    }
    // Runs the program and asks for the open dialog; returns the folder it
    // opened in.
    fs::path openedIn(const fs::path &firstJob = {})
    {
        if (!firstJob.empty()) {
            user.in(kJobWindow);
            user.key("escape");
            user.in(0);
        }
        fs::path there;
        user.chooseFromBar("File", "Open...");
        user.then([&there] { there = toolbox::standardfile::state()->folder; });
        user.cancelFile();
        run(firstJob);
        return there;
    }
    // Runs the program and opens the job with the dialog.
    void open(const fs::path &job)
    {
        user.chooseFromBar("File", "Open...");
        user.answerOpen(job);
        user.in(kJobWindow);
        user.key("escape");
        user.in(0);
        run({});
    }
    fs::path keeping() const { return folder / "preferences/Last Folder"; }
    void keep(const std::string &text)
    {
        fs::create_directories(keeping().parent_path());
        writeFile(keeping(), text);
    }

    toolbox::ScriptedUser user{machine};

private:
    void run(const fs::path &job)
    {
        user.chooseFromBar("File", "Quit");
        const fs::path built = RIDERS_BINARY_DIR;
        restart();
        try {
            riders::app::Application({built / "riders", built / "riders.so", job}, {}).run();
        } catch (const toolbox::ScriptError &error) {
            ADD_FAILURE() << error.message;
        }
    }
};

TEST_F(LastFolder, IsTheStartFolderAtFirst)
{
    EXPECT_EQ(openedIn(), folder / "home");
    EXPECT_EQ(openedIn(), folder / "home");
    EXPECT_FALSE(fs::exists(keeping())) << "no folder was used";
}

TEST_F(LastFolder, IsThatOfTheRunBefore)
{
    open(folder / "jobs/job.ps");
    EXPECT_EQ(contentsOf(keeping()), (folder / "jobs").string());
    EXPECT_EQ(openedIn(), folder / "jobs");
    open(folder / "other/other.ps");
    EXPECT_EQ(openedIn(), folder / "other");
    std::set<fs::path> left;
    for (const fs::directory_entry &entry : fs::directory_iterator(keeping().parent_path()))
        left.insert(entry.path().filename());
    EXPECT_EQ(left, (std::set<fs::path>{"Last Folder", "Recent Jobs"}));
}

TEST_F(LastFolder, IsThatOfTheJobNamedAtTheStart)
{
    open(folder / "other/other.ps");
    EXPECT_EQ(openedIn(folder / "jobs/job.ps"), folder / "jobs");
    EXPECT_EQ(openedIn(), folder / "jobs");
}

TEST_F(LastFolder, ThatIsGoneCountsAsNone)
{
    open(folder / "jobs/job.ps");
    fs::remove_all(folder / "jobs");
    EXPECT_EQ(openedIn(), folder / "home");
}

TEST_F(LastFolder, WhatNamesNoFolderCountsAsNone)
{
    const std::string good = (folder / "jobs").string();
    for (const std::string &text : {std::string(), std::string("jobs"), good + "/job.ps", good + '\0',
                                    std::string(5000, '/'), std::string("\xFF\xFE")}) {
        keep(text);
        EXPECT_EQ(openedIn(), folder / "home") << text;
    }
    fs::remove(keeping());
    fs::create_directory(keeping());
    EXPECT_EQ(openedIn(), folder / "home");
    fs::remove(keeping());
    keep(good);
    EXPECT_EQ(openedIn(), folder / "jobs");
}

TEST_F(LastFolder, ThatCannotBeKeptDoesNoHarm)
{
    writeFile(folder / "preferences", "in the way");
    open(folder / "jobs/job.ps");
    EXPECT_EQ(openedIn(), folder / "home");
    EXPECT_EQ(contentsOf(folder / "preferences"), "in the way");
}

TEST_F(LastFolder, KeepsNamesThatAreNotText)
{
    const fs::path odd = folder / "odd\n\xFF";
    fs::create_directory(odd);
    writeFile(odd / "job.ps", "%!PS\n");
    EXPECT_EQ(openedIn(odd / "job.ps"), odd);
    EXPECT_EQ(openedIn(), odd);
}

}  // namespace
