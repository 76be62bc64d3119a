// A job's pages in continuous tone: plates in 256 steps, streamed from the interpreter row by row.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "plates/interpreter/interpreter.h"
#include "plates/job/prepared_job.h"
#include "plates/survey/survey.h"

namespace riders::plates {

// A page, before its rows.
struct TonePage {
    int number = 0;                // in the job, from 1
    double width = 0, height = 0;  // inches, as the page is rendered: after rotation
    std::size_t columns = 0, rows = 0;
    // As films carry the names: "Cyan", "Magenta", "Yellow" and "Black", then the spot inks: those of the page as
    // surveyed, and any others that the interpreter has met by then. Blank plates are among them.
    std::vector<std::string> plates;
    // Whether the survey saw ink on the plate. One where it did not is blank, or what it has is too small to be
    // seen at the survey's resolution: its rows say which.
    std::vector<bool> ink;
    // Of each spot ink, by the bytes of its name, as far as the interpreter knows: cyan, magenta, yellow and
    // black, 0 to 1.
    std::map<std::string, std::array<double, 4>> spotInks;
    struct Box {
        double left = 0, bottom = 0, right = 0, top = 0;
    };
    // In points from the lower left corner of the page as it is rendered; empty where the job does not say.
    std::optional<Box> trim, bleed;
};

// Gets what is rendered. Calls come from one thread, in this order; what they throw ends the run and is thrown
// by streamTones.
class ToneReader {
public:
    virtual ~ToneReader() = default;
    virtual void beginPage(const TonePage &page) = 0;
    // tones[i] is row y of plate i: page.columns bytes, 0 no ink, 255 all ink; valid during the call. Rows come
    // from the top down, each once.
    virtual void row(std::size_t y, const std::vector<const std::uint8_t *> &tones) = 0;
    // The page is whole. Not called for one that fails.
    virtual void endPage() = 0;
};

struct TonesRun {
    const PreparedJob &job;
    const Survey &survey;    // which pages and plates
    std::vector<int> pages;  // numbers, ascending, of the survey's
    double dpiAcross, dpiDown;
    int rotation = 0;              // 0, 90, 180 or 270 degrees, anticlockwise: how the page lies on the film
    bool interpreterTone = false;  // keep the transfer function by which Ghostscript lightens tints below 800 dpi
    InterpreterLimits limits;
    std::filesystem::path work;  // for temporary files
    int threads = 0;             // besides the interpreter's own, that render for it
    // Called all the time; what it throws ends the run.
    std::function<void()> check = [] {};
};

struct TrimAndBleed {
    std::optional<TonePage::Box> trim, bleed;
};
using PageBoxes = std::map<int, TrimAndBleed>;  // by the page's number

// What the job says of its pages' trim and bleed, asked of the interpreter. Empty for a job that is no PDF, and
// for one that it cannot read. Throws Interrupted.
PageBoxes boxesOf(const TonesRun &run);

// Runs the interpreter and hands the pages to `reader` as their rows are made. The tones are those of the
// interpreter's separation device, to the bit. Throws Refusal where interpret() does, and where the job has
// other pages or plates than the survey found; Interrupted; and what `reader` throws. Several may run at once,
// each in a folder of its own: a page's tones do not depend on which others are asked for with it.
InterpreterReport streamTones(const TonesRun &run, const PageBoxes &boxes, ToneReader &reader);

}  // namespace riders::plates
