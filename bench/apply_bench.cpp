#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "benches.h"
#include "processes.h"

namespace {

constexpr long long megabyte = 1'000'000;

// A structured job whose page is a long run of image data.
void writeJob(const std::filesystem::path &file, long long bytes)
{
    std::ofstream out(file, std::ios::binary);
    out << "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%BeginProlog\n/x 1 def\n%%EndProlog\n"
           "%%BeginSetup\n%%EndSetup\n%%Page: 1 1\n";
    std::string line(std::size_t{64} * 1024, '0');
    for (std::size_t i = 79; i < line.size(); i += 80)
        line[i] = '\n';
    for (long long written = 0; written < bytes; written += static_cast<long long>(line.size()))
        out << line;
    out << "\nshowpage\n%%EOF\n";
}

ProcessRun succeed(const std::vector<std::string> &arguments, const std::filesystem::path &output = {})
{
    ProcessRun run = runProcess(arguments, output);
    if (run.status != 0)
        throw std::runtime_error(arguments[0] + " " + arguments[1] + " failed");
    return run;
}

void measureSize(const std::filesystem::path &riders, const Workplace &place, long long megabytes)
{
    std::string fragment = place / "fragment", ours = place / "ours.ps", theirs = place / "theirs.ps";
    std::string job = place / "job.ps";
    writeJob(job, megabytes * megabyte);
    long peak = 0;
    Pair pair = sideBySide(
        7,
        [&] {
            std::filesystem::remove(ours);
            ProcessRun run = succeed({riders, "apply", fragment, job, "-o", ours});
            peak = std::max(peak, run.peakKiB);
            return run.seconds;
        },
        [&] {
            std::filesystem::remove(theirs);
            return succeed({"cat", fragment, job}, theirs).seconds;
        });
    printRow("apply to a job of " + std::to_string(megabytes) + " MB : cat fragment job", pair, 1.0);
    printFigure("  its peak memory", static_cast<double>(peak) / 1024, "MiB", 16);
}

}  // namespace

void measureApply(const std::filesystem::path &riders)
{
    Workplace place;
    succeed({riders, "make", "-o", place / "fragment", "--frequency", "85", "--angle", "45"});
    printHeading("Adding a riders file to a job");
    measureSize(riders, place, 30);
    measureSize(riders, place, 300);
}
