#include "film/page_films.h"

#include <algorithm>
#include <utility>

#include "film/film_names.h"
#include "film/own_files.h"
#include "io/plain_text.h"
#include "io/refusal.h"

namespace riders::film {
namespace {

// Of tones, twice that; with what is written, this bounds the memory that a page of any size takes.
constexpr std::size_t kBandBytes = std::size_t(8) << 20;

}  // namespace

PageFilms::PageFilms(const PageFilmsRun &run, io::Workers &workers, Progress &progress, FilmsMade &made)
    : run_(run), workers_(workers), progress_(progress), made_(made)
{
}

// The workers use what is here.
PageFilms::~PageFilms()
{
    workers_.drop();
}

void PageFilms::beginPage(const plates::TonePage &page)
{
    const auto found = std::find_if(run_.pages.begin(), run_.pages.end(),
                                    [&](const FilmPage &known) { return known.number == page.number; });
    page_ = &*found;
    rows_ = page.rows;
    open_.clear();
    const auto sheet = std::make_shared<const Sheet>(page, run_.request.resolution, run_.request.marks);
    for (std::size_t i = 0; i < page.plates.size(); ++i)
        open_.push_back({plateOf(page, i), nullptr, {}, false});
    if (run_.look != nullptr)
        beginLook(page, *sheet);
    for (std::size_t i = 0; i < open_.size(); ++i)
        if (!run_.skips(open_[i].plate))
            open_[i].film = std::make_unique<PlateFilm>(planFor(page, i, sheet));
    for (ToneBand *band : {&coming_, &screened_})
        band->begin(page.plates.size(), page.columns, kBandBytes);
}

void PageFilms::beginLook(const plates::TonePage &page, const Sheet &sheet)
{
    std::vector<const PagePlate *> plates;
    for (const Open &open : open_)
        plates.push_back(&open.plate);
    run_.look->beginPage(*page_, page, sheet, run_.screens, plates);
}

void PageFilms::lookAt(PlateFilmPlan &plan, std::size_t index) const
{
    plan.shown = run_.look->windowsOf(index);
    plan.tiles = run_.look->tilesOf(index);
}

PagePlate PageFilms::plateOf(const plates::TonePage &page, std::size_t index) const
{
    const std::string &name = page.plates[index];
    const std::vector<PagePlate> &known = page_->plates;
    // Two inks may have one name for people: then their order tells them apart.
    if (index < known.size() && known[index].name == name)
        return known[index];
    const auto found =
        std::find_if(known.begin(), known.end(), [&](const PagePlate &plate) { return plate.name == name; });
    return found != known.end()
               ? *found
               : run_.further(*page_, name, {page.plates.begin(), page.plates.begin() + static_cast<long>(index)});
}

PlateFilmPlan PageFilms::planFor(const plates::TonePage &page, std::size_t index,
                                 const std::shared_ptr<const Sheet> &sheet)
{
    const PagePlate &plate = open_[index].plate;
    const FilmRequest &request = run_.request;
    const std::string job = io::plainText(jobTitle(request.job));
    PlateFilmPlan plan;
    plan.sheet = {job,           plate.name,         page.number, plate.file, sheet->columns(),
                  sheet->rows(), request.resolution, index};
    plan.pageColumns = page.columns;
    plan.place = sheet;
    plan.side = request.side;
    plan.measuredAt = turned(run_.measuredAt(*page_, plate), request.rotation, page_->width, page_->height);
    if (run_.look != nullptr)
        lookAt(plan, index);
    plan.label = {plate.name,
                  job,
                  page.number,
                  run_.date,
                  plate.dots.frequency,
                  plate.dots.angle,
                  io::plainText(plate.dots.shape.name),
                  0,
                  0};
    plan.inked = plate.ink || (plate.known && request.blank);
    plan.screen = [this, &plate] { return run_.screens.of(plate.dots); };
    plan.write = [this](const PlateSheet &shown) { return writerFor(shown); };
    return plan;
}

std::unique_ptr<PlateWriter> PageFilms::writerFor(const PlateSheet &sheet)
{
    const std::lock_guard lock(run_.order.beginning);
    if (!run_.request.force && !isOneFile(run_.request.format))
        refuseForeign(sheet.file);
    return run_.form.plate(sheet);
}

void PageFilms::row(std::size_t y, const std::vector<const std::uint8_t *> &tones)
{
    coming_.add(tones);
    if (!coming_.isFull())
        return;
    screenBand();
    progress_.rowsDone(page_->number, y + 1, rows_);
}

void PageFilms::screenBand()
{
    workers_.finish();
    run_.order.check(page_->index);
    std::swap(coming_, screened_);
    coming_.clear();
    forEachPlate([this](Open &open, std::size_t plate) {
        for (std::size_t i = 0; i < screened_.count(); ++i)
            open.film->take(screened_.row(plate, i));
    });
}

// Does not wait for what it gives to the workers.
void PageFilms::forEachPlate(const std::function<void(Open &, std::size_t)> &work)
{
    for (std::size_t i = 0; i < open_.size(); ++i)
        if (open_[i].film)
            workers_.add([this, work, i] {
                try {
                    work(open_[i], i);
                } catch (const io::Refusal &refusal) {
                    throw io::Refusal("page " + std::to_string(page_->number) + ", " + open_[i].plate.name + ": " +
                                      refusal.message);
                }
            });
}

void PageFilms::endPage()
{
    screenBand();
    workers_.finish();
    forEachPlate([this](Open &open, std::size_t plate) { measurePlate(open, plate); });
    workers_.finish();
    run_.order.awaitTurn(page_->index);
    forEachPlate([](Open &open, std::size_t) {
        if (open.film->begun()) {
            open.film->end();
            open.ended = true;
        }
    });
    try {
        workers_.finish();
    } catch (...) {
        keepWhatWasMade();
        throw;
    }
    keepWhatWasMade();
    if (run_.look != nullptr)
        run_.look->endPage();
    run_.order.finished(page_->index);
    progress_.pageFinished(
        page_->number,
        static_cast<int>(std::count_if(open_.begin(), open_.end(), [](const Open &open) { return open.ended; })));
    open_.clear();
}

void PageFilms::measurePlate(Open &open, std::size_t index)
{
    PlateFilm &film = *open.film;
    film.takeLast();
    if (!film.begun())
        return;
    const FilmRequest &request = run_.request;
    const PagePlate &plate = open.plate;
    PlateMade made{plate.file,
                   page_->number,
                   plate.name,
                   plate.dots,
                   film.screening().frequency,
                   film.screening().angle,
                   film.measure(plate.dots.frequency, plate.dots.shape.body.empty() ? plate.dots.shape.name : ""),
                   film.sheet().columns,
                   film.sheet().rows,
                   request.resolution,
                   {}};
    made.measured.angle = uprightAngle(made.measured, request.rotation, plate.dots.angle);
    made.warnings = warningsOf(made);
    if (request.strict && !made.warnings.empty())
        throw io::Refusal(made.warnings.front());
    open.made = std::move(made);
    if (run_.look != nullptr)
        run_.look->take(index, *open.made);
}

void PageFilms::keepWhatWasMade()
{
    for (Open &open : open_)
        if (open.ended)
            made_.films.push_back(*open.made);
        else if (open.plate.known && (!open.film || !open.film->begun()))
            made_.blank.push_back({page_->number, open.plate.name});
}

}  // namespace riders::film
