#include "proof/plates.h"

#include <algorithm>
#include <memory>
#include <set>

#include "apply/refusal.h"
#include "proof/output_folder.h"
#include "proof/pictures.h"
#include "proof/plate_names.h"
#include "proof/process_plates.h"
#include "proof/screen_on_plate.h"

namespace fs = std::filesystem;

namespace riders {
namespace {

// What a share's page files may take on the disk before they are looked at.
constexpr double kShareBytes = 1.0e9;

// Pages that one interpreter renders, on one kind of device.
struct Share {
    PlateDevice device;
    std::vector<size_t> pages;  // indices into the survey
};

double bytesOf(const SurveyedPage &page, double dpi)
{
    const double pixels = page.width * page.height * dpi * dpi;
    return pixels / 8 * static_cast<double>(page.plates.size());
}

// Deals the pages of a kind out in turn, so that what is slow or large comes to all alike.
void addShares(std::vector<Share> &shares, const Survey &survey, bool spotInks, double dpi, int cores)
{
    std::vector<size_t> pages;
    double bytes = 0;
    for (size_t i = 0; i < survey.pages.size(); ++i)
        if (survey.pages[i].spotInks == spotInks) {
            pages.push_back(i);
            bytes += bytesOf(survey.pages[i], dpi);
        }
    const size_t least = static_cast<size_t>(bytes / kShareBytes) + 1;
    const size_t count = std::min(pages.size(), std::max(least, static_cast<size_t>(cores)));
    const size_t first = shares.size();
    shares.resize(first + count, {spotInks ? PlateDevice::allPlates : PlateDevice::processPlates, {}});
    for (size_t i = 0; i < pages.size(); ++i)
        shares[first + i % count].pages.push_back(pages[i]);
}

// A page's plates while they are in work.
struct PageInWork {
    std::vector<BitPlate> plates;  // as in the page's facts
};

class PlateMaker {
public:
    PlateMaker(const PlatesRun &run, Workers &workers, Progress &progress)
        : run_(run), workers_(workers), progress_(progress), dpi_(run.request.dpi)
    {
        made_.pages.resize(run.survey.pages.size());
    }

    Plates make()
    {
        std::vector<Share> shares;
        for (bool spotInks : {true, false})  // the slow ones first
            addShares(shares, run_.survey, spotInks, dpi_, run_.cores);
        progress_.expect(static_cast<int>(made_.pages.size()), inkedPlates());
        for (size_t i = 0; i < shares.size(); ++i)
            workers_.add(
                [this, i, share = shares[i]] { render(share, run_.work / ("share-" + std::to_string(i))); });
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

    void render(const Share &share, const fs::path &folder)
    {
        fs::create_directories(folder);
        std::vector<int> numbers;
        for (size_t page : share.pages)
            numbers.push_back(run_.survey.pages[page].number);
        const auto report =
            std::make_shared<InterpreterReport>(interpret({.job = run_.job,
                                                           .device = share.device,
                                                           .dpi = dpi_,
                                                           .pages = numbers,
                                                           .folder = folder,
                                                           .secondsAPage = run_.request.secondsAPage,
                                                           .megabytes = run_.request.megabytes}));
        if (share.pages[0] == 0)
            made_.said = report->said;
        for (size_t i = 0; i < share.pages.size(); ++i) {
            const size_t page = share.pages[i];
            const int file = static_cast<int>(i) + 1;
            progress_.pageRendered();
            workers_.addUrgent([this, page, file, folder, report, device = share.device] {
                startPage(page, screensOf(page, file, *report), *report, readPage(page, file, folder, device));
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

    std::shared_ptr<PageInWork> readPage(size_t index, int file, const fs::path &folder, PlateDevice device) const
    {
        const SurveyedPage &page = run_.survey.pages[index];
        const auto inWork = std::make_shared<PageInWork>();
        if (device == PlateDevice::processPlates) {
            const fs::path pcx = folder / (std::to_string(file) + ".pcx");
            inWork->plates =
                readProcessPlates(pcx, static_cast<int>(page.width * dpi_), static_cast<int>(page.height * dpi_));
            fs::remove(pcx);
        } else {
            // Others may be there as well, named on pages of other shares and empty.
            const std::vector<PlateFile> files = plateFiles(folder, file);
            for (const SurveyedPlate &wanted : page.plates)
                for (const PlateFile &plate : files)
                    if (plate.plate == wanted.plate)
                        inWork->plates.push_back(readPlate(plate.file));
            for (const PlateFile &plate : files)
                fs::remove(plate.file);
        }
        if (inWork->plates.size() != page.plates.size())
            throw Refusal(run_.job.name.string() + ": page " + std::to_string(page.number) +
                          ": has other plates each time it is rendered");
        return inWork;
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
            plate.measured = measurePlate(bits, dpi_, plate.even, plate.asked.frequency.value_or(60));
        progress_.plateFinished();
    }

    const PlatesRun &run_;
    Workers &workers_;
    Progress &progress_;
    const double dpi_;
    Plates made_;
};

}  // namespace

Plates makePlates(const PlatesRun &run, Workers &workers, Progress &progress)
{
    return PlateMaker(run, workers, progress).make();
}

}  // namespace riders
