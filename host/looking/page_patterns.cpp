#include "looking/page_patterns.h"

#include <algorithm>
#include <vector>

#include "looking/facts/plate_patterns.h"
#include "looking/file_names.h"
#include "looking/pictures/pattern_picture.h"
#include "looking/pictures/png_file.h"

namespace riders::looking {
namespace {

constexpr size_t kMostPatterns = 12;
constexpr double kMillimetres = 25.4;
constexpr double kLeastShared = 0.02;           // square inches, an eighth of a square centimetre
constexpr double kPeriods = 3, kFewCells = 40;  // along a picture's side, at least

// None where one of the plates has nothing that the survey has seen.
std::vector<const InkBlocks *> blocksOf(const PlatePattern &pattern, const PageLook &look)
{
    std::vector<const InkBlocks *> blocks;
    for (const size_t i : pattern.plates) {
        if (i >= look.plates.size() || look.plates[i].blocks.ink.empty())
            return {};
        blocks.push_back(&look.plates[i].blocks);
    }
    return blocks;
}

bool overlap(const std::vector<const InkBlocks *> &blocks)
{
    return !blocks.empty() && sharedArea(blocks) >= kLeastShared;
}

void drawPattern(const PageFacts &page, PlatePattern &pattern, const PageDots &dots,
                 const std::filesystem::path &folder)
{
    std::vector<InkedPlate> inked;
    plates::Place place;
    for (const size_t i : pattern.plates) {
        const PageDots::Part part = dots.at(i, pattern.where);
        inked.push_back({part.bits, page.plates[i].ink});
        place = part.place;
    }
    const double cell = pattern.cell / kMillimetres;
    pattern.shown = std::max(place.width, place.height) * kMillimetres;
    pattern.afar = !showsDots(place, cell);
    const Picture picture = patternPicture(inked, page.dpi, place, cell);
    writePicture(folder / pattern.picture, picture,
                 std::max(picture.width, picture.height) / std::max(place.width, place.height));
}

}  // namespace

void findPatterns(PageFacts &page, const PageLook &look, double mostSide)
{
    size_t pictures = 0;
    for (PlatePattern &pattern : patternsBetween(page.plates)) {
        const std::vector<const InkBlocks *> blocks = blocksOf(pattern, look);
        if (page.patterns.size() == kMostPatterns || !overlap(blocks))
            continue;
        if (!pattern.shared && pattern.light.empty() && pictures < kMostPatternPictures) {
            const double side = std::max(kFewCells * pattern.cell, kPeriods * pattern.millimetres) / kMillimetres;
            pattern.where = sharedPlace(blocks, std::min(side, mostSide));
            pattern.picture = patternPictureOf(page, ++pictures);
        }
        page.patterns.push_back(std::move(pattern));
    }
}

void drawPatterns(PageFacts &page, const PageDots &dots, const std::filesystem::path &folder)
{
    for (PlatePattern &pattern : page.patterns) {
        const bool shown = std::all_of(pattern.plates.begin(), pattern.plates.end(),
                                       [&](size_t i) { return !page.plates[i].picture.empty(); });
        if (!shown)
            pattern.picture.clear();
        if (!pattern.picture.empty())
            drawPattern(page, pattern, dots, folder);
    }
}

}  // namespace riders::looking
