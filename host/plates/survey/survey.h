// A quick first run over a job: which pages there are, and which plates each has.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "io/workers.h"
#include "plates/files/plate.h"
#include "plates/interpreter/interpreter.h"

namespace riders::plates {

inline constexpr double kSurveyDpi = 200;

struct SurveyedPlate {
    std::string plate;  // as the interpreter writes it
    bool ink = false;
};

struct SurveyedPage {
    int number = 0;
    double width = 0, height = 0;       // inches
    std::vector<SurveyedPlate> plates;  // process plates first, with ink or without
    bool spotInks = false;              // there are other plates than the process ones
    size_t inksKnown = 0;               // spot inks that the interpreter had met by then
    std::vector<std::string> blank;     // those of them whose plates have no ink, as it writes them
};

struct Survey {
    std::vector<SurveyedPage> pages;  // those asked for, ascending
    InterpreterReport report;
    double dpi = kSurveyDpi;           // how exactly sizes are known
    int spotRoom = kMostSurveyedInks;  // the job names no more spot inks

    size_t inksKnown() const;  // spot inks that the interpreter has met in all
};

// What the survey sees of a page, for as long as the call lasts.
struct PageInTints {
    const SurveyedPage &page;
    const std::vector<TintPlate> &plates;     // as in page.plates
    const std::vector<TintPlate> &composite;  // the four process inks that all its inks add up to
    double dpi;
};

// Looks at a plate in tints as its rows are read. Used by one thread.
class PlateLook {
public:
    virtual ~PlateLook() = default;
    // From the top down; 255 is solid.
    virtual void row(const std::uint8_t *tints) = 0;
};
using PlateLooks = std::vector<std::unique_ptr<PlateLook>>;

struct SurveyRun {
    const PreparedJob &job;
    const std::vector<int> &pages;  // asked for, ascending; empty for all
    InterpreterLimits limits;
    std::filesystem::path work;  // for temporary files
    // Called whenever the job ends a page, asked for or not.
    std::function<void()> pageEnded;
    // Called for each page asked for, by the workers: several at a time and in any order. A page may come again:
    // then what came first does not count.
    std::function<void(const PageInTints &)> pageSeen;
    int mostSpotInks = kMostSpotInks;  // on a page; kMostSurveyedInks where the plates are made in continuous tone
    double dpi = kSurveyDpi;
    // Where they are there, plates are not kept in memory, and the second is called in place of pageSeen: with a
    // look at each of page.plates, which has seen all of its rows.
    std::function<std::unique_ptr<PlateLook>(int columns)> look = {};
    std::function<void(const SurveyedPage &page, const PlateLooks &looks)> pageLooked = {};
};

// Throws Refusal when the job fails, paints no page, lacks a page asked for or has more than mostSpotInks
// on one, and what `pageSeen` throws.
Survey surveyJob(const SurveyRun &run, io::Workers &workers);

}  // namespace riders::plates
