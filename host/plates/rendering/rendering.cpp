#include "plates/rendering/rendering.h"

#include <algorithm>
#include <set>

#include "io/refusal.h"
#include "plates/files/plate_files.h"
#include "plates/files/plate_names.h"
#include "plates/files/process_plates.h"
#include "plates/rendering/separated_inks.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

using Pages = std::vector<size_t>;

InterpreterReport runOver(const RenderedJob &job, double dpi, PlateDevice device, const Pages &pages,
                          const fs::path &folder, const std::string &ahead)
{
    fs::create_directories(folder);
    std::vector<int> numbers;
    for (size_t page : pages)
        numbers.push_back(job.survey.pages[page].number);
    return interpret({.job = job.job,
                      .device = device,
                      .dpi = dpi,
                      .pages = numbers,
                      .folder = folder,
                      .limits = job.limits,
                      .ahead = ahead,
                      .spotInks = std::min(job.survey.spotRoom, kMostSpotInks)});
}

Pages pagesWith(const RenderedJob &job, const Pages &pages, const std::string &ink)
{
    Pages some;
    for (size_t page : pages) {
        const std::vector<std::string> inks = spotInksOf(job.survey.pages[page]);
        if (std::find(inks.begin(), inks.end(), ink) != inks.end())
            some.push_back(page);
    }
    return some;
}

// All spot inks of the pages, each once.
std::set<std::string> allInks(const RenderedJob &job, const Pages &pages)
{
    std::set<std::string> all;
    for (size_t page : pages)
        for (const std::string &ink : spotInksOf(job.survey.pages[page]))
            all.insert(ink);
    return all;
}

fs::path folderOf(const Rendering &rendering, const std::set<std::string> &inks, const std::string &ink)
{
    return rendering.folder / ("ink-" + std::to_string(std::distance(inks.begin(), inks.find(ink))));
}

// The file of a page in the folder of a run over the pages.
fs::path bitsOf(const fs::path &folder, const Pages &pages, size_t page)
{
    const auto at = std::find(pages.begin(), pages.end(), page) - pages.begin();
    return folder / (std::to_string(at + 1) + ".bits");
}

std::vector<BitPlate> readInksApart(const RenderedJob &job, const Rendering &rendering, size_t page,
                                    const PagePixels &size)
{
    const fs::path file = bitsOf(rendering.folder, rendering.pages, page);
    std::vector<BitPlate> plates = readProcessPlates(file, size.columns, size.rows);
    fs::remove(file);
    const std::set<std::string> inks = allInks(job, rendering.pages);
    for (const std::string &ink : spotInksOf(job.survey.pages[page])) {
        const fs::path ofInk = bitsOf(folderOf(rendering, inks, ink), pagesWith(job, rendering.pages, ink), page);
        plates.push_back(readBlackPlate(ofInk, size.columns, size.rows));
        fs::remove(ofInk);
    }
    return plates;
}

std::vector<BitPlate> readAllPlates(const SurveyedPage &page, const fs::path &folder, int file)
{
    // There may be others as well, named on other pages and empty here.
    const std::vector<PlateFile> files = plateFiles(folder, file);
    std::vector<BitPlate> plates;
    for (const SurveyedPlate &wanted : page.plates)
        for (const PlateFile &plate : files)
            if (plate.plate == wanted.plate)
                plates.push_back(readPlate(plate.file));
    for (const PlateFile &plate : files)
        fs::remove(plate.file);
    return plates;
}

}  // namespace

std::vector<std::string> spotInksOf(const SurveyedPage &page)
{
    std::vector<std::string> inks;
    for (const SurveyedPlate &plate : page.plates)
        if (!isProcessPlate(plate.plate))
            inks.push_back(plate.plate);
    return inks;
}

InterpreterReport renderPages(const RenderedJob &job, const Rendering &rendering)
{
    const auto run = [&](PlateDevice device, const Pages &pages, const fs::path &folder,
                         const std::string &ahead) {
        return runOver(job, rendering.dpi, device, pages, folder, ahead);
    };
    if (rendering.way == RenderingWay::allPlates) {
        InterpreterReport report = run(PlateDevice::allPlates, rendering.pages, rendering.folder, {});
        // Those that it only names, or has on other pages, count too.
        if (report.inksMixed)
            throw io::Refusal(job.job.name.string() + ": names more than " + std::to_string(kMostSpotInks) +
                              " spot inks, of which plates can be made");
        return report;
    }
    if (rendering.way == RenderingWay::processPlates)
        return run(PlateDevice::processPlates, rendering.pages, rendering.folder, {});
    InterpreterReport report =
        run(PlateDevice::processPlates, rendering.pages, rendering.folder, processInksOnly());
    const std::set<std::string> inks = allInks(job, rendering.pages);
    for (const std::string &ink : inks)
        run(PlateDevice::processPlates, pagesWith(job, rendering.pages, ink), folderOf(rendering, inks, ink),
            spotInkAsBlack(inkBytesFrom(ink, job.survey.inksKnown())));
    return report;
}

std::vector<BitPlate> readRendered(const RenderedJob &job, const Rendering &rendering,
                                   const InterpreterReport &report, size_t page)
{
    const size_t index = rendering.pages[page];
    const SurveyedPage &surveyed = job.survey.pages[index];
    std::vector<BitPlate> plates;
    if (rendering.way == RenderingWay::allPlates) {
        plates = readAllPlates(surveyed, rendering.folder, static_cast<int>(page) + 1);
    } else {
        const size_t place = placeInReport(job.job, surveyed.number, page);
        plates =
            readInksApart(job, rendering, index, place < report.sizes.size() ? report.sizes[place] : PagePixels{});
    }
    if (plates.size() != surveyed.plates.size())
        throw io::Refusal(job.job.name.string() + ": page " + std::to_string(surveyed.number) +
                          ": has other plates each time it is rendered");
    return plates;
}

}  // namespace riders::plates
