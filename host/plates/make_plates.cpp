#include "plates/make_plates.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "plates/rendering/rendering.h"
#include "plates/rendering/spot_inks.h"

namespace riders::plates {
namespace {

// How much disk space a share's page files may take before they are read.
constexpr double kShareBytes = 1.0e9;

double bytesOf(const SurveyedPage &page, double dpi)
{
    const double pixels = page.width * page.height * dpi * dpi;
    return pixels / 8 * static_cast<double>(page.plates.size());
}

// Deals out the pages of a kind in turn, so that slow or large ones are spread evenly over the shares.
std::vector<std::vector<size_t>> dealt(const Survey &survey, const std::vector<size_t> &pages, double dpi,
                                       int cores)
{
    double bytes = 0;
    for (size_t page : pages)
        bytes += bytesOf(survey.pages[page], dpi);
    const size_t least = static_cast<size_t>(bytes / kShareBytes) + 1;
    std::vector<std::vector<size_t>> shares(std::min(pages.size(), std::max(least, static_cast<size_t>(cores))));
    for (size_t i = 0; i < pages.size(); ++i)
        shares[i % shares.size()].push_back(pages[i]);
    return shares;
}

class PlateMaker {
public:
    PlateMaker(const PlatesRun &run, io::Workers &workers) : run_(run), workers_(workers) {}
    ~PlateMaker() { workers_.drop(); }
    PlateMaker(const PlateMaker &) = delete;
    PlateMaker &operator=(const PlateMaker &) = delete;

    std::vector<std::string> make()
    {
        spotInks_ = lookAtSpotInks(job_, run_.dpi, run_.work, workers_);
        // The slow ones first.
        for (const RenderingWay way :
             {RenderingWay::allPlates, RenderingWay::inksApart, RenderingWay::processPlates})
            for (const std::vector<size_t> &pages : dealt(run_.survey, pagesFor(way), run_.dpi, run_.cores))
                addShare(way, pages);
        workers_.finish();
        return std::move(said_);
    }

private:
    using Report = std::shared_ptr<const InterpreterReport>;

    std::vector<size_t> pagesFor(RenderingWay way) const
    {
        std::vector<size_t> pages;
        for (size_t i = 0; i < run_.survey.pages.size(); ++i) {
            const RenderingWay spots =
                spotInks_.apart.contains(i) ? RenderingWay::inksApart : RenderingWay::allPlates;
            if (way == (run_.survey.pages[i].spotInks ? spots : RenderingWay::processPlates))
                pages.push_back(i);
        }
        return pages;
    }

    void addShare(RenderingWay way, const std::vector<size_t> &pages)
    {
        const Rendering share{way, pages, run_.work / ("share-" + std::to_string(shares_++)), run_.dpi};
        workers_.add([this, share] {
            try {
                render(share);
            } catch (const SlowPage &slow) {
                if (!run_.pageLeftOut)
                    throw;
                leaveOut(share, slow);
            }
        });
    }

    // What was rendered before the page is there. What comes after it is rendered anew, unless the job does not
    // get past the page.
    void leaveOut(const Rendering &share, const SlowPage &slow)
    {
        const Report report = known(slow.report);
        if (share.pages[0] == 0)
            said_ = report->said;
        const bool written = share.way != RenderingWay::inksApart;
        const bool passed = std::any_of(share.pages.begin(), share.pages.end(),
                                        [&](size_t page) { return run_.survey.pages[page].number == slow.page; });
        std::vector<size_t> rest;
        for (size_t i = 0; i < share.pages.size(); ++i) {
            const int number = run_.survey.pages[share.pages[i]].number;
            if (number < slow.page && written)
                deliver(share, i, report);
            else if (number != slow.page && passed)
                rest.push_back(share.pages[i]);
            else
                run_.pageLeftOut(share.pages[i], slow.message);
        }
        if (!rest.empty())
            addShare(share.way, rest);
    }

    void render(const Rendering &share)
    {
        const Report report = known(renderPages(job_, share));
        if (share.pages[0] == 0)
            said_ = report->said;
        for (size_t i = 0; i < share.pages.size(); ++i)
            deliver(share, i, report);
    }

    // With the colours of all spot inks.
    Report known(InterpreterReport report) const
    {
        report.inks.insert(spotInks_.inks.begin(), spotInks_.inks.end());
        return std::make_shared<const InterpreterReport>(std::move(report));
    }

    void deliver(const Rendering &share, size_t i, const Report &report)
    {
        run_.pageRendered();
        workers_.addUrgent([this, i, share, report] {
            const size_t page = share.pages[i];
            run_.pageRead({page, readRendered(job_, share, *report, i), screensOf(page, i, *report), report});
        });
    }

    // For PostScript the interpreter reports the screens of all pages, for PDF those of its share.
    AskedScreens screensOf(size_t page, size_t file, const InterpreterReport &report) const
    {
        const size_t index = placeInReport(run_.job, run_.survey.pages[page].number, file);
        return index < report.pages.size() ? report.pages[index] : AskedScreens{};
    }

    const PlatesRun &run_;
    io::Workers &workers_;
    const RenderedJob job_{run_.job, run_.survey, run_.limits};
    SpotInks spotInks_;
    std::atomic<int> shares_ = 0;
    std::vector<std::string> said_;
};

}  // namespace

std::vector<std::string> makePlates(const PlatesRun &run, io::Workers &workers)
{
    return PlateMaker(run, workers).make();
}

}  // namespace riders::plates
