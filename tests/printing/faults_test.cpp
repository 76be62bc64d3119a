// Printing with system calls that fail: the queue gets the whole film, or nothing.
#include <signal.h>
#include <sys/wait.h>

#include "fault/call_kinds.h"
#include "fault/faulty_run.h"
#include "fault/which_faults.h"
#include "printing/printing_test.h"

namespace printing_tests {
namespace {

namespace fs = std::filesystem;

constexpr const char *kSmallJob = "%!PS-Adobe-3.0\n%%EndComments\n<< /PageSize [144 108] >> setpagedevice\n"
                                  "0.5 setgray 40 40 9 9 rectfill showpage\n%%EOF\n";
constexpr size_t kSome = 5;

class PrintingFaultsTest : public ::testing::Test {
protected:
    PrintingFaultsTest()
    {
        writeFile(folder / "job.ps", kSmallJob);
        for (const char *name : {"home", "temporary"})
            fs::create_directory(folder / name);
    }

    FaultyCommand command() const
    {
        return {.command = {RIDERS_BINARY_DIR "/riders", "film", "job.ps", "--printer", "inkjet", "--dpi", "360",
                            "--media", "A6", "--frequency", "30", "--quiet"},
                .folder = folder.path(),
                .environment = {"HOME=" + (folder / "home").string(),
                                "XDG_CACHE_HOME=" + (folder / "home").string(),
                                "TMPDIR=" + (folder / "temporary").string()},
                .input = {}};
    }

    void openPipe()
    {
        pipe.reset();
        fs::remove(folder / "printer");
        pipe.emplace(folder / "printer");
    }

    // The droplets of the film when nothing fails, and the calls of that run.
    std::map<long, int> callsOfARightRun()
    {
        openPipe();
        const FaultyRun run = runAndCount(command());
        EXPECT_EQ(run.status, 0) << run.err;
        right = pipe->read();
        return run.calls;
    }

    std::string wrongWith(const FaultyRun &run) const
    {
        if (run.status == 0) {
            std::string printed = pipe->read();
            if (printed.empty())  // a document whose connection was cut is sent again
                printed = pipe->read();
            return printed == right ? ""
                                    : "prints " + std::to_string(printed.size()) + " bytes rather than " +
                                          std::to_string(right.size()) + ", and exits with 0";
        }
        if (!pipe->isSilent())
            return "prints, and exits with " + std::to_string(run.status);
        if (const std::string left = runProgram({"lpstat", "-o"}).out; !left.empty())
            return "leaves a job at the server: " + left;
        if (!fs::is_empty(folder / "temporary"))
            return "leaves " + fs::directory_iterator(folder / "temporary")->path().string();
        const bool says = run.muted || (run.err.starts_with("riders film: ") && run.err.ends_with('\n') &&
                                        std::count(run.err.begin(), run.err.end(), '\n') == 1);
        return says ? "" : "exits with " + std::to_string(run.status) + ", and says: " + run.err;
    }

    TemporaryFolder folder;
    std::optional<PrinterPipe> pipe;
    OwnCupsd server{{{"inkjet", gutenprintPpd("escp2-1400"), "file://" + (folder / "printer").string()}}};
    std::string right;
};

std::vector<Fault> faultsOnce(const std::map<long, int> &calls)
{
    std::vector<Fault> faults;
    for (const CallKind &kind : callKinds())
        if (const auto found = calls.find(kind.number); found != calls.end())
            for (int nth = 1; nth <= found->second; ++nth)
                for (const Failure &failure : kind.failures)
                    faults.push_back({kind.number, failure, nth, 0});
    return faults;
}

const char *nameOfCall(long call)
{
    for (const CallKind &kind : callKinds())
        if (kind.number == call)
            return kind.name;
    return "?";
}

std::string described(const Fault &fault)
{
    return nameOfCall(fault.call) + (" " + std::to_string(fault.nth)) + ": " + fault.failure.name;
}

// RIDERS_FAULTS=all tries every fault: hours. RIDERS_FAULTS="sendto 3" tries those whose description begins so.
TEST_F(PrintingFaultsTest, TheQueueGetsTheWholeFilmOrNothing)
{
    const std::map<long, int> calls = callsOfARightRun();
    for (const auto &[call, count] : calls)
        EXPECT_TRUE(neverFails(call) || nameOfCall(call) != std::string("?"))
            << "call_kinds.cpp does not say how call " << call << " fails";
    std::vector<Fault> faults = faultsOnce(calls);
    if (const char *asked = getenv("RIDERS_FAULTS"); asked && !triesAllFaults())
        std::erase_if(faults, [asked](const Fault &fault) { return !described(fault).starts_with(asked); });
    keepSome(faults, kSome);
    for (const Fault &fault : faults) {
        openPipe();
        const FaultyRun run = runWithFault(command(), fault);
        EXPECT_EQ(wrongWith(run), "") << described(fault) << "\n" << run.err;
        runProgram({"cancel", "-a", "-x"});
        for (const fs::directory_entry &entry : fs::directory_iterator(folder / "temporary"))
            fs::remove_all(entry);
    }
    std::printf("%zu faults tried\n", faults.size());
}

// What is at the server by then is held.
TEST_F(PrintingFaultsTest, KilledItPrintsNothing)
{
    openPipe();
    {
        Started riders({RIDERS_BINARY_DIR "/riders", "film", folder / "job.ps", "--printer", "inkjet", "--dpi",
                        "1440x720", "--copies", "200", "--quiet"},
                       folder / "out");
        riders.waitFor([] { return !runProgram({"lpstat", "-o"}).out.empty(); });
        const int status = riders.end(SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
    }
    EXPECT_NE(runProgram({"lpstat", "-o"}).out.find("inkjet-1"), std::string::npos);
    EXPECT_TRUE(pipe->isSilent());
}

}  // namespace
}  // namespace printing_tests
