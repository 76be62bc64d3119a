// Which screen each plate of a job gets.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "film/dot_shapes.h"
#include "plates/job/job_kind.h"
#include "plates/measuring/asked_for.h"
#include "plates/survey/survey.h"
#include "screens/plate_screen.h"

namespace riders::film {

struct PlateDots {
    double frequency = 0;  // lines per inch
    double angle = 0;      // degrees as setscreen takes them, on the upright page
    DotShape shape;
    std::string by;             // "you", "the riders file", "the job", or "nobody"
    bool shapeUnknown = false;  // the job has a dot shape that nobody knows; it is made with the usual one
};

// Where nobody chooses anything.
inline constexpr double kUsualFrequency = 60;

struct ScreenSources {
    const std::vector<screens::PlateScreen> &chosen;  // by the user, kRestOfPlates too
    std::filesystem::path riders;                     // that is in the job; empty for none
    const plates::Survey &survey;
    plates::JobKind kind = plates::JobKind::postScript;
};

class ScreenChoice {
public:
    // Reads the riders file. The chosen screens and the survey must outlive it. Throws Refusal, also where a dot
    // shape is not there.
    explicit ScreenChoice(const ScreenSources &sources);

    // Of a plate, named by the ink's bytes, of a page, by its index in the survey. Each part is the first that is
    // there: what the user chose for the plate, then for all; what the riders file or the job asks for; the usual.
    PlateDots of(std::size_t page, const std::string &plate) const;
    // Whether every page gets a text on all plates.
    bool annotated() const { return riders_.annotated; }

private:
    const plates::AskedScreens &screensAtEndOf(std::size_t page) const;
    void takeAsked(const std::string &plate, const plates::AskedScreens &screens, PlateDots &dots) const;
    void takeChosen(const std::string &plate, PlateDots &dots) const;

    ScreenSources sources_;
    plates::AskedFor riders_;
    std::map<std::string, std::string> ridersShapes_;  // see shapesInRiders
    std::map<std::string, DotShape> shapes_;           // the chosen ones, by what the user calls them
};

}  // namespace riders::film
