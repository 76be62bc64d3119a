#include "proof/survey.h"

#include <algorithm>
#include <mutex>

#include "io/refusal.h"
#include "proof/pictures.h"
#include "proof/plate_files.h"

namespace fs = std::filesystem;

namespace riders::proof {
namespace {

constexpr double kSurveyDpi = 200;
constexpr double kCountDpi = 10;
constexpr int kLongestPicture = 1700;  // pixels
// A plate is looked at in its page's place if it shows this much there of what it shows in its own.
constexpr double kGoodEnough = 0.25;

SurveyedPlate lookAt(const TintPlate &tints, const std::string &plate)
{
    SurveyedPlate facts;
    facts.plate = plate;
    facts.tints = tintRange(tints, kSurveyDpi);
    facts.ink = std::any_of(tints.ink.begin(), tints.ink.end(), [](std::uint8_t ink) { return ink != 0; });
    if (!facts.ink)
        return facts;
    facts.even = evenTint(tints, kSurveyDpi);
    if (!facts.even.empty()) {
        const int x = static_cast<int>((facts.even.left + facts.even.width / 2) * kSurveyDpi);
        const int y = static_cast<int>((facts.even.top + facts.even.height / 2) * kSurveyDpi);
        facts.evenInk = tints.row(y)[x] / 255.0;
    }
    return facts;
}

// Where the loupe is held: over one place for all plates, and over a plate's own where it shows little there.
void chooseLoupes(SurveyedPage &page, const std::vector<TintPlate> &tints)
{
    std::vector<const TintPlate *> inked;
    for (size_t i = 0; i < tints.size(); ++i)
        if (page.plates[i].ink)
            inked.push_back(&tints[i]);
    page.loupe = tellingPlace(inked, kSurveyDpi, kLoupeInches);
    for (size_t i = 0; i < tints.size(); ++i) {
        if (!page.plates[i].ink)
            continue;
        const Place own = tellingPlace({&tints[i]}, kSurveyDpi, kLoupeInches);
        const bool good = tellingShare(tints[i], kSurveyDpi, page.loupe) >=
                          kGoodEnough * tellingShare(tints[i], kSurveyDpi, own);
        page.plates[i].loupe = good ? page.loupe : own;
    }
}

// The interpreter knows what spot inks look like and tells by the composite.
void writePagePicture(const std::vector<TintPlate> &tints, const fs::path &file)
{
    std::vector<InkedTints> inked;
    for (size_t i = 0; i < std::size(kProcessPlates); ++i)
        inked.push_back({&tints[i], inkColour(kProcessPlates[i], {})});
    const int longest = std::max(tints[0].width, tints[0].height);
    const int step = std::max(2, (longest + kLongestPicture - 1) / kLongestPicture);
    writePicture(file, pagePicture(inked, step), kSurveyDpi / step);
}

// Looks at the page's files and takes them away.
SurveyedPage surveyPage(const fs::path &folder, int file, int number, const fs::path &pictures)
{
    SurveyedPage page;
    page.number = number;
    std::vector<TintPlate> tints;
    for (const PlateFile &plate : plateFiles(folder, file)) {
        tints.push_back(readTints(plate.file));
        page.plates.push_back(lookAt(tints.back(), plate.plate));
        fs::remove(plate.file);
        // An ink that was only named, here or on a page that was left out.
        if (!isProcessPlate(plate.plate) && !page.plates.back().ink) {
            tints.pop_back();
            page.plates.pop_back();
        }
    }
    page.spotInks = page.plates.size() > std::size(kProcessPlates);
    const bool alike = std::all_of(tints.begin(), tints.end(), [&tints](const TintPlate &plate) {
        return plate.width == tints[0].width && plate.height == tints[0].height;
    });
    if (tints.size() < std::size(kProcessPlates) || !alike)
        throw io::Refusal("page " + std::to_string(number) + ": the interpreter wrote no plates");
    page.width = tints[0].width / kSurveyDpi;
    page.height = tints[0].height / kSurveyDpi;
    chooseLoupes(page, tints);
    const fs::path composite = folder / (std::to_string(file) + ".tif");
    writePagePicture(page.spotInks ? readComposite(composite) : tints,
                     pictures / ("page-" + std::to_string(number) + ".png"));
    fs::remove(composite);
    return page;
}

// Hands the pages to the workers as soon as their files are complete.
class PageQueue {
public:
    PageQueue(const std::vector<int> &pages, fs::path folder, fs::path pictures, io::Workers &workers)
        : pages_(pages), folder_(std::move(folder)), pictures_(std::move(pictures)), workers_(workers)
    {
    }

    ~PageQueue() { workers_.drop(); }

    // A file is complete when the next one is there, or at the end.
    void handOver(bool atEnd)
    {
        while (fs::exists(fileOf(next_ + (atEnd ? 0 : 1)))) {
            const int file = next_++;
            const auto asked = static_cast<size_t>(file) <= pages_.size();
            const int number = asked ? pages_[static_cast<size_t>(file) - 1] : file;
            workers_.add([this, file, number] {
                SurveyedPage page = surveyPage(folder_, file, number, pictures_);
                std::lock_guard lock(mutex_);
                found_.push_back(std::move(page));
            });
        }
    }

    // Once the workers have finished.
    std::vector<SurveyedPage> found()
    {
        std::sort(found_.begin(), found_.end(),
                  [](const SurveyedPage &one, const SurveyedPage &other) { return one.number < other.number; });
        return std::move(found_);
    }

private:
    fs::path fileOf(int number) const { return folder_ / (std::to_string(number) + ".tif"); }

    const std::vector<int> &pages_;
    const fs::path folder_, pictures_;
    io::Workers &workers_;
    int next_ = 1;
    std::mutex mutex_;
    std::vector<SurveyedPage> found_;
};

std::string pagesInWords(size_t count)
{
    return std::to_string(count) + (count == 1 ? " page" : " pages");
}

// Of PDF the interpreter tells the pages asked for only: then all are run through.
size_t countPages(const ProofRequest &request, const PreparedJob &job, const fs::path &folder,
                  const Survey &survey)
{
    if (job.kind != JobKind::pdf)
        return survey.report.pages.size();
    return interpret({.job = job,
                      .device = PlateDevice::none,
                      .dpi = kCountDpi,
                      .folder = folder,
                      .secondsAPage = request.secondsAPage,
                      .megabytes = request.megabytes})
        .pages.size();
}

// Why there is no page, where the interpreter has found something amiss.
std::string complaint(const InterpreterReport &report)
{
    for (const std::string &line : report.said) {
        const size_t stars = line.find("****");
        const size_t start = stars == line.npos ? line.npos : line.find_first_not_of("* ", stars);
        if (start != line.npos)
            return "; the interpreter said: " + line.substr(start);
    }
    return {};
}

void refuseMissing(const ProofRequest &request, const PreparedJob &job, const std::vector<int> &asked,
                   const fs::path &folder, const Survey &survey)
{
    const std::string name = job.name.string() + ": ";
    if (asked.empty() && survey.pages.empty())
        throw io::Refusal(name + "paints no page" + complaint(survey.report));
    if (survey.pages.size() >= asked.size())
        return;
    const size_t count = countPages(request, job, folder, survey);
    if (count == 0)
        throw io::Refusal(name + "paints no page" + complaint(survey.report));
    const auto missing =
        std::find_if(asked.begin(), asked.end(), [count](int page) { return static_cast<size_t>(page) > count; });
    if (missing == asked.end())
        throw io::Refusal(name + "page " + std::to_string(asked[survey.pages.size()]) +
                      " is not to be had alone; proof all pages");
    throw io::Refusal(name + "there is no page " + std::to_string(*missing) + "; the job has " + pagesInWords(count));
}

}  // namespace

Survey surveyJob(const ProofRequest &request, const PreparedJob &job, const std::vector<int> &pages,
                 const fs::path &work, const fs::path &pictures, io::Workers &workers, Progress &progress)
{
    const fs::path folder = work / "survey";
    fs::create_directories(folder);
    PageQueue queue(pages, folder, pictures, workers);
    Survey survey;
    survey.report = interpret({.job = job,
                               .device = PlateDevice::tints,
                               .dpi = kSurveyDpi,
                               .pages = pages,
                               .folder = folder,
                               .secondsAPage = request.secondsAPage,
                               .megabytes = request.megabytes,
                               .pageEnded = [&] {
                                   progress.pageRead();
                                   queue.handOver(false);
                               }});
    queue.handOver(true);
    workers.finish();
    survey.pages = queue.found();
    refuseMissing(request, job, pages, folder, survey);
    return survey;
}

}  // namespace riders::proof
