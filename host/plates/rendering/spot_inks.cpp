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

std::set<size_t> pagesAlike(const RenderedJob &job, const Rendering &one, const Rendering &other)
{
    std::set<size_t> alike;
    for (size_t i = 0; i < one.pages.size(); ++i)
        if (areAlike(readRendered(job, one, i), readRendered(job, other, i)))
            alike.insert(one.pages[i]);
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
    const Rendering apart{RenderingWay::inksApart, pages, work / "small-apart", kSmallDpi};
    const Rendering all{RenderingWay::allPlates, pages, work / "small-all", kSmallDpi};
    bool fails = false;
    workers.add([&] { found.inks = renderPages(job, all).inks; });
    workers.add([&] {
        try {
            renderPages(job, apart);
        } catch (const io::Refusal &) {
            fails = true;  // the job itself did not fail
        }
    });
    workers.finish();
    if (!fails)
        found.apart = pagesAlike(job, apart, all);
    return found;
}

}  // namespace riders::plates
