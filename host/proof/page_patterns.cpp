#include "proof/page_patterns.h"

#include <algorithm>

#include "proof/facts/plate_patterns.h"
#include "proof/looking/pattern_picture.h"
#include "proof/looking/png_file.h"
#include "proof/proof_folder.h"

namespace riders::proof {
namespace {

constexpr size_t kMostPatterns = 12, kMostPictures = 4;
constexpr double kMillimetres = 25.4;
constexpr double kLeastShared = 0.02;           // square inches, an eighth of a square centimetre
constexpr double kPeriods = 3, kFewCells = 40;  // along a picture's side, at least

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

void addPicture(PageFacts &page, PlatePattern &pattern, const std::vector<plates::BitPlate> &bits, double dpi,
                const std::filesystem::path &folder)
{
    std::vector<InkedPlate> inked;
    for (const size_t i : pattern.plates)
        inked.push_back({&bits[i], page.plates[i].ink});
    const double cell = pattern.cell / kMillimetres;
    const double side = std::max(kFewCells * cell, kPeriods * pattern.millimetres / kMillimetres);
    const plates::Place place = sharedPlace(platesOf(pattern, bits), dpi, side);
    pattern.shown = std::max(place.width, place.height) * kMillimetres;
    pattern.afar = !showsDots(place, cell);
    const Picture picture = patternPicture(inked, dpi, place, cell);
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
    for (PlatePattern &pattern : patternsBetween(page.plates))
        if (page.patterns.size() < kMostPatterns && sharedArea(platesOf(pattern, bits), dpi) >= kLeastShared)
            page.patterns.push_back(std::move(pattern));
    size_t pictures = 0;
    for (PlatePattern &pattern : page.patterns)
        if (!pattern.shared && pattern.light.empty() && pictures < kMostPictures) {
            pattern.picture =
                std::string(kPicturesName) + "/" + nameOf(page) + "-" + patternName(pictures++) + ".png";
            addPicture(page, pattern, bits, dpi, folder);
        }
}

}  // namespace riders::proof
