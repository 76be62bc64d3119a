#include "app/job_view.h"

#include <algorithm>

#include "io/refusal.h"
#include "viewing/enough_resolution.h"

namespace riders::app {
namespace {

// A person who turns pages or moves the loupe is not interrupted by pictures of where they have been.
constexpr std::uint32_t kPause = 6;  // ticks
constexpr int kLargest = 8;          // enlargement

bool isDue(std::optional<std::uint32_t> &due, std::uint32_t ticks)
{
    if (!due)
        return false;
    if (*due == 0)
        due = ticks + kPause;
    if (ticks < *due)
        return false;
    due.reset();
    return true;
}

// What the work gave, or why it gave nothing.
template <class Result>
struct Outcome {
    std::optional<Result> result;
    std::string problem;
};

template <class Result, class Do>
Outcome<Result> outcomeOf(const Do &work)
{
    try {
        return {work(), {}};
    } catch (const io::Refusal &refusal) {
        return {{}, refusal.message};
    } catch (const std::filesystem::filesystem_error &error) {
        return {{}, error.path1().string() + ": " + error.code().message()};
    }
}

struct DrawnPage {
    viewing::PagePicture page;
    viewing::ComparedJob job;
    std::shared_ptr<io::PrivateFolder> folder;
    int pages;
};

struct DrawnDots {
    viewing::Dots with;
    std::optional<viewing::Dots> without;
};

}  // namespace

void JobView::show(const std::filesystem::path &job, const std::filesystem::path &tried, int pages)
{
    if (job != job_) {
        page_ = 1;
        pages_ = std::max(pages, 0);
        across_ = down_ = 0.5;
        pagePicture_.reset();
    }
    job_ = job;
    tried_ = tried;
    compared_.reset();
    folder_.reset();
    with_.reset();
    without_.reset();
    problem_.clear();
    dotsWork_.stop();
    dotsDue_.reset();
    wantPage();
}

void JobView::setRoom(const RoomForPictures &room)
{
    if (room == room_)
        return;
    room_ = room;
    if (!job_.empty())
        wantPage();
}

bool JobView::canTurn(int pages) const
{
    const int to = page_ + pages;
    return to >= 1 && (pages_ == 0 || to <= pages_);
}

void JobView::turn(int pages)
{
    if (!canTurn(pages))
        return;
    page_ += pages;
    pagePicture_.reset();
    with_.reset();
    without_.reset();
    dotsWork_.stop();
    dotsDue_.reset();
    wantPage();
}

void JobView::setDpi(int dpi)
{
    if (dpi == dpi_)
        return;
    dpi_ = dpi;
    keepLoupeOnPage();
    wantDots();
}

void JobView::setEnlargement(int times)
{
    enlargement_ = std::clamp(times, 1, kLargest);
    keepLoupeOnPage();
    wantDots();
}

void JobView::moveLoupe(double across, double down)
{
    across_ = across;
    down_ = down;
    keepLoupeOnPage();
    wantDots();
}

void JobView::nudgeLoupe(double across, double down)
{
    if (const auto part = loupe())
        moveLoupe(across_ + across * (part->right - part->left), down_ + down * (part->bottom - part->top));
}

std::optional<JobView::Part> JobView::loupe() const
{
    if (!pagePicture_)
        return std::nullopt;
    const double width = room_.dotsColumns / enlargement_ / (dpi_ * pagePicture_->width);
    const double height = room_.dotsRows / enlargement_ / (dpi_ * pagePicture_->height);
    return Part{across_ - width / 2, down_ - height / 2, across_ + width / 2, down_ + height / 2};
}

void JobView::keepLoupeOnPage()
{
    across_ = std::clamp(across_, 0.0, 1.0);
    down_ = std::clamp(down_, 0.0, 1.0);
}

void JobView::wantPage()
{
    pageDue_ = 0;
}

void JobView::wantDots()
{
    if (pagePicture_)
        dotsDue_ = 0;
}

bool JobView::lookAtWork(std::uint32_t ticks)
{
    if (isDue(pageDue_, ticks))
        drawPage();
    if (isDue(dotsDue_, ticks))
        drawDots();
    if (waits_) {
        pageWork_.wait();
        dotsWork_.wait();
    }
    const bool page = pageWork_.takeResult(), dots = dotsWork_.takeResult();
    return page || dots;
}

void JobView::drawPage()
{
    const bool counted = pages_ != 0;
    pageWork_.begin([=, this, job = job_, tried = tried_, page = page_, room = room_](io::Beside &unwanted) {
        auto outcome = std::make_shared<Outcome<DrawnPage>>(outcomeOf<DrawnPage>([&] {
            const auto folder = std::make_shared<io::PrivateFolder>();
            viewing::ComparedJob compared = viewing::compareJob(job, tried, folder->path());
            compared.with.page = page;
            if (compared.without)
                compared.without->page = page;
            const int pages = counted ? 0 : viewing::countPages(job, unwanted);
            return DrawnPage{viewing::drawPage(compared.with, room.pageColumns, room.pageRows, unwanted), compared,
                             folder, pages};
        }));
        return [=, this] {
            problem_ = outcome->problem;
            if (!outcome->result)
                return;
            pagePicture_ = std::move(outcome->result->page);
            compared_ = outcome->result->job;
            folder_ = outcome->result->folder;
            if (!counted && outcome->result->pages > 0)
                pages_ = outcome->result->pages;
            keepLoupeOnPage();
            wantDots();
        };
    });
}

std::optional<viewing::DotsWanted> JobView::dotsWanted() const
{
    const auto part = loupe();
    if (!part || !compared_)
        return std::nullopt;
    return viewing::DotsWanted{.job = compared_->with,
                               .asking = compared_->riders,
                               .pageHeight = pagePicture_->height,
                               .left = part->left * pagePicture_->width,
                               .top = part->top * pagePicture_->height,
                               .columns = std::max(1, room_.dotsColumns / enlargement_),
                               .rows = std::max(1, room_.dotsRows / enlargement_),
                               .dpi = static_cast<double>(dpi_)};
}

void JobView::drawDots()
{
    const auto wanted = dotsWanted();
    if (!wanted)
        return;
    dotsWork_.begin([=, this, compared = *compared_, folder = folder_](io::Beside &unwanted) {
        auto outcome = std::make_shared<Outcome<DrawnDots>>(outcomeOf<DrawnDots>([&] {
            DrawnDots drawn{viewing::drawDots(*wanted, unwanted), {}};
            if (compared.without) {
                viewing::DotsWanted plain = *wanted;
                plain.job = *compared.without;
                plain.asking.clear();
                drawn.without = viewing::drawDots(plain, unwanted);
            }
            return drawn;
        }));
        return [=, this] {
            problem_ = outcome->problem;
            if (!outcome->result)
                return;
            with_ = std::move(outcome->result->with);
            without_ = std::move(outcome->result->without);
            if (!compared.riders.empty() && viewing::frequencyMissed(*with_))
                findEnoughDpi();
        };
    });
}

// It takes several runs of the interpreter, and the dots are shown meanwhile.
void JobView::findEnoughDpi()
{
    dotsWork_.begin([=, this, riders = compared_->riders, folder = folder_, dpi = dpi_](io::Beside &unwanted) {
        auto outcome = std::make_shared<Outcome<int>>(
            outcomeOf<int>([&] { return viewing::enoughResolution(riders, dpi, unwanted); }));
        return [=, this] {
            if (outcome->result && with_)
                with_->enoughDpi = *outcome->result;
        };
    });
}

}  // namespace riders::app
