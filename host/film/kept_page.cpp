#include "film/kept_page.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

#include "looking/dot_pictures.h"
#include "looking/facts/warnings.h"
#include "looking/file_names.h"
#include "looking/look_folder.h"
#include "looking/page_patterns.h"
#include "looking/pictures/ink_colours.h"
#include "looking/pictures/pictures.h"
#include "plates/files/plate_names.h"
#include "plates/measuring/grid_place.h"

namespace riders::film {
namespace {

// As many as there are tones.
constexpr int kGreyLevels = 256;
// So many pixels a side of a pattern's picture are kept of each plate, 8 MB.
constexpr double kMostPatternPixels = 8192;

double squareDpi(const screening::Resolution &resolution)
{
    return std::max(resolution.across, resolution.down);
}

screens::Grid gridOf(double frequency, double angle, const std::string &shape)
{
    const bool lines = shape == "Line" || shape == "LineX" || shape == "LineY";
    return {frequency, angle, lines ? screens::GridKind::lines : screens::GridKind::dots};
}

plates::AskedFor askedOf(const PlateDots &dots)
{
    plates::AskedFor asked;
    asked.frequency = dots.frequency;
    asked.angle = dots.angle;
    asked.shape = dots.shape.name;
    asked.by = dots.by;
    asked.binding = dots.by != "nobody";
    return asked;
}

// For a plate of which the survey has seen nothing worth looking at.
plates::Place middleOf(const looking::PageFacts &page)
{
    const double width = std::min(looking::kLoupeInches, page.width),
                 height = std::min(looking::kLoupeInches, page.height);
    return {(page.width - width) / 2, (page.height - height) / 2, width, height};
}

bool isSame(const plates::Place &one, const plates::Place &other)
{
    return one.left == other.left && one.top == other.top && one.width == other.width &&
           one.height == other.height;
}

}  // namespace

KeptPage::KeptPage(const KeptPageRun &run, const std::vector<const PagePlate *> &plates)
    : request_(run.request),
      facts_(looking::startedFacts(run.survey, run.page.index, run.look, squareDpi(run.request.resolution)))
{
    facts_.byInterpreter = false;
    facts_.mesh = run.request.look->mesh;
    if (facts_.loupe.empty())
        facts_.loupe = middleOf(facts_);
    for (const PagePlate *plate : plates)
        addPlate(run, *plate);
    plates_.resize(facts_.plates.size());
    std::set<std::string> taken = looking::namesOfOthers();
    for (std::size_t i = 0; i < plates_.size(); ++i) {
        const std::string file = nameOf(facts_, facts_.plates[i].name, taken);
        plates_[i].picture = looking::pictureCalled(file);
        if (request_.look->loupe)
            keepTiles(run, i, file);
    }
    findPatterns(facts_, run.look, kMostPatternPixels / facts_.dpi);
    keepWhatIsShown(run);
}

void KeptPage::addPlate(const KeptPageRun &run, const PagePlate &plate)
{
    std::size_t at = facts_.plates.size();
    std::string ink = plate.name;
    if (plate.surveyed) {
        at = *plate.surveyed;
        ink = plates::inkBytesFrom(run.survey.pages[run.page.index].plates[at].plate, run.survey.inksKnown());
    } else {
        facts_.plates.emplace_back().name = plate.name;
    }
    inOrder_.push_back(at);
    looking::PlateFacts &facts = facts_.plates[at];
    facts.ink = looking::inkColour(ink, run.tones.spotInks);
    facts.asked = askedOf(plate.dots);
    facts.own = "the usual";
    facts.levels = kGreyLevels;
    if (!plate.ink)
        return;
    const auto screening = run.screens.of(plate.dots);
    facts.made = gridOf(screening->frequency, screening->angle, plate.dots.shape.name);
}

void KeptPage::keep(const KeptPageRun &run, std::size_t plate, const plates::Place &place)
{
    std::vector<Window> &windows = plates_[plate].windows;
    if (std::any_of(windows.begin(), windows.end(),
                    [&](const Window &window) { return isSame(window.place, place); }))
        return;
    const Sheet &sheet = run.sheet;
    windows.push_back({place,
                       std::make_shared<KeptWindow>(turned(place, request_.rotation, facts_.width, facts_.height),
                                                    sheet.resolution(), sheet.left(), sheet.top(), sheet.columns(),
                                                    sheet.rows()),
                       {}});
}

void KeptPage::keepWhatIsShown(const KeptPageRun &run)
{
    for (std::size_t i = 0; i < plates_.size(); ++i) {
        keep(run, i, facts_.loupe);
        if (!facts_.plates[i].loupe.empty())
            keep(run, i, facts_.plates[i].loupe);
    }
    for (const looking::PlatePattern &pattern : facts_.patterns)
        if (!pattern.picture.empty())
            for (const std::size_t i : pattern.plates)
                keep(run, i, pattern.where);
}

void KeptPage::keepTiles(const KeptPageRun &run, std::size_t plate, const std::string &file)
{
    const PageOnFilm page{run.sheet.left(), run.sheet.top(), run.tones.columns, run.tones.rows,
                          run.request.resolution};
    plates_[plate].tiles = std::make_shared<KeptTiles>(
        page, run.folder / looking::kTilesName / file, facts_.plates[plate].ink,
        request_.look->onDemand ? looking::FineTiles::onDemand : looking::FineTiles::files);
}

// Where its loupe shows dots.
void KeptPage::layGrid(std::size_t plate)
{
    looking::PlateFacts &facts = facts_.plates[plate];
    const plates::Place &place = facts.loupe.empty() ? facts_.loupe : facts.loupe;
    const Part part = at(plate, place);
    facts.gridAt =
        plates::middleOfDot(*part.bits, facts_.dpi, part.place, *facts.asked.frequency, *facts.asked.angle);
    if (facts.gridAt) {
        facts.gridAt->x += place.left;
        facts.gridAt->y += place.top;
    }
}

std::vector<std::shared_ptr<KeptWindow>> KeptPage::windowsOf(std::size_t plate) const
{
    std::vector<std::shared_ptr<KeptWindow>> kept;
    for (const Window &window : plates_[inOrder_[plate]].windows)
        kept.push_back(window.kept);
    return kept;
}

void KeptPage::take(std::size_t plate, const PlateMade &made, const FilmLink &link,
                    const std::filesystem::path &folder)
{
    const std::size_t at = inOrder_[plate];
    looking::PlateFacts &facts = facts_.plates[at];
    facts.measured = made.measured;
    facts.made = gridOf(made.frequency, made.angle, made.asked.shape.name);
    if (made.measured.found && made.measured.lines)
        facts.made->kind = screens::GridKind::lines;
    facts.off = made.warnings;
    facts.film = link.url;
    facts.kind = link.kind;
    facts.picture = plates_[at].picture;
    for (Window &window : plates_[at].windows) {
        window.dots = window.kept->upright(request_.rotation);
        window.kept.reset();
    }
    if (plates_[at].tiles) {
        facts.tiles = plates_[at].tiles->finish();
        plates_[at].tiles.reset();
        layGrid(at);
    }
    drawPlate(facts_, at, *this, folder);
}

looking::PageDots::Part KeptPage::at(std::size_t plate, const plates::Place &place) const
{
    for (const Window &window : plates_[plate].windows)
        if (isSame(window.place, place))
            return {&window.dots, {0, 0, window.dots.width / facts_.dpi, window.dots.height / facts_.dpi}};
    throw std::logic_error("no dots are kept of that place");
}

looking::PageFacts KeptPage::finish(const std::filesystem::path &folder)
{
    drawAllInks(facts_, *this, folder);
    drawPatterns(facts_, *this, folder);
    facts_.warnings = warningsFor(facts_);
    return std::move(facts_);
}

}  // namespace riders::film
