// The printer as its clients know it: what is sent becomes films, the same to the bit as `riders film` makes.
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <thread>

#include "printer/own_service.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

class PrinterTest : public ::testing::Test {
protected:
    PrinterTest() { writeFile(folder / "job.ps", kJob); }

    fs::path pdf()
    {
        EXPECT_EQ(runProgram({"ps2pdf", "job.ps", "job.pdf"}, "", folder.path()).status, 0);
        return folder / "job.pdf";
    }

    fs::path notEmpty(const fs::path &name, const std::string &bytes)
    {
        writeFile(folder / name, bytes);
        return folder / name;
    }

    TemporaryFolder folder;
};

TEST_F(PrinterTest, MakesTheFilmsOfThePlainCommand)
{
    const OwnService service(folder.path());
    const Answer postScript = service.send(folder / "job.ps", "brochure.ps"),
                 portable = service.send(pdf(), "leaf.pdf");
    ASSERT_EQ(postScript.status, IPP_STATUS_OK) << postScript.message;
    ASSERT_EQ(portable.status, IPP_STATUS_OK) << portable.message;
    service.waitFor(postScript.job, IPP_JSTATE_COMPLETED);
    service.waitFor(portable.job, IPP_JSTATE_COMPLETED);
    EXPECT_EQ(filmsIn(service.films() / "films-1-brochure"), filmsOf(kJob, "brochure.ps"));
    EXPECT_EQ(filmsIn(service.films() / "films-2-leaf"), filmsOf(contentsOf(folder / "job.pdf"), "leaf.pdf"));
}

TEST_F(PrinterTest, AQueueIsASetOfChoicesAndAJobHasItsOwn)
{
    const OwnService service(
        folder.path(),
        {"--queue", "fine:frequency=60,angle=45,dpi=600,plates=Cyan:40@75,Line", "--queue", "films"});
    const Answer plain = service.send(folder / "job.ps", "a.ps", {}, "fine");
    const Answer own = service.send(folder / "job.ps", "b.ps",
                                    {{"screen-frequency", "50"},
                                     {"spot-function", "Diamond"},
                                     {"film-negative", "yes"},
                                     {"film-marks", "label"},
                                     {"printer-resolution", "300"}},
                                    "fine");
    const Answer set = service.send(folder / "job.ps", "c.ps", {{"screens", "offset"}}, "fine");
    for (const Answer &answer : {plain, own, set})
        service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "fine");
    const std::vector<std::string> queue = {"--angle=45", "--plate=Cyan:40@75,Line"};
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.end(), queue.begin(), queue.end());
        return more;
    };
    EXPECT_EQ(filmsIn(service.films() / "fine-1-a"), filmsOf(kJob, "a.ps", with({"--frequency=60", "--dpi=600"})));
    EXPECT_EQ(
        filmsIn(service.films() / "fine-2-b"),
        filmsOf(kJob, "b.ps", with({"--frequency=50", "--dpi=300", "--spot=Diamond", "--negative", "--label"})));
    EXPECT_EQ(filmsIn(service.films() / "fine-3-c"), filmsOf(kJob, "c.ps", {"--screens=offset", "--dpi=600"}));
}

TEST_F(PrinterTest, WhatIsNoDocumentIsRefused)
{
    const OwnService service(folder.path(), {"--largest", "1"});
    const fs::path words = notEmpty("words", "just words"),
                   large = notEmpty("large.ps", kJob + std::string(2 << 20, ' '));
    EXPECT_EQ(service.send(words, "words").status, IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED);
    EXPECT_EQ(service.send(words, "words", {}, "films", "text/html").status,
              IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED);
    const Answer refused = service.send(large, "large");
    EXPECT_EQ(refused.status, IPP_STATUS_ERROR_REQUEST_ENTITY);
    const Answer wrong = service.send(notEmpty("wrong.ps", "%!PS\nnosuchoperator showpage\n"), "wrong");
    EXPECT_EQ(wrong.status, IPP_STATUS_OK);
    service.waitFor(wrong.job, IPP_JSTATE_ABORTED);
    EXPECT_NE(service.messageOf(wrong.job).find("nosuchoperator"), std::string::npos)
        << service.messageOf(wrong.job);
    EXPECT_EQ(service.send(words, "raw", {}, "films", "application/vnd.riders-films").status,
              IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED);
    const Answer broken = service.send(notEmpty("broken.jpg", "\377\330\377\340 no picture"), "broken");
    service.waitFor(broken.job, IPP_JSTATE_ABORTED);
    const Answer after = service.send(folder / "job.ps", "after");
    service.waitFor(after.job, IPP_JSTATE_COMPLETED);
}

TEST_F(PrinterTest, PicturesAndPixelsAreScreenedHere)
{
    ASSERT_EQ(
        runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=jpeg", "-r100", "-o", "page.jpg", "job.ps"}, "",
                   folder.path())
            .status,
        0);
    ASSERT_EQ(
        runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m", "-r100", "-o", "page.png", "job.ps"},
                   "", folder.path())
            .status,
        0);
    ASSERT_EQ(runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pwgraster", "-dcupsColorSpace=18", "-r300",
                          "-o", "page.pwg", "job.ps"},
                         "", folder.path())
                  .status,
              0);
    const OwnService service(folder.path(), {"--queue", "films:dpi=300"});
    for (const char *const name : {"page.pwg", "page.jpg", "page.png"}) {
        const Answer answer = service.send(folder / name, name, {{"printer-resolution", "300"}});
        ASSERT_EQ(answer.status, IPP_STATUS_OK) << name << ": " << answer.message << service.log();
        service.waitFor(answer.job, IPP_JSTATE_COMPLETED);
    }
    EXPECT_EQ(filmsIn(service.films() / "films-1-page").size(), 1U);
    EXPECT_GT(filmsIn(service.films() / "films-2-page").size(), 1U);
    EXPECT_GT(filmsIn(service.films() / "films-3-page").size(), 1U);
}

TEST_F(PrinterTest, JobsAreTheOwnersAlone)
{
    const OwnService service(folder.path());
    const Answer answer = service.send(folder / "job.ps", "mine");
    service.waitFor(answer.job, IPP_JSTATE_COMPLETED);
    for (const fs::path &place : {service.state(), service.films() / "films-1-mine"})
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(place))
            EXPECT_EQ(static_cast<int>(entry.status().permissions()) & 077, 0) << entry.path();
}

TEST_F(PrinterTest, OtherMachinesNeedAPassword)
{
    const CommandResult open = runRiders({"printer", "--listen", "*"}, "", folder.path());
    EXPECT_EQ(open.status, 1);
    EXPECT_EQ(open.err,
              "riders printer: --listen opens the printer to other machines, and so needs --password-file "
              "or --accounts\n");
    writeFile(folder / "password", "secret\n");
    fs::permissions(folder / "password", fs::perms(0644));
    const CommandResult readable =
        runRiders({"printer", "--listen", "*", "--password-file", "password", "--state", "s", "--films", "f"}, "",
                  folder.path());
    EXPECT_EQ(readable.status, 1);
    EXPECT_NE(readable.err.find("others can read it"), std::string::npos) << readable.err;
}

TEST_F(PrinterTest, ACanceledJobEndsAtOnceAndLeavesNothing)
{
    const OwnService service(folder.path());
    const fs::path slow = notEmpty("slow.ps", "%!PS\n{} loop\n");
    const Answer working = service.send(slow, "slow"), waiting = service.send(slow, "waiting"),
                 last = service.send(folder / "job.ps", "last");
    service.waitFor(working.job, IPP_JSTATE_PROCESSING);
    service.cancel(waiting.job);
    service.cancel(working.job);
    service.waitFor(last.job, IPP_JSTATE_COMPLETED);
    EXPECT_EQ(service.stateOf(working.job), IPP_JSTATE_CANCELED);
    EXPECT_EQ(service.stateOf(waiting.job), IPP_JSTATE_CANCELED);
    EXPECT_EQ(std::distance(fs::directory_iterator(service.films()), fs::directory_iterator()), 1);
}

TEST_F(PrinterTest, ManyClientsAtOnceAreServedInOrder)
{
    constexpr int kClients = 5, kJobs = 2;
    const OwnService service(folder.path(), {"--queue", "films:dpi=150"});
    std::vector<std::thread> clients;
    for (int client = 0; client < kClients; ++client)
        clients.emplace_back([&, client] {
            for (int job = 0; job < kJobs; ++job)
                EXPECT_EQ(service.send(folder / "job.ps", "c.ps" + std::to_string(client)).status, IPP_STATUS_OK);
        });
    for (std::thread &client : clients)
        client.join();
    for (int job = 1; job <= kClients * kJobs; ++job)
        service.waitFor(job, IPP_JSTATE_COMPLETED);
    const std::string log = service.log();
    std::size_t before = 0;
    for (int job = 1; job <= kClients * kJobs; ++job) {
        const std::size_t at = log.find("films-" + std::to_string(job) + " (");
        ASSERT_NE(at, std::string::npos) << job << log;
        EXPECT_GE(at, before) << job << log;
        before = at;
    }
}

TEST_F(PrinterTest, CupsPrintsOnItWithoutADriver)
{
    const OwnService service(folder.path(), {"--queue", "films:dpi=300"});
    const printing_tests::OwnCupsd server{{}};
    const CommandResult added =
        runProgram({"lpadmin", "-p", "office", "-E", "-m", "everywhere", "-v", service.uri()}, "", folder.path());
    ASSERT_EQ(added.status, 0) << added.err;
    server.waitForDescription("office");
    const CommandResult sent = runProgram({"lp", "-d", "office", "-t", "leaf", pdf()}, "", folder.path());
    ASSERT_EQ(sent.status, 0) << sent.err;
    service.waitUntil([&] { return !filmsIn(service.films() / "films-1-leaf").empty(); });
    EXPECT_EQ(filmsIn(service.films() / "films-1-leaf").count("leaf_p01_Cyan.tif"), 1U);
}

}  // namespace
}  // namespace printer_tests
