// Ghostscript, run as a program over a job.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "io/beside.h"
#include "io/refusal.h"
#include "plates/interpreter/interpreter_words.h"
#include "plates/interpreter/limits.h"
#include "plates/job/prepared_job.h"

namespace riders::plates {

enum class PlateDevice {
    none,           // nothing is written
    tints,          // each plate in 256 steps, "1(Cyan).tif"; several pages, spot inks too
    processPlates,  // the four process plates, screened, four bits a pixel in one file: "1.bits"
    allPlates,      // those four and the spot inks, "1(Cyan).tif"; ten times slower
    colours,        // a picture in red, green and blue: "1.ppm"
    allTones  // those four and the spot inks in 256 steps, in a Photoshop file: "1.psd"; bit for bit as tiffsep
              // has them, in a fifth of the time
};

// A part of each page, in pixels, instead of the whole. What the job does at a sheet's edge it does at the part's.
struct PagePart {
    int columns = 0, rows = 0;
    double left = 0, bottom = 0;  // of its lower left corner, points from the page's
};

struct InterpreterRun {
    const PreparedJob &job;
    PlateDevice device;
    double dpi;
    std::vector<int> pages = {};   // ascending; empty for all
    std::filesystem::path folder;  // empty; page files are numbered from 1 in the order of `pages`
    InterpreterLimits limits;
    std::string ahead = {};  // PostScript to run before the job
    // Called whenever the job ends a page, asked for or not.
    std::function<void()> pageEnded = [] {};
    double dpiDown = 0;            // where it is not `dpi`, which then is the one across
    int rotation = 0;              // 0, 90, 180 or 270 degrees, anticlockwise
    bool interpreterTone = false;  // lighten tints as Ghostscript does of itself on devices that screen
    // For which tints, allPlates and allTones have room: with more than there are they are slower, with fewer inks
    // are mixed.
    int spotInks = kMostSpotInks;
    std::optional<PagePart> part = {};
    bool endsAfterPages = false;   // a job in PostScript is not run further than to the end of the page after them
    bool endsWhenInksMix = false;  // what is made then is not wanted: the report says that they do
    int threads = 0;               // for allTones, besides its own: bands of a page are rendered side by side
    io::Beside *beside = nullptr;  // reads what the device writes, while it writes
};

// A page took more than its time.
struct SlowPage : io::Refusal {
    SlowPage(std::string text, int number, InterpreterReport until)
        : Refusal(std::move(text)), page(number), report(std::move(until))
    {
    }

    int page;                  // its number, as far as is known
    InterpreterReport report;  // of the run until then; all pages before that one are written
};

// Runs the job with file protection and, where not asked for, without the transfer function that
// Ghostscript lightens tints with below 800 dpi. Each page comes once, however many copies the job asks for.
// Throws Refusal when the interpreter fails or takes too much time or memory, naming the page and what it said;
// SlowPage where it is one page that takes too long.
InterpreterReport interpret(const InterpreterRun &run);

// Where a page is in the report of a run: its number, and its place among those that the run was asked for, from
// 0. It may be past the report's end.
std::size_t placeInReport(const PreparedJob &job, int number, std::size_t file);

}  // namespace riders::plates
