#include "film/film_look.h"

#include <algorithm>
#include <utility>

#include "film/film_names.h"
#include "film/resolution_text.h"
#include "html/url.h"
#include "io/interruption.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

// Beside the films.
fs::path placeFor(const FilmRequest &request)
{
    if (!request.look->folder.empty())
        return request.look->folder;
    if (request.output.empty() || request.output == kStandardOutput)
        return jobTitle(request.job) + "-film-look";
    fs::path films = request.output;
    if (!films.has_filename())  // "films/"
        films = films.parent_path();
    return (isOneFile(request.format) ? films.replace_extension() : films).concat("-look");
}

std::string kindOf(FilmFormat format)
{
    switch (format) {
    case FilmFormat::pdf:
        return "PDF";
    case FilmFormat::postScript:
        return "PostScript";
    case FilmFormat::cups:
        return "CUPS raster";
    case FilmFormat::pwg:
        return "PWG raster";
    default:
        return "TIFF";
    }
}

}  // namespace

FilmLook::FilmLook(const FilmRequest &request)
    : request_(request), place_(placeFor(request)), folder_(place_, looking::LookFolder::Holds::pictures),
      looks_(folder_.pictures())
{
    if (request.look->loupe)
        folder_.makeRoomForTiles();
}

void FilmLook::beginPage(const FilmPage &page, const plates::TonePage &tones, const Sheet &sheet,
                         PlateScreens &screens, const std::vector<const PagePlate *> &plates)
{
    page_.emplace(
        KeptPageRun{request_, *survey_, page, looks_.of(page.number), tones, sheet, screens, folder_.path()},
        plates);
}

void FilmLook::take(std::size_t plate, const PlateMade &made)
{
    page_->take(plate, made, {linkTo(made.file), kindOf(request_.format)}, folder_.path());
}

void FilmLook::endPage()
{
    pages_.push_back(page_->finish(folder_.path()));
    page_.reset();
}

// From the page; empty where the film is in no file.
std::string FilmLook::linkTo(const fs::path &film) const
{
    if (film.empty())
        return {};
    const fs::path to = fs::weakly_canonical(fs::absolute(film)),
                   from = fs::weakly_canonical(fs::absolute(place_));
    return html::urlOf(to.lexically_relative(from));
}

fs::path FilmLook::finish(const std::vector<std::string> &said)
{
    const bool zooms = std::any_of(pages_.begin(), pages_.end(), looking::hasTiles);
    folder_.writePages({.job = request_.job.filename(),
                        .riders = request_.riders.filename(),
                        .resolution = resolutionText(request_.resolution),
                        .films = true,
                        .loupe = zooms ? looking::kLoupeName : "",
                        .pages = std::move(pages_),
                        .said = said});
    io::Interruption::check();
    folder_.finish();
    return place_ / looking::kPageName;
}

}  // namespace riders::film
