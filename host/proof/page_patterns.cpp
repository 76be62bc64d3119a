#include "proof/page_patterns.h"

#include <algorithm>

#include "proof/facts/plate_patterns.h"
#include "proof/looking/pattern_picture.h"
#include "proof/looking/png_file.h"
#include "proof/proof_folder.h"

namespace riders::proof {
namespace {

constexpr size_t kMostPictures = 4;
constexpr double kMillimetres = 25.4;
constexpr double kLeastShared = 0.02;                 // square inches, an eighth of a square centimetre
constexpr double kPeriods = 3, kLeastPeriods = 1.25;  // along a picture's side
constexpr double kFewCells = 40, kCellsInDots = 150;  // likewise

std::string patternName(size_t i)
{
    return "pattern-" + std::to_string(i + 1);
}

std::vector<const plates::BitPlate *> platesOf(const PlatePattern &pattern,
                                               const std::vector<plates::BitPlate> &bits)
{
    std::vector<const plates::BitPlate *> plates;
    for (const size_t i : pattern.plates)
        plates.push_back(&bits[i]);
    return plates;
}

// In millimetres: three periods, but with dots if that leaves more than one.
double sideFor(const PlatePattern &pattern)
{
    const double dots = kCellsInDots * pattern.cell, least = kLeastPeriods * pattern.millimetres;
    const double side = std::max(kFewCells * pattern.cell, kPeriods * pattern.millimetres);
    return side > dots && least < dots ? dots : side;
}

void addPicture(PageFacts &page, PlatePattern &pattern, const std::vector<plates::BitPlate> &bits, double dpi,
                const std::filesystem::path &folder)
{
    std::vector<InkedPlate> inked;
    for (const size_t i : pattern.plates)
        inked.push_back({&bits[i], page.plates[i].ink});
    const Place place = sharedPlace(platesOf(pattern, bits), dpi, sideFor(pattern) / kMillimetres);
    pattern.shown = std::max(place.width, place.height) * kMillimetres;
    pattern.afar = pattern.shown > kCellsInDots * pattern.cell * 1.01;
    const Picture picture = patternPicture(inked, dpi, place, pattern.cell / kMillimetres);
    writePicture(folder / pattern.picture, picture,
                 std::max(picture.width, picture.height) / std::max(place.width, place.height));
}

}  // namespace

std::string nameOf(const PageFacts &page)
{
    return "page-" + std::to_string(page.number);
}

void takePatternNames(std::set<std::string> &taken)
{
    for (size_t i = 0; i < kMostPictures; ++i)
        taken.insert(patternName(i));
}

void addPatterns(PageFacts &page, const std::vector<plates::BitPlate> &bits, double dpi,
                 const std::filesystem::path &folder)
{
    page.patterns = patternsBetween(page.plates);
    std::erase_if(page.patterns, [&](const PlatePattern &pattern) {
        return sharedArea(platesOf(pattern, bits), dpi) < kLeastShared;
    });
    size_t pictures = 0;
    for (PlatePattern &pattern : page.patterns)
        if (!pattern.shared && pattern.light.empty() && pictures < kMostPictures) {
            pattern.picture =
                std::string(kPicturesName) + "/" + nameOf(page) + "-" + patternName(pictures++) + ".png";
            addPicture(page, pattern, bits, dpi, folder);
        }
}

}  // namespace riders::proof
