#include "proof/page_proofs.h"

#include <set>
#include <string>

#include "plates/files/film_file.h"
#include "plates/files/plate_names.h"
#include "proof/facts/warnings.h"
#include "proof/looking/pictures.h"
#include "proof/looking/png_file.h"
#include "proof/page_patterns.h"
#include "proof/proof_folder.h"

namespace riders::proof {
namespace {

PlateFacts startedPlate(const std::string &name, const PlateLook &look, Colour ink, const plates::AskedFor &asked)
{
    PlateFacts facts;
    facts.name = name;
    facts.ink = ink;
    facts.tints = look.tints;
    facts.flatPlace = look.flatPlace;
    facts.flatTint = look.flatInk;
    facts.loupe = look.loupe;
    facts.asked = asked;
    return facts;
}

}  // namespace

PageProofs::PageProofs(const PageProofsRun &run, io::Workers &workers, Progress &progress)
    : run_(run), workers_(workers), progress_(progress), pages_(run.survey.pages.size()),
      platesLeft_(pages_.size())
{
}

void PageProofs::take(plates::RenderedPage rendered)
{
    PageFacts &page = pages_[rendered.index];
    page = startedFacts(rendered);
    const auto bits = std::make_shared<const std::vector<plates::BitPlate>>(std::move(rendered.plates));
    addPlates(rendered.index, bits);
    writeRosette(page, *bits);
}

std::vector<PageFacts> PageProofs::facts()
{
    for (PageFacts &page : pages_)
        page.warnings = warningsFor(page);
    return std::move(pages_);
}

PageFacts PageProofs::startedFacts(const plates::RenderedPage &rendered) const
{
    const plates::SurveyedPage &surveyed = run_.survey.pages[rendered.index];
    const PageLook &look = run_.looks.of(surveyed.number);
    PageFacts page;
    page.number = surveyed.number;
    page.width = surveyed.width;
    page.height = surveyed.height;
    page.dpi = run_.dpi;
    page.loupe = look.loupe;
    page.mesh = run_.mesh;
    page.picture = std::string(kPicturesName) + "/" + nameOf(page) + ".png";
    for (size_t i = 0; i < surveyed.plates.size(); ++i) {
        const std::string &plate = surveyed.plates[i].plate;
        page.plates.push_back(
            startedPlate(plates::plateNameFrom(plate, run_.survey.inksKnown()), look.plates[i],
                         inkColour(plate, rendered.report->inks),
                         plates::askedFor(plates::inkBytesFrom(plate, run_.survey.inksKnown()), run_.riders,
                                          rendered.screens, rendered.report->atStart)));
    }
    return page;
}

void PageProofs::addPlates(size_t index, const Bits &bits)
{
    const plates::SurveyedPage &surveyed = run_.survey.pages[index];
    PageFacts &page = pages_[index];
    std::set<std::string> taken = {"all"};
    takePatternNames(taken);
    std::vector<size_t> inked;
    for (size_t i = 0; i < page.plates.size(); ++i) {
        const std::string file = nameOf(page) + "-" + plates::fileNameFor(page.plates[i].name, taken);
        // A plate that has nothing but the annotation makes no film.
        if (!surveyed.plates[i].ink && (run_.riders.annotated || !(*bits)[i].hasInk()))
            continue;
        page.plates[i].film = std::string(kFilmsName) + "/" + file + ".tif";
        page.plates[i].picture = std::string(kPicturesName) + "/" + file + ".png";
        inked.push_back(i);
    }
    platesLeft_[index] = inked.size();
    for (const size_t i : inked)
        workers_.addUrgent([this, index, i, bits] {
            finishPlate(index, i, (*bits)[i]);
            if (--platesLeft_[index] == 0)
                addPatterns(pages_[index], *bits, run_.dpi, run_.folder);
        });
}

void PageProofs::writeRosette(PageFacts &page, const std::vector<plates::BitPlate> &bits) const
{
    std::vector<InkedPlate> inked;
    for (size_t i = 0; i < page.plates.size(); ++i)
        if (!page.plates[i].film.empty())
            inked.push_back({&bits[i], page.plates[i].ink});
    if (inked.empty())
        return;
    page.rosette = std::string(kPicturesName) + "/" + nameOf(page) + "-all.png";
    writePicture(run_.folder / page.rosette, loupePicture(inked, run_.dpi, page.loupe), loupePictureDpi(run_.dpi));
}

void PageProofs::finishPlate(size_t pageIndex, size_t plateIndex, const plates::BitPlate &bits)
{
    PlateFacts &plate = pages_[pageIndex].plates[plateIndex];
    plates::writeFilm(run_.folder / plate.film, bits, run_.dpi);
    const plates::Place &place = plate.loupe.empty() ? pages_[pageIndex].loupe : plate.loupe;
    writePicture(run_.folder / plate.picture, loupePicture({{&bits, {0, 0, 0}}}, run_.dpi, place),
                 loupePictureDpi(run_.dpi));
    if (plate.tints.tint)
        plate.measured = plates::measurePlate(bits, run_.dpi, plate.flatPlace, plate.asked.frequency.value_or(60),
                                              plate.asked.shape);
    progress_.plateFinished();
}

}  // namespace riders::proof
