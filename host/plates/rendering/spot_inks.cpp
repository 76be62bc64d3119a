#include "plates/rendering/spot_inks.h"

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr double kSmallDpi = 150;
constexpr size_t kMostInks = 4;  // each is a run over the job

bool areAlike(const std::vector<BitPlate> &one, const std::vector<BitPlate> &other)
{
    if (one.size() != other.size())
        return false;
    for (size_t i = 0; i < one.size(); ++i)
        if (one[i].width != other[i].width || one[i].height != other[i].height || one[i].bits != other[i].bits)
            return false;
    return true;
}

std::vector<size_t> pagesWithSpotInks(const Survey &survey, std::set<std::string> &inks)
{
    std::vector<size_t> pages;
    for (size_t i = 0; i < survey.pages.size(); ++i)
        if (survey.pages[i].spotInks) {
            pages.push_back(i);
            for (const std::string &ink : spotInksOf(survey.pages[i]))
                inks.insert(ink);
        }
    return pages;
}

// What was rendered, and the report of it.
struct Reported {
    Rendering rendering;
    InterpreterReport report;
};

std::set<size_t> pagesAlike(const RenderedJob &job, const Reported &one, const Reported &other)
{
    std::set<size_t> alike;
    for (size_t i = 0; i < one.rendering.pages.size(); ++i)
        if (areAlike(readRendered(job, one.rendering, one.report, i),
                     readRendered(job, other.rendering, other.report, i)))
            alike.insert(one.rendering.pages[i]);
    return alike;
}

}  // namespace

SpotInks lookAtSpotInks(const RenderedJob &job, double dpi, const fs::path &work, io::Workers &workers)
{
    SpotInks found;
    std::set<std::string> inks;
    const std::vector<size_t> pages = pagesWithSpotInks(job.survey, inks);
    if (pages.empty() || job.job.kind == JobKind::pdf || inks.size() > kMostInks || dpi < 2 * kSmallDpi)
        return found;
    Reported apart{{RenderingWay::inksApart, pages, work / "small-apart", kSmallDpi}, {}};
    Reported all{{RenderingWay::allPlates, pages, work / "small-all", kSmallDpi}, {}};
    bool fails = false;
    workers.add([&] { all.report = renderPages(job, all.rendering); });
    workers.add([&] {
        try {
            apart.report = renderPages(job, apart.rendering);
        } catch (const io::Refusal &) {
            fails = true;  // the job itself did not fail
        }
    });
    workers.finish();
    found.inks = all.report.inks;
    if (!fails)
        found.apart = pagesAlike(job, apart, all);
    return found;
}

}  // namespace riders::plates
