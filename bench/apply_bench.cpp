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

struct Files {
    std::string riders, fragment, job, ours, theirs;

    double apply(long &peak) const
    {
        std::filesystem::remove(ours);
        ProcessRun run = succeed({riders, "apply", fragment, job, "-o", ours});
        peak = std::max(peak, run.peakKiB);
        return run.seconds;
    }
    double strip() const
    {
        std::filesystem::remove(theirs);
        return succeed({riders, "strip", ours, "-o", theirs}).seconds;
    }
    double copy() const
    {
        std::filesystem::remove(theirs);
        return succeed({"cat", fragment, job}, theirs).seconds;
    }
    // What a power failure cannot take any more, as it cannot what is written by apply and strip.
    double copyToDisk() const
    {
        std::filesystem::remove(theirs);
        return succeed({"sh", "-c", "cat \"$1\" \"$2\" >\"$3\" && sync \"$3\"", "copy", fragment, job, theirs})
            .seconds;
    }
};

void measureSize(const std::filesystem::path &riders, const Workplace &place, long long bytes, const char *size)
{
    const Files files = {riders, place / "fragment", place / "job.ps", place / "ours.ps", place / "theirs.ps"};
    const std::string of = std::string(" of ") + size;
    writeJob(files.job, bytes);
    long peak = 0;
    const auto apply = [&] { return files.apply(peak); };
    printRow("apply to a job" + of + " : cat fragment job", sideBySide(7, apply, [&] { return files.copy(); }),
             bytes > 100 * megabyte ? 0.9 : 1.0);
    printRow("  : cat fragment job, and sync of what it wrote",
             sideBySide(7, apply, [&] { return files.copyToDisk(); }), 0.9);
    printRow("strip" + of + " : the same",
             sideBySide(
                 7, [&] { return files.strip(); }, [&] { return files.copyToDisk(); }),
             0.9);
    printFigure("  peak memory of apply", static_cast<double>(peak) / 1024, "MiB", 16);
}

}  // namespace

void measureApply(const std::filesystem::path &riders)
{
    Workplace place;
    succeed({riders, "make", "-o", place / "fragment", "--frequency", "85", "--angle", "45"});
    printHeading("Adding a riders file to a job");
    measureSize(riders, place, 30'000, "30 KB");
    measureSize(riders, place, megabyte, "1 MB");
    measureSize(riders, place, 30 * megabyte, "30 MB");
    measureSize(riders, place, 300 * megabyte, "300 MB");
}
