#include "viewing/dots_picture.h"

#include <algorithm>
#include <cmath>

#include "io/private_folder.h"
#include "plates/files/process_plates.h"
#include "plates/interpreter/interpreter.h"
#include "viewing/interpreter_run.h"

namespace fs = std::filesystem;

namespace riders::viewing {
namespace {

constexpr double kAround = 0.75;  // inches: enough to measure in, and an annotation at the foot stays outside
constexpr double kPoints = 72;    // to the inch

struct Part {
    int around, columns, rows;  // pixels, all of it
    double left, bottom;        // points
};

// On whole pixels, so that a part moved by some pixels shows the same dots moved.
Part partOf(const DotsWanted &wanted)
{
    const auto pixels = [&](double inches) { return std::round(inches * wanted.dpi); };
    const int around = static_cast<int>(pixels(kAround));
    Part part{around, wanted.columns + 2 * around, wanted.rows + 2 * around, 0, 0};
    part.left = (pixels(wanted.left) - around) / wanted.dpi * kPoints;
    part.bottom = wanted.pageHeight * kPoints - (pixels(wanted.top) - around + part.rows) / wanted.dpi * kPoints;
    return part;
}

int inkIn(const plates::BitPlate &plate, const Part &part, const DotsWanted &wanted)
{
    int ink = 0;
    for (int y = part.around; y < std::min(part.around + wanted.rows, plate.height); ++y)
        for (int x = part.around; x < std::min(part.around + wanted.columns, plate.width); ++x)
            ink += plate.at(x, y);
    return ink;
}

toolbox::Picture composite(const std::vector<plates::BitPlate> &inks, const Part &part, const DotsWanted &wanted)
{
    // What is left of white under cyan, magenta, yellow and black.
    constexpr std::uint32_t through[] = {0x00FFFF, 0xFF00FF, 0xFFFF00, 0x000000};
    toolbox::Picture picture{wanted.columns, wanted.rows, {}};
    for (int y = part.around; y < part.around + wanted.rows; ++y)
        for (int x = part.around; x < part.around + wanted.columns; ++x) {
            std::uint32_t pixel = 0xFFFFFF;
            for (std::size_t i = 0; i < inks.size() && i < std::size(through); ++i)
                if (x < inks[i].width && y < inks[i].height && inks[i].at(x, y))
                    pixel &= through[i];
            picture.pixels.push_back(pixel);
        }
    return picture;
}

// The annotation may lie at any edge of the part.
constexpr double kEdge = 0.45;  // inches

void measure(Dots &dots, const plates::BitPlate &plate, const DotsWanted &wanted)
{
    const double side = kAround - kEdge;
    const plates::Place place{side, side, plate.width / wanted.dpi - 2 * side,
                              plate.height / wanted.dpi - 2 * side};
    dots.measured =
        plates::measurePlate(plate, wanted.dpi, place, dots.asked.frequency.value_or(60), dots.asked.shape);
}

}  // namespace

Dots drawDots(const DotsWanted &wanted, io::Beside &unwanted)
{
    const io::PrivateFolder folder;
    const fs::path work = folder.path() / "work";
    fs::create_directory(work);
    const Part part = partOf(wanted);
    const plates::PreparedJob prepared = plates::prepareJob(wanted.job.job, wanted.job.riders, folder.path());
    const plates::InterpreterReport report =
        plates::interpret({.job = prepared,
                           .device = plates::PlateDevice::processPlates,
                           .dpi = wanted.dpi,
                           .pages = {wanted.job.page},
                           .folder = work,
                           .limits = kLimits,
                           .part = plates::PagePart{part.columns, part.rows, part.left, part.bottom},
                           .endsAfterPages = true,
                           .beside = &unwanted});
    const std::vector<plates::BitPlate> inks =
        plates::readProcessPlates(pageFile(work, "bits", wanted.job), part.columns, part.rows);
    Dots dots{composite(inks, part, wanted), {}, {}, {}, 0};
    std::size_t most = inks.size();
    for (std::size_t i = 0, ink = 0; i < inks.size(); ++i)
        if (const auto own = static_cast<std::size_t>(inkIn(inks[i], part, wanted)); own > ink) {
            ink = own;
            most = i;
        }
    const std::size_t index =
        prepared.kind == plates::JobKind::pdf ? 0 : static_cast<std::size_t>(wanted.job.page - 1);
    const plates::AskedScreens screens = index < report.pages.size() ? report.pages[index] : report.atStart;
    const std::string plate = plates::kProcessPlates[most < inks.size() ? most : 3];
    const plates::AskedFor riders =
        wanted.asking.empty() ? plates::AskedFor{} : plates::askedByRiders(wanted.asking);
    dots.asked = plates::askedFor(plate, riders, screens, report.atStart);
    dots.asked.annotated = riders.annotated;
    if (most < inks.size()) {
        dots.plate = plate;
        measure(dots, inks[most], wanted);
        // The screen may have been measured on a tint beside it.
        dots.measured.ink = static_cast<double>(inkIn(inks[most], part, wanted)) / (wanted.columns * wanted.rows);
    }
    return dots;
}

}  // namespace riders::viewing
