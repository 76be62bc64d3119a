#include "proof/page_proofs.h"

#include <limits>
#include <set>
#include <string>

#include "looking/dot_pictures.h"
#include "looking/facts/warnings.h"
#include "looking/file_names.h"
#include "looking/look_folder.h"
#include "looking/page_patterns.h"
#include "looking/tiles/plate_tiles.h"
#include "plates/files/film_file.h"
#include "plates/files/plate_names.h"
#include "plates/measuring/grid_place.h"

namespace riders::proof {
namespace {

// A shape without a name is likened to one that has, and to which depends on the tint: where plates would have
// several, none of them is said.
void forgetDoubtfulShapes(looking::PageFacts &page)
{
    std::set<std::string> likened;
    for (const looking::PlateFacts &plate : page.plates)
        if (plate.asked.shape.empty() && !plate.measured.shape.empty())
            likened.insert(plate.measured.shape);
    for (looking::PlateFacts &plate : page.plates)
        if (likened.size() > 1 && plate.asked.shape.empty())
            plate.measured.shape.clear();
}

}  // namespace

PageProofs::PageProofs(const PageProofsRun &run, io::Workers &workers, Progress &progress)
    : run_(run), workers_(workers), progress_(progress), pages_(run.survey.pages.size()),
      platesLeft_(pages_.size())
{
}

void PageProofs::take(plates::RenderedPage rendered)
{
    looking::PageFacts &page = pages_[rendered.index];
    page = startedFacts(rendered);
    const auto dots = std::make_shared<const WholePlates>(std::move(rendered.plates));
    addPlates(rendered.index, dots);
    drawAllInks(page, *dots, run_.folder);
}

void PageProofs::leaveOut(size_t index, const std::string &why)
{
    const plates::SurveyedPage &surveyed = run_.survey.pages[index];
    looking::PageFacts &page = pages_[index];
    page = looking::startedFacts(run_.survey, index, run_.looks.of(surveyed.number), run_.dpi);
    page.leftOut = why;
    for (size_t i = 0; i < surveyed.plates.size(); ++i)
        page.plates[i].ink = looking::inkColour(surveyed.plates[i].plate, {});
}

std::vector<looking::PageFacts> PageProofs::facts()
{
    for (looking::PageFacts &page : pages_) {
        forgetDoubtfulShapes(page);
        page.warnings = warningsFor(page);
    }
    return std::move(pages_);
}

looking::PageFacts PageProofs::startedFacts(const plates::RenderedPage &rendered) const
{
    const plates::SurveyedPage &surveyed = run_.survey.pages[rendered.index];
    looking::PageFacts page =
        looking::startedFacts(run_.survey, rendered.index, run_.looks.of(surveyed.number), run_.dpi);
    page.mesh = run_.mesh;
    page.refused = plates::refusedOfRiders(rendered.report->said);
    for (size_t i = 0; i < surveyed.plates.size(); ++i) {
        const std::string &plate = surveyed.plates[i].plate;
        page.plates[i].ink = looking::inkColour(plate, rendered.report->inks);
        page.plates[i].asked = plates::askedFor(plates::inkBytesFrom(plate, run_.survey.inksKnown()), run_.riders,
                                                rendered.screens, rendered.report->atStart);
    }
    return page;
}

void PageProofs::addPlates(size_t index, const Dots &dots)
{
    const plates::SurveyedPage &surveyed = run_.survey.pages[index];
    looking::PageFacts &page = pages_[index];
    std::set<std::string> taken = looking::namesOfOthers();
    std::vector<size_t> inked;
    for (size_t i = 0; i < page.plates.size(); ++i) {
        looking::PlateFacts &plate = page.plates[i];
        const std::string file = nameOf(page, plate.name, taken);
        // A plate that has nothing but the annotation makes no film.
        if (!surveyed.plates[i].ink && (run_.riders.annotated || !dots->plates[i].hasInk()))
            continue;
        plate.film = std::string(looking::kFilmsName) + "/" + file + ".tif";
        plate.kind = "TIFF";
        plate.picture = looking::pictureCalled(file);
        inked.push_back(i);
    }
    platesLeft_[index] = inked.size();
    for (const size_t i : inked)
        workers_.addUrgent([this, index, i, dots] {
            finishPlate(index, i, *dots);
            if (--platesLeft_[index] == 0)
                finishPage(index, *dots);
        });
}

void PageProofs::finishPlate(size_t index, size_t i, const WholePlates &dots)
{
    looking::PlateFacts &plate = pages_[index].plates[i];
    plates::writeFilm(run_.folder / plate.film, dots.plates[i], run_.dpi);
    drawPlate(pages_[index], i, dots, run_.folder);
    if (plate.tints.tint)
        plate.measured = plates::measurePlate(dots.plates[i], run_.dpi, plate.flatPlace,
                                              plate.asked.frequency.value_or(60), plate.asked.shape);
    if (run_.loupe)
        cutIntoTiles(plate, dots.plates[i]);
    progress_.plateFinished();
}

void PageProofs::cutIntoTiles(looking::PlateFacts &plate, const plates::BitPlate &bits) const
{
    const std::filesystem::path name = std::filesystem::path(plate.film).stem();
    looking::PlateTiles tiles(run_.folder / looking::kTilesName / name, bits.width, bits.height, plate.ink);
    for (int y = 0; y < bits.height; ++y)
        tiles.row(bits.row(y));
    plate.tiles = tiles.finish();
    if (plate.asked.frequency && plate.asked.angle)
        plate.gridAt =
            plates::middleOfDot(bits, run_.dpi, plate.flatPlace, *plate.asked.frequency, *plate.asked.angle);
}

void PageProofs::finishPage(size_t index, const WholePlates &dots)
{
    looking::PageFacts &page = pages_[index];
    findPatterns(page, run_.looks.of(page.number), std::numeric_limits<double>::infinity());
    drawPatterns(page, dots, run_.folder);
}

}  // namespace riders::proof
