#include <fstream>
#include <stdexcept>

#include "benches.h"
#include "processes.h"

namespace {

constexpr int pages = 4;
constexpr const char *dpi = "1200";

// Pages of A4 with text and tints in four inks, each with its screen; with a spot ink where asked for.
void writeJob(const std::filesystem::path &file, bool spotInk)
{
    std::ofstream out(file, std::ios::binary);
    out << "%!PS-Adobe-3.0\n%%Pages: " << pages
        << "\n%%EndComments\n<</PageSize [595 842]>> setpagedevice\n"
           "/dot {dup mul exch dup mul add 1 exch sub} def\n";
    for (int page = 1; page <= pages; ++page) {
        out << "%%Page: " << page << " " << page
            << "\n85 15 {dot} 85 75 {dot} 85 0 {dot} 85 45 {dot} setcolorscreen\n"
               ".3 0 0 0 setcmykcolor 50 50 200 200 rectfill 0 .4 0 0 setcmykcolor 300 50 200 200 rectfill\n"
               "0 0 .5 0 setcmykcolor 50 300 200 200 rectfill 0 0 0 .6 setcmykcolor 300 300 200 200 rectfill\n"
               ".5 .4 .4 .1 setcmykcolor 50 550 450 200 rectfill 0 0 0 1 setcmykcolor\n"
               "/Times-Roman findfont 12 scalefont setfont\n"
               "0 1 40 {20 mul 20 add 60 exch moveto (Some words on page ) show "
            << page << " 10 string cvs show} for\n";
        if (spotInk)
            out << "[/Separation (Gold) /DeviceCMYK {0 exch dup 0.3 mul exch 0}] setcolorspace .5 setcolor "
                   "450 700 100 100 rectfill\n";
        out << "showpage\n";
    }
}

double succeed(const std::vector<std::string> &arguments, const std::filesystem::path &output = {})
{
    const ProcessRun run = runProcess(arguments, output);
    if (run.status != 0)
        throw std::runtime_error(arguments[0] + " failed");
    return run.seconds;
}

void measureJob(const std::filesystem::path &riders, bool spotInk)
{
    Workplace place;
    const std::string job = place / "job.ps", ours = place / "ours", theirs = place / "theirs";
    writeJob(job, spotInk);
    std::filesystem::create_directory(theirs);
    const Pair pair = sideBySide(
        3,
        [&] {
            return succeed({riders, "proof", job, "--dpi", dpi, "-o", ours}, place / "said");
        },
        [&] {
            return succeed({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffsep1", "-sCompression=g4",
                            std::string("-r") + dpi, "-sOutputFile=" + theirs + "/%d.tif", job},
                           place / "said");
        });
    printRow("proof of 4 pages at 1200 dpi, " + std::string(spotInk ? "5" : "4") + " inks : plain gs, same plates",
             pair, 0.6);
}

}  // namespace

void measureProof(const std::filesystem::path &riders)
{
    printHeading("Proofing a job (on 2 cores)");
    measureJob(riders, false);
    measureJob(riders, true);
}
