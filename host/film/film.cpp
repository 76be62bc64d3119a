#include "film/film.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <deque>
#include <optional>
#include <thread>

#include "film/film_look.h"
#include "film/film_place.h"
#include "film/flat_places.h"
#include "film/own_files.h"
#include "film/page_films.h"
#include "film/page_shares.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "plates/job/prepared_job.h"
#include "plates/page_list.h"
#include "plates/measuring/asked_for.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

constexpr double kLowSurveyDpi = 150;

void check(const FilmRequest &request)
{
    for (const double dpi : {request.resolution.across, request.resolution.down})
        if (!(dpi >= kLeastFilmDpi && dpi <= kMostFilmDpi))
            throw io::Refusal("a film's resolution goes from " + std::to_string(kLeastFilmDpi) + " to " +
                              std::to_string(kMostFilmDpi) + " dpi");
    if (request.limits.secondsAPage < 1 || request.limits.megabytes < 1)
        throw io::Refusal("the interpreter needs some time and some memory");
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
        : request_(request), made_(made), place_(request), progress_(!request.quiet),
          workers_(threadsFor(request)), screens_(request.resolution, request.rotation)
    {
        if (request.look)
            look_.emplace(request);
    }

    void run(const std::vector<int> &asked)
    {
        const int seconds = request_.limits.secondsAPage;
        riders_ = plates::readableAgain(request_.riders, place_.work() / "given.riders", seconds);
        const plates::PreparedJob job = plates::prepareJob(request_.job, riders_, place_.work(), seconds);
        const plates::Survey survey = look(job, asked);
        const ScreenChoice choice({request_.screens, riders_, survey, job.kind});
        const PagePlates pages(survey, choice,
                               {request_.job, extensionOf(request_.format),
                                [this](const std::string &name) { return place_.fileOf(name); }});
        prepare(pages.pages());
        make(job, survey, pages, choice.annotated());
    }

private:
    // The lowest at which the interpreter has its usual screens costs little more than reading the job. What it
    // does not see, the page's rows show: but not where a text on all plates hides it, and pictures of pages need
    // more.
    double surveyDpi() const
    {
        const bool whole = look_ || (!request_.riders.empty() && plates::askedByRiders(riders_).annotated);
        return whole ? plates::kSurveyDpi : kLowSurveyDpi;
    }

    plates::Survey look(const plates::PreparedJob &job, const std::vector<int> &asked)
    {
        const double dpi = surveyDpi();
        plates::SurveyRun run{.job = job,
                              .pages = asked,
                              .limits = request_.limits,
                              .work = place_.work(),
                              .pageEnded = [this] { progress_.pageRead(); },
                              .pageSeen = [this](const plates::PageInTints &seen) { look_->take(seen); },
                              .mostSpotInks = plates::kMostSurveyedInks,
                              .dpi = dpi};
        if (!look_) {
            run.look = [dpi](int columns) { return FlatPlaces::look(columns, dpi); };
            run.pageLooked = [this](const plates::SurveyedPage &page, const plates::PlateLooks &looks) {
                places_.take(page.number, looks);
            };
        }
        return plates::surveyJob(run, workers_);
    }

    plates::Place measuredAt(const FilmPage &page, const PagePlate &plate) const
    {
        if (!plate.surveyed)
            return {};
        return look_ ? look_->flatPlace(page.number, *plate.surveyed) : places_.of(page.number, *plate.surveyed);
    }

    // What cannot be made is said before anything is.
    void prepare(const std::vector<FilmPage> &pages)
    {
        const auto eachFilm = [&](const auto &take) {
            for (const FilmPage &page : pages)
                for (const PagePlate &plate : page.plates)
                    if (plate.ink || request_.blank)
                        take(page, plate);
        };
        if (!request_.force && !isOneFile(request_.format))
            eachFilm([](const FilmPage &, const PagePlate &plate) { refuseForeign(plate.file); });
        std::deque<std::string> problems;  // of the plates, in their order
        eachFilm([&](const FilmPage &page, const PagePlate &plate) {
            std::string &problem = problems.emplace_back();
            workers_.add([this, &problem, &page, &plate] { problem = problemWith(page, plate); });
        });
        progress_.expect(static_cast<int>(pages.size()), static_cast<int>(problems.size()));
        workers_.finish();
        for (const std::string &problem : problems)
            if (!problem.empty())
                throw io::Refusal(problem);
    }

    std::string problemWith(const FilmPage &page, const PagePlate &plate)
    {
        try {
            screens_.of(plate.dots);
            return {};
        } catch (const io::Refusal &refusal) {
            return "page " + std::to_string(page.number) + ", " + plate.name + ": " + refusal.message;
        }
    }

    void make(const plates::PreparedJob &job, const plates::Survey &survey, const PagePlates &pages,
              bool annotated)
    {
        const std::unique_ptr<Form> form = place_.makeForm();
        PageOrder order;
        const PageFilmsRun run{
            .request = request_,
            .pages = pages.pages(),
            .further = [&](const FilmPage &page, const std::string &name,
                           const std::vector<std::string> &others) { return pages.further(page, name, others); },
            .measuredAt = [this](const FilmPage &page, const PagePlate &plate) { return measuredAt(page, plate); },
            // One that has nothing but the annotation.
            .skips = [&](const PagePlate &plate) { return annotated && !plate.ink && !request_.blank; },
            .screens = screens_,
            .form = *form,
            .order = order,
            .date = today(),
            .look = look_ ? &*look_ : nullptr};
        if (look_)
            look_->begin(survey);
        plates::TonesRun tones{.job = job,
                               .survey = survey,
                               .pages = numbersOf(pages.pages()),
                               .dpiAcross = request_.resolution.across,
                               .dpiDown = request_.resolution.down,
                               .rotation = request_.rotation,
                               .interpreterTone = request_.interpreterTone,
                               .limits = request_.limits,
                               .work = place_.work()};
        const plates::PageBoxes boxes = plates::boxesOf(tones);
        makeShares(sharesOf(tones.pages.size()), order, [&](const PageShare &share, std::size_t number) {
            plates::TonesRun own = ofShare(tones, share, number);
            own.check = [&] { order.check(nextPlace(share, order)); };
            io::Workers workers(share.threads);
            PageFilms films(run, workers, progress_, made_);
            plates::streamTones(own, boxes, films);
        });
        if (made_.films.empty() && request_.format != FilmFormat::none)
            throw io::Refusal(request_.job.string() + ": no plate has any ink; --blank makes films of those, too");
        form->finish();
        if (look_)
            made_.look = look_->finish(survey.report.said);
    }

    // What is looked at comes page by page.
    std::vector<PageShare> sharesOf(std::size_t pages) const
    {
        const int cores = threadsFor(request_);
        std::vector<PageShare> shares = pageShares(pages, look_ ? 1 : cores);
        if (look_)
            shares.front().threads = cores;
        return shares;
    }

    static plates::TonesRun ofShare(const plates::TonesRun &all, const PageShare &share, std::size_t number)
    {
        plates::TonesRun run = all;
        run.pages.clear();
        for (const std::size_t place : share.places)
            run.pages.push_back(all.pages[place]);
        run.threads = share.interpreterThreads;
        run.work = all.work / ("share-" + std::to_string(number));
        return run;
    }

    const FilmRequest &request_;
    FilmsMade &made_;
    FilmPlace place_;
    fs::path riders_;
    std::optional<FilmLook> look_;
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
