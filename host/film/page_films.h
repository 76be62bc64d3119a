// The films of a job's pages, made while the pages stream from the interpreter.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "film/film_look.h"
#include "film/film_made.h"
#include "film/page_order.h"
#include "film/page_plates.h"
#include "film/plate_film.h"
#include "film/progress.h"
#include "film/request.h"
#include "film/tone_band.h"
#include "io/workers.h"
#include "plates/tones/tones.h"

namespace riders::film {

struct PageFilmsRun {
    const FilmRequest &request;
    const std::vector<FilmPage> &pages;
    // A plate that is not one of the page's, named as the page streams by; see PagePlates::further.
    std::function<PagePlate(const FilmPage &, const std::string &, const std::vector<std::string> &)> further;
    // Where a plate of a page is measured, on the upright page.
    std::function<plates::Place(const FilmPage &, const PagePlate &)> measuredAt;
    std::function<bool(const PagePlate &)> skips;  // whether no film is made of a plate, whatever it has
    PlateScreens &screens;
    Form &form;
    PageOrder &order;  // the places of pages are their indices
    std::string date;  // for labels
    FilmLook *look = nullptr;
};

// While some rows are screened and written, a plate on each of the workers, the next come. What is thrown at it
// names the page and the plate. A page's films get their names when its turn has come.
class PageFilms : public plates::ToneReader {
public:
    PageFilms(const PageFilmsRun &run, io::Workers &workers, Progress &progress, FilmsMade &made);
    ~PageFilms() override;

    void beginPage(const plates::TonePage &page) override;
    void row(std::size_t y, const std::vector<const std::uint8_t *> &tones) override;
    void endPage() override;

private:
    struct Open {
        PagePlate plate;
        std::unique_ptr<PlateFilm> film;  // none for a plate that is skipped
        std::optional<PlateMade> made;    // once it is measured
        bool ended = false;               // it is in place
    };

    PagePlate plateOf(const plates::TonePage &page, std::size_t index) const;
    PlateFilmPlan planFor(const plates::TonePage &page, std::size_t index,
                          const std::shared_ptr<const Sheet> &sheet);
    void lookAt(PlateFilmPlan &plan, std::size_t index) const;
    std::unique_ptr<PlateWriter> writerFor(const PlateSheet &sheet);
    void screenBand();
    void forEachPlate(const std::function<void(Open &, std::size_t)> &work);
    void beginLook(const plates::TonePage &page, const Sheet &sheet);
    void measurePlate(Open &open, std::size_t index);
    void keepWhatWasMade();

    const PageFilmsRun run_;
    io::Workers &workers_;
    Progress &progress_;
    FilmsMade &made_;
    const FilmPage *page_ = nullptr;
    std::size_t rows_ = 0;
    ToneBand coming_, screened_;
    std::vector<Open> open_;
};

}  // namespace riders::film
