// Whatever is killed and whenever: a job that was accepted is made, once.
#include <dirent.h>
#include <signal.h>
#include <sys/wait.h>

#include <fstream>

#include "printer/own_service.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

const std::vector<std::string> kQueue = {"--queue", "films:dpi=150"},
                               kNoSandbox = {"--queue", "films:dpi=150", "--sandbox", "never"};

// The program whose command line begins so and contains the word, below that process; 0 where there is none.
pid_t processOf(const std::string &program, const fs::path &workingIn)
{
    for (const fs::directory_entry &entry : fs::directory_iterator("/proc")) {
        std::ifstream file(entry.path() / "comm");
        std::string name;
        std::error_code none;
        if (!std::getline(file, name) || name != program)
            continue;
        const std::string folder = fs::read_symlink(entry.path() / "cwd", none);
        if (folder.find(workingIn.filename()) != std::string::npos)
            return std::stoi(entry.path().filename());
    }
    return 0;
}

class NothingLostTest : public ::testing::Test {
protected:
    NothingLostTest()
    {
        writeFile(folder / "job.ps", kJob);
        writeFile(folder / "slow.ps", slowJob());
    }

    // All that were accepted are made, each in a folder of its own, and nothing else is left.
    void expectMade(const OwnService &service, const std::vector<int> &jobs)
    {
        for (const int job : jobs)
            service.waitUntil([&] {
                return service.log().find("films-" + std::to_string(job) + " (job): made") != std::string::npos;
            });
        const std::ptrdiff_t folders = std::ssize(jobs);
        service.waitUntil([&] {
            return std::distance(fs::directory_iterator(service.films()), fs::directory_iterator()) == folders;
        });
        for (const int job : jobs)
            EXPECT_EQ(filmsIn(service.films() / ("films-" + std::to_string(job) + "-job")), films_) << job;
    }

    const std::map<std::string, std::string> films_ = filmsOf(kJob, "job", {"--dpi=150"});
    TemporaryFolder folder;
};

TEST_F(NothingLostTest, WhatWaitsAndWhatIsInWorkIsMadeByTheNext)
{
    {
        OwnService service(folder.path(), kNoSandbox);
        ASSERT_EQ(service.send(folder / "slow.ps", "job").status, IPP_STATUS_OK);
        ASSERT_EQ(service.send(folder / "job.ps", "job").status, IPP_STATUS_OK);
        service.waitFor(1, IPP_JSTATE_PROCESSING);
        service.waitUntil([&] { return fs::exists(service.films() / ".riders-printer-films-1"); });
        service.end(SIGKILL);
    }
    const OwnService next(folder.path(), kNoSandbox);
    expectMade(next, {1, 2});
    EXPECT_EQ(next.send(folder / "job.ps", "job").job, 3);
}

TEST_F(NothingLostTest, WhatWasAcceptedAMomentAgoIsMadeByTheNext)
{
    {
        OwnService service(folder.path(), kQueue);
        for (int job = 1; job <= 4; ++job)
            ASSERT_EQ(service.send(folder / "job.ps", "job").status, IPP_STATUS_OK);
        service.end(SIGKILL);
    }
    const OwnService next(folder.path(), kQueue);
    for (int job = 1; job <= 4; ++job)
        next.waitUntil([&] { return !filmsIn(next.films() / ("films-" + std::to_string(job) + "-job")).empty(); });
    next.waitUntil(
        [&] { return std::distance(fs::directory_iterator(next.films()), fs::directory_iterator()) == 4; });
}

TEST_F(NothingLostTest, TheInterpreterMayBeKilled)
{
    const OwnService service(folder.path(), kNoSandbox);
    ASSERT_EQ(service.send(folder / "slow.ps", "job").status, IPP_STATUS_OK);
    pid_t interpreter = 0;
    service.waitUntil([&] { return (interpreter = processOf("gs", ".riders-printer-films-1")) > 0; });
    kill(interpreter, SIGKILL);
    service.waitFor(1, IPP_JSTATE_COMPLETED);
    expectMade(service, {1});
}

TEST_F(NothingLostTest, APoliteEndIsCleanAndTheNextGoesOn)
{
    {
        OwnService service(folder.path(), kQueue);
        ASSERT_EQ(service.send(folder / "slow.ps", "job").status, IPP_STATUS_OK);
        ASSERT_EQ(service.send(folder / "job.ps", "job", {{"job-hold-until", "indefinite"}}).status,
                  IPP_STATUS_OK);
        service.waitFor(1, IPP_JSTATE_PROCESSING);
        const int status = service.end(SIGTERM);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        EXPECT_EQ(filmsIn(service.films()).size(), 0U);
    }
    const OwnService next(folder.path(), kQueue);
    expectMade(next, {1});
    EXPECT_EQ(next.stateOf(2), IPP_JSTATE_HELD);
}

TEST_F(NothingLostTest, FilmsThatWereMadeAreNotMadeAgain)
{
    {
        OwnService service(folder.path(), kQueue);
        ASSERT_EQ(service.send(folder / "job.ps", "job").status, IPP_STATUS_OK);
        service.waitFor(1, IPP_JSTATE_COMPLETED);
        service.end(SIGKILL);
    }
    // As if it had been killed before it could say so.
    std::string record = contentsOf(folder / "state/jobs/films-1/record");
    record.replace(record.find("state=made"), 10, "state=accepted");
    writeFile(folder / "state/jobs/films-1/record", record);
    const fs::path film = folder / "films/films-1-job/job_p01_Black.tif";
    const fs::file_time_type before = fs::last_write_time(film);
    const OwnService next(folder.path(), kQueue);
    next.waitUntil(
        [&] { return contentsOf(folder / "state/jobs/films-1/record").find("state=made") != std::string::npos; });
    expectMade(next, {1});
    EXPECT_EQ(fs::last_write_time(film), before);
}

// A disk of two megabytes.
TEST_F(NothingLostTest, AFullDiskRefusesJobsAndSaysWhy)
{
    if (const CommandResult tried = runProgram({"bwrap", "--dev-bind", "/", "/", "true"}); tried.status != 0)
        GTEST_SKIP() << "no disk can be mounted here: " << tried.err;
    fs::create_directory(folder / "state");
    const OwnService service(
        folder.path(), kNoSandbox,
        {"bwrap", "--die-with-parent", "--dev-bind", "/", "/", "--size", "2000000", "--tmpfs", folder / "state"});
    writeFile(folder / "large.ps", kJob + std::string(3 << 20, ' '));
    const Answer refused = service.send(folder / "large.ps", "job");
    EXPECT_EQ(refused.status, IPP_STATUS_ERROR_TEMPORARY) << refused.message;
    EXPECT_NE(refused.message.find("disk is full"), std::string::npos) << refused.message;
    const Answer small = service.send(folder / "job.ps", "job");
    EXPECT_EQ(small.status, IPP_STATUS_OK) << small.message;
    service.waitFor(small.job, IPP_JSTATE_COMPLETED);
}

}  // namespace
}  // namespace printer_tests
