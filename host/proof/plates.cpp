#include "proof/plates.h"

#include <algorithm>
#include <memory>
#include <set>

#include "io/refusal.h"
#include "proof/output_folder.h"
#include "proof/pictures.h"
#include "proof/plate_names.h"
#include "proof/rendering.h"
#include "proof/screen_on_plate.h"
#include "proof/spot_inks.h"

namespace fs = std::filesystem;

namespace riders::proof {
namespace {

// What a share's page files may take on the disk before they are looked at.
constexpr double kShareBytes = 1.0e9;

double bytesOf(const SurveyedPage &page, double dpi)
{
    const double pixels = page.width * page.height * dpi * dpi;
    return pixels / 8 * static_cast<double>(page.plates.size());
}

// Deals the pages of a kind out in turn, so that what is slow or large comes to all alike.
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

// A page's plates while they are in work.
struct PageInWork {
    std::vector<BitPlate> plates;  // as in the page's facts
};

class PlateMaker {
public:
    PlateMaker(const PlatesRun &run, io::Workers &workers, Progress &progress)
        : run_(run), workers_(workers), progress_(progress), dpi_(run.request.dpi)
    {
        made_.pages.resize(run.survey.pages.size());
    }

    Plates make()
    {
        progress_.expect(static_cast<int>(made_.pages.size()), inkedPlates());
        spotInks_ = lookAtSpotInks(job_, run_.work, workers_);
        // The slow ones first.
        for (const RenderingWay way :
             {RenderingWay::allPlates, RenderingWay::inksApart, RenderingWay::processPlates})
            for (const std::vector<size_t> &pages : dealt(run_.survey, pagesFor(way), dpi_, run_.cores)) {
                const Rendering share{way, pages, run_.work / ("share-" + std::to_string(shares_++)), dpi_};
                workers_.add([this, share] { render(share); });
            }
        workers_.finish();
        for (PageFacts &page : made_.pages)
            page.warnings = warningsFor(page);
        return std::move(made_);
    }

private:
    int inkedPlates() const
    {
        int count = 0;
        for (const SurveyedPage &page : run_.survey.pages)
            count += static_cast<int>(std::count_if(page.plates.begin(), page.plates.end(),
                                                    [](const auto &plate) { return plate.ink; }));
        return count;
    }

    std::vector<size_t> pagesFor(RenderingWay way) const
    {
        std::vector<size_t> pages;
        for (size_t i = 0; i < run_.survey.pages.size(); ++i) {
            const RenderingWay spots =
                spotInks_.apart.count(i) ? RenderingWay::inksApart : RenderingWay::allPlates;
            if (way == (run_.survey.pages[i].spotInks ? spots : RenderingWay::processPlates))
                pages.push_back(i);
        }
        return pages;
    }

    void render(const Rendering &share)
    {
        const auto report = std::make_shared<InterpreterReport>(renderPages(job_, share));
        report->inks.insert(spotInks_.inks.begin(), spotInks_.inks.end());
        if (share.pages[0] == 0)
            made_.said = report->said;
        for (size_t i = 0; i < share.pages.size(); ++i) {
            progress_.pageRendered();
            workers_.addUrgent([this, i, share, report] {
                const auto inWork = std::make_shared<PageInWork>(PageInWork{readRendered(job_, share, i)});
                const size_t page = share.pages[i];
                startPage(page, screensOf(page, static_cast<int>(i) + 1, *report), *report, inWork);
            });
        }
    }

    // Of PostScript the interpreter tells the screens of all pages, of PDF those of its share.
    AskedScreens screensOf(size_t page, int file, const InterpreterReport &report) const
    {
        const int number = run_.job.kind == JobKind::pdf ? file : run_.survey.pages[page].number;
        const auto index = static_cast<size_t>(number) - 1;
        return index < report.pages.size() ? report.pages[index] : AskedScreens{};
    }

    void startPage(size_t index, const AskedScreens &screens, const InterpreterReport &report,
                   const std::shared_ptr<PageInWork> &inWork)
    {
        const SurveyedPage &surveyed = run_.survey.pages[index];
        PageFacts &page = made_.pages[index];
        const std::string name = "page-" + std::to_string(surveyed.number);
        page.number = surveyed.number;
        page.width = surveyed.width;
        page.height = surveyed.height;
        page.loupe = surveyed.loupe;
        page.picture = std::string(kPicturesName) + "/" + name + ".png";
        std::set<std::string> taken = {"all"};
        for (const SurveyedPlate &plate : surveyed.plates)
            page.plates.push_back(factsOf(plate, inkColour(plate.plate, report.inks),
                                          askedFor(plate.plate, run_.riders, screens, report.atStart)));
        for (size_t i = 0; i < page.plates.size(); ++i) {
            const std::string file = name + "-" + fileNameFor(page.plates[i].name, taken);
            // A plate that has nothing but the annotation makes no film.
            if (!surveyed.plates[i].ink && (run_.riders.annotated || !inWork->plates[i].hasInk()))
                continue;
            page.plates[i].film = std::string(kFilmsName) + "/" + file + ".tif";
            page.plates[i].picture = std::string(kPicturesName) + "/" + file + ".png";
            workers_.addUrgent([this, index, i, inWork] { finishPlate(index, i, inWork->plates[i]); });
        }
        writeRosette(page, *inWork, name);
    }

    static PlateFacts factsOf(const SurveyedPlate &surveyed, Colour ink, const AskedFor &asked)
    {
        PlateFacts plate;
        plate.name = plateNameFrom(surveyed.plate);
        plate.ink = ink;
        plate.tints = surveyed.tints;
        plate.even = surveyed.even;
        plate.evenTint = surveyed.evenInk;
        plate.loupe = surveyed.loupe;
        plate.asked = asked;
        return plate;
    }

    void writeRosette(PageFacts &page, const PageInWork &inWork, const std::string &name)
    {
        std::vector<InkedPlate> inked;
        for (size_t i = 0; i < page.plates.size(); ++i)
            if (!page.plates[i].film.empty())
                inked.push_back({&inWork.plates[i], page.plates[i].ink});
        if (inked.empty())
            return;
        page.rosette = std::string(kPicturesName) + "/" + name + "-all.png";
        writePicture(run_.folder / page.rosette, loupePicture(inked, dpi_, page.loupe), loupePictureDpi(dpi_));
    }

    void finishPlate(size_t pageIndex, size_t plateIndex, const BitPlate &bits)
    {
        PlateFacts &plate = made_.pages[pageIndex].plates[plateIndex];
        writeFilm(run_.folder / plate.film, bits, dpi_);
        const Place &place = plate.loupe.empty() ? made_.pages[pageIndex].loupe : plate.loupe;
        writePicture(run_.folder / plate.picture, loupePicture({{&bits, {0, 0, 0}}}, dpi_, place),
                     loupePictureDpi(dpi_));
        if (plate.tints.tint)
            plate.measured =
                measurePlate(bits, dpi_, plate.even, plate.asked.frequency.value_or(60), plate.asked.shape);
        progress_.plateFinished();
    }

    const PlatesRun &run_;
    io::Workers &workers_;
    Progress &progress_;
    const double dpi_;
    const RenderedJob job_{run_.request, run_.job, run_.survey};
    SpotInks spotInks_;
    int shares_ = 0;
    Plates made_;
};

}  // namespace

Plates makePlates(const PlatesRun &run, io::Workers &workers, Progress &progress)
{
    return PlateMaker(run, workers, progress).make();
}

}  // namespace riders::proof
