#include "film/film.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <thread>

#include "film/film_folder.h"
#include "film/film_names.h"
#include "film/flat_places.h"
#include "film/own_files.h"
#include "film/page_films.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "plates/job/prepared_job.h"
#include "plates/page_list.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

constexpr const char *kTiff = ".tif";

void check(const FilmRequest &request)
{
    for (const double dpi : {request.resolution.across, request.resolution.down})
        if (!(dpi >= kLeastFilmDpi && dpi <= kMostFilmDpi))
            throw io::Refusal("a film's resolution goes from " + std::to_string(kLeastFilmDpi) + " to " +
                              std::to_string(kMostFilmDpi) + " dpi");
    if (request.limits.secondsAPage < 1 || request.limits.megabytes < 1)
        throw io::Refusal("the interpreter needs some time and some memory");
}

fs::path placeOf(const FilmRequest &request)
{
    return request.output.empty() ? fs::path(jobTitle(request.job) + "-film") : request.output;
}

int threadsFor(const FilmRequest &request)
{
    return request.cores > 0 ? request.cores : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

std::string today()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d", localtime_r(&now, &parts));
    return text.data();
}

std::vector<int> numbersOf(const std::vector<FilmPage> &pages)
{
    std::vector<int> numbers;
    for (const FilmPage &page : pages)
        numbers.push_back(page.number);
    return numbers;
}

// The work on a job: what is known of it before its films are made.
class Filming {
public:
    Filming(const FilmRequest &request, FilmsMade &made)
        : request_(request), made_(made), form_(request.compression), folder_(placeOf(request)),
          progress_(!request.quiet), workers_(threadsFor(request)), screens_(request.resolution, request.rotation)
    {
    }

    void run(const std::vector<int> &asked)
    {
        const int seconds = request_.limits.secondsAPage;
        const fs::path riders = plates::readableAgain(request_.riders, folder_.work() / "given.riders", seconds);
        const plates::PreparedJob job = plates::prepareJob(request_.job, riders, folder_.work(), seconds);
        const plates::Survey survey = look(job, asked);
        const ScreenChoice choice({request_.screens, riders, survey, job.kind});
        const std::vector<FilmPage> pages = filmPages(survey, choice, folder_.path(), request_.job, kTiff);
        prepare(pages);
        make(job, survey, pages, choice.annotated());
    }

private:
    plates::Survey look(const plates::PreparedJob &job, const std::vector<int> &asked)
    {
        return plates::surveyJob({.job = job,
                                  .pages = asked,
                                  .limits = request_.limits,
                                  .work = folder_.work(),
                                  .pageEnded = [this] { progress_.pageRead(); },
                                  .pageSeen = [this](const plates::PageInTints &seen) { places_.take(seen); }},
                                 workers_);
    }

    // What cannot be made is said before anything is.
    void prepare(const std::vector<FilmPage> &pages)
    {
        int plates = 0;
        for (const FilmPage &page : pages)
            for (const PagePlate &plate : page.plates) {
                if (!plate.ink && !request_.blank)
                    continue;
                ++plates;
                if (!request_.force)
                    refuseForeign(plate.file);
                workers_.add([this, &page, &plate] { prepareScreen(page, plate); });
            }
        progress_.expect(static_cast<int>(pages.size()), plates);
        workers_.finish();
    }

    void prepareScreen(const FilmPage &page, const PagePlate &plate)
    {
        try {
            screens_.of(plate.dots);
        } catch (const io::Refusal &refusal) {
            throw io::Refusal("page " + std::to_string(page.number) + ", " + plate.name + ": " + refusal.message);
        }
    }

    void make(const plates::PreparedJob &job, const plates::Survey &survey, const std::vector<FilmPage> &pages,
              bool annotated)
    {
        const PageFilmsRun run{
            .request = request_,
            .pages = pages,
            .measuredAt = [this](const FilmPage &page,
                                 std::size_t plate) { return places_.of(page.number, plate); },
            // One that has nothing but the annotation.
            .skips = [&](const PagePlate &plate) { return annotated && !plate.ink && !request_.blank; },
            .screens = screens_,
            .form = form_,
            .date = today()};
        PageFilms films(run, workers_, progress_, made_);
        plates::streamTones({.job = job,
                             .survey = survey,
                             .pages = numbersOf(pages),
                             .dpiAcross = request_.resolution.across,
                             .dpiDown = request_.resolution.down,
                             .rotation = request_.rotation,
                             .interpreterTone = request_.interpreterTone,
                             .limits = request_.limits,
                             .work = folder_.work()},
                            films);
        form_.finish();
    }

    const FilmRequest &request_;
    FilmsMade &made_;
    TiffForm form_;
    FilmFolder folder_;
    Progress progress_;
    FlatPlaces places_;
    io::Workers workers_;
    PlateScreens screens_;
};

}  // namespace

void makeFilms(const FilmRequest &request, FilmsMade &made)
{
    check(request);
    const std::vector<int> pages = plates::pagesFromText(request.pages);
    if (!plates::comesOnce(request.job))
        plates::kindOfJob(request.job);  // before anything is made
    io::Interruption interruption;
    Filming(request, made).run(pages);
}

}  // namespace riders::film
