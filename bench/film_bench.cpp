// `riders film` against Ghostscript's own dots of the same pages: time, and memory.
#include <fstream>
#include <random>
#include <stdexcept>
#include <vector>

#include "benches.h"
#include "processes.h"

namespace {

namespace fs = std::filesystem;

enum class Inks { one, four, fourAndTwoSpots };

struct FilmJob {
    const char *name;
    int width, height;  // points
    const char *dpi;
    Inks inks;
    bool inSample;
};

constexpr FilmJob kJobs[] = {
    {"A4 at 1200 dpi, four plates", 595, 842, "1200", Inks::four, true},
    {"A4 at 1200 dpi, one plate", 595, 842, "1200", Inks::one, false},
    {"A4 at 1200 dpi, four plates and two spots", 595, 842, "1200", Inks::fourAndTwoSpots, true},
    {"A4 at 2400 dpi, four plates", 595, 842, "2400", Inks::four, false},
    {"A4 at 2400 dpi, four plates and two spots", 595, 842, "2400", Inks::fourAndTwoSpots, false},
    {"A2 at 1440x720 dpi, four plates", 1191, 1684, "1440x720", Inks::four, false},
    {"A1 at 2400 dpi, four plates", 1684, 2384, "2400", Inks::four, false},
};

// Two pages, each with a photograph of 4 megapixels over three quarters of it, tints, and words.
class JobWriter {
public:
    JobWriter(const fs::path &file, const FilmJob &job) : out_(file, std::ios::binary), job_(job)
    {
        out_ << "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndComments\n<</PageSize [" << job.width << " " << job.height
             << "]>> setpagedevice\n/row " << kWidth * samples() << " string def\n";
        for (int page = 1; page <= 2; ++page)
            writePage(page);
    }

private:
    static constexpr int kWidth = 1700, kHeight = 2400;

    int samples() const { return job_.inks == Inks::one ? 1 : 4; }

    void writePage(int page)
    {
        out_ << "%%Page: " << page << " " << page << "\ngsave " << job_.width * 0.1 << " " << job_.height * 0.1
             << " translate " << job_.width * 0.8 << " " << job_.height * 0.7 << " scale " << kWidth << " "
             << kHeight << " 8 [" << kWidth << " 0 0 " << -kHeight << " 0 " << kHeight
             << "] {currentfile row readstring pop} " << (samples() == 1 ? "image\n" : "false 4 colorimage\n");
        writePhotograph(page);
        out_ << "\ngrestore " << (samples() == 1 ? ".4 setgray " : ".2 .4 .6 .1 setcmykcolor ") << "20 20 "
             << job_.width - 40 << " 40 rectfill\n";
        if (job_.inks == Inks::fourAndTwoSpots)
            for (const char *ink : {"Gold", "Varnish"})
                out_ << "[/Separation (" << ink << ") /DeviceCMYK {dup .3 mul exch .8 mul 0 3 1 roll 0}] "
                     << "setcolorspace .5 setcolor " << (*ink == 'G' ? 20 : 200) << " " << job_.height - 60
                     << " 150 40 rectfill\n";
        out_ << (samples() == 1 ? "0 setgray" : "0 0 0 1 setcmykcolor")
             << " /Times-Roman findfont 24 scalefont setfont 20 " << job_.height - 90
             << " moveto (Words above the photograph) show showpage\n";
    }

    void writePhotograph(int page)
    {
        std::mt19937 random(static_cast<unsigned>(page));
        std::string row(static_cast<size_t>(kWidth) * static_cast<size_t>(samples()), 0);
        for (int y = 0; y < kHeight; ++y) {
            for (size_t x = 0; x < row.size(); ++x)
                row[x] = static_cast<char>(
                    (x / 48 * (1 + x % 4) + static_cast<size_t>(y) / 20 * 3 + random() % 16) % 256);
            out_ << row;
        }
    }

    std::ofstream out_;
    const FilmJob &job_;
};

ProcessRun succeed(const std::vector<std::string> &arguments, const Workplace &place)
{
    ProcessRun run = runProcess(arguments, place / "said");
    if (run.status != 0)
        throw std::runtime_error(arguments[0] + " failed");
    return run;
}

void measureJob(const fs::path &riders, const FilmJob &job)
{
    const Workplace place;
    JobWriter(place / "job.ps", job);
    long peak = 0;
    const auto ours = [&] {
        const ProcessRun run = succeed({riders, "film", place / "job.ps", "--screens", "offset", "--dpi", job.dpi,
                                        "--quiet", "--force", "-o", place / "films"},
                                       place);
        peak = std::max(peak, run.peakKiB);
        return run.seconds;
    };
    const auto ghostscript = [&](const char *device, const char *end) {
        return succeed({"sh", "-c", "exec \"$0\" \"$@\" 2>/dev/null", "gs", "-q", "-dSAFER", "-dBATCH",
                        "-dNOPAUSE", std::string("-sDEVICE=") + device, std::string("-r") + job.dpi,
                        "-sOutputFile=" + (place / "page%d").string() + end, place / "job.ps"},
                       place)
            .seconds;
    };
    printRow(std::string(job.name) + " : tiffsep1",
             sideBySide(1, ours, [&] { return ghostscript("tiffsep1", ".tif"); }), 0.15);
    if (job.inks != Inks::fourAndTwoSpots)
        printRow(std::string(job.name) + " : pamcmyk4",
                 sideBySide(1, ours, [&] { return ghostscript("pamcmyk4", ".pam"); }), 0.3);
    printFigure("  its memory besides the interpreter's", static_cast<double>(peak) / 1024, "MiB", 200);
}

void measureJobs(const fs::path &riders, bool sample)
{
    printHeading("Films of two pages (on all cores)");
    for (const FilmJob &job : kJobs)
        if (!sample || job.inSample)
            measureJob(riders, job);
}

}  // namespace

void measureFilm(const fs::path &riders)
{
    measureJobs(riders, false);
}

void measureFilmSample(const fs::path &riders)
{
    measureJobs(riders, true);
}
