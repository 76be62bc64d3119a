#include "plates/survey/survey.h"

#include <algorithm>
#include <mutex>

#include "io/refusal.h"
#include "plates/files/plate_files.h"
#include "plates/files/plate_names.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr double kCountDpi = 10;
// For how many spot inks there is room: few make the survey five times as fast, but more make it begin anew.
constexpr int kRooms[] = {0, 6, kMostSurveyedInks};

struct SeenPlate {
    PlateSize size;
    bool ink = false;
    TintPlate tints;  // where it is kept
    std::unique_ptr<PlateLook> look;
};

SeenPlate readPlateOf(const SurveyRun &run, const fs::path &file)
{
    SeenPlate seen;
    if (!run.look) {
        seen.tints = readTints(file);
        seen.size = {seen.tints.width, seen.tints.height};
        seen.ink = seen.tints.hasInk();
        return seen;
    }
    seen.size = readTintRows(file, [&](const std::uint8_t *tints, const PlateSize &size) {
        if (!seen.look)
            seen.look = run.look(size.width);
        seen.look->row(tints);
        seen.ink = seen.ink || std::any_of(tints, tints + size.width, [](std::uint8_t tint) { return tint != 0; });
    });
    return seen;
}

// Reads the page's files and removes them.
std::vector<SeenPlate> readPage(const SurveyRun &run, const fs::path &folder, int file, SurveyedPage &page)
{
    std::vector<SeenPlate> plates;
    for (const PlateFile &plate : plateFiles(folder, file)) {
        SeenPlate seen = readPlateOf(run, plate.file);
        page.inksKnown += !isProcessPlate(plate.plate);
        fs::remove(plate.file);
        // Leaves out an ink that was only named, here or on a page not asked for.
        if (isProcessPlate(plate.plate) || seen.ink) {
            page.plates.push_back({plate.plate, seen.ink});
            plates.push_back(std::move(seen));
        } else {
            page.blank.push_back(plate.plate);
        }
    }
    return plates;
}

void showPage(const SurveyRun &run, const SurveyedPage &page, std::vector<SeenPlate> &plates,
              const fs::path &composite)
{
    PlateLooks looks;
    std::vector<TintPlate> tints;
    for (SeenPlate &plate : plates) {
        looks.push_back(std::move(plate.look));
        tints.push_back(std::move(plate.tints));
    }
    if (run.look)
        run.pageLooked(page, looks);
    else
        // The interpreter knows what spot inks look like, and shows it in the composite.
        run.pageSeen({page, tints, page.spotInks ? readComposite(composite) : tints, run.dpi});
}

SurveyedPage surveyPage(const SurveyRun &run, const fs::path &folder, int file, int number)
{
    SurveyedPage page;
    page.number = number;
    std::vector<SeenPlate> plates = readPage(run, folder, file, page);
    page.spotInks = page.plates.size() > std::size(kProcessPlates);
    const bool alike = std::all_of(plates.begin(), plates.end(), [&plates](const SeenPlate &plate) {
        return plate.size.width == plates[0].size.width && plate.size.height == plates[0].size.height;
    });
    if (plates.size() < std::size(kProcessPlates) || !alike)
        throw io::Refusal("page " + std::to_string(number) + ": the interpreter wrote no plates");
    page.width = plates[0].size.width / run.dpi;
    page.height = plates[0].size.height / run.dpi;
    const fs::path composite = folder / (std::to_string(file) + ".tif");
    showPage(run, page, plates, composite);
    fs::remove(composite);
    return page;
}

// Hands the pages to the workers as soon as their files are complete.
class PageQueue {
public:
    PageQueue(const SurveyRun &run, fs::path folder, io::Workers &workers)
        : run_(run), folder_(std::move(folder)), workers_(workers)
    {
    }

    ~PageQueue() { workers_.drop(); }
    PageQueue(const PageQueue &) = delete;
    PageQueue &operator=(const PageQueue &) = delete;

    // A file is complete when the next one is there, or at the end.
    void handOver(bool atEnd)
    {
        while (fs::exists(fileOf(next_ + (atEnd ? 0 : 1)))) {
            const int file = next_++;
            const auto asked = static_cast<size_t>(file) <= run_.pages.size();
            const int number = asked ? run_.pages[static_cast<size_t>(file) - 1] : file;
            workers_.add([this, file, number] {
                SurveyedPage page = surveyPage(run_, folder_, file, number);
                std::lock_guard lock(mutex_);
                found_.push_back(std::move(page));
            });
        }
    }

    // To be called once the workers have finished.
    std::vector<SurveyedPage> found()
    {
        std::sort(found_.begin(), found_.end(),
                  [](const SurveyedPage &one, const SurveyedPage &other) { return one.number < other.number; });
        return std::move(found_);
    }

private:
    fs::path fileOf(int number) const { return folder_ / (std::to_string(number) + ".tif"); }

    const SurveyRun &run_;
    const fs::path folder_;
    io::Workers &workers_;
    int next_ = 1;
    std::mutex mutex_;
    std::vector<SurveyedPage> found_;
};

std::string pagesInWords(size_t count)
{
    return std::to_string(count) + (count == 1 ? " page" : " pages");
}

// For PDF the interpreter reports only the pages asked for: then all are run, to count them.
size_t countPages(const SurveyRun &run, const fs::path &folder, const Survey &survey)
{
    if (run.job.kind != JobKind::pdf)
        return survey.report.pages.size();
    return interpret({.job = run.job,
                      .device = PlateDevice::none,
                      .dpi = kCountDpi,
                      .folder = folder,
                      .limits = run.limits})
        .pages.size();
}

// Why there is no page, if the interpreter reported a fault.
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

void refuseMissing(const SurveyRun &run, const fs::path &folder, const Survey &survey)
{
    const std::vector<int> &asked = run.pages;
    const std::string name = run.job.name.string() + ": ";
    if (asked.empty() && survey.pages.empty())
        throw io::Refusal(name + "paints no page" + complaint(survey.report));
    if (survey.pages.size() >= asked.size())
        return;
    const size_t count = countPages(run, folder, survey);
    if (count == 0)
        throw io::Refusal(name + "paints no page" + complaint(survey.report));
    const auto missing =
        std::find_if(asked.begin(), asked.end(), [count](int page) { return static_cast<size_t>(page) > count; });
    if (missing == asked.end())
        throw io::Refusal(name + "page " + std::to_string(asked[survey.pages.size()]) +
                          " is not to be had alone; leave out --pages");
    throw io::Refusal(name + "there is no page " + std::to_string(*missing) + "; the job has " +
                      pagesInWords(count));
}

std::string spotInksInWords(const SurveyedPage &page, size_t inksKnown)
{
    constexpr size_t kMostNamed = 5;
    std::string words;
    size_t inks = 0;
    for (const SurveyedPlate &plate : page.plates)
        if (!isProcessPlate(plate.plate) && ++inks <= kMostNamed)
            words += (words.empty() ? "" : ", ") + plateNameFrom(plate.plate, inksKnown);
    return std::to_string(inks) + " spot inks, " + words + " and others";
}

// With more, the plates would be wrong.
void refuseTooManyInks(const SurveyRun &run, const Survey &survey)
{
    const std::string name = run.job.name.string() + ": ", most = std::to_string(run.mostSpotInks);
    for (const SurveyedPage &page : survey.pages)
        if (page.plates.size() > std::size(kProcessPlates) + static_cast<size_t>(run.mostSpotInks))
            throw io::Refusal(name + "page " + std::to_string(page.number) + ": has " +
                              spotInksInWords(page, survey.inksKnown()) + "; plates can be made of " + most);
    if (survey.report.inksMixed)
        throw io::Refusal(name + "names more than " + std::to_string(kMostSurveyedInks) +
                          " spot inks; plates can be made of " + most);
}

// Where there are more inks, unless there cannot be more room, it ends early, and knows only that.
Survey surveyWithRoomFor(int spotInks, const SurveyRun &run, io::Workers &workers)
{
    const fs::path folder = run.work / "survey";
    fs::remove_all(folder);
    fs::create_directories(folder);
    const bool mostRoom = spotInks == kMostSurveyedInks;
    PageQueue queue(run, folder, workers);
    Survey survey;
    survey.dpi = run.dpi;
    survey.spotRoom = spotInks;
    survey.report = interpret({.job = run.job,
                               .device = PlateDevice::tints,
                               .dpi = run.dpi,
                               .pages = run.pages,
                               .folder = folder,
                               .limits = run.limits,
                               .pageEnded =
                                   [&] {
                                       run.pageEnded();
                                       queue.handOver(false);
                                   },
                               .spotInks = spotInks,
                               .endsWhenInksMix = !mostRoom});
    if (survey.report.inksMixed && !mostRoom)
        return survey;
    queue.handOver(true);
    workers.finish();
    survey.pages = queue.found();
    return survey;
}

}  // namespace

size_t Survey::inksKnown() const
{
    size_t most = 0;
    for (const SurveyedPage &page : pages)
        most = std::max(most, page.inksKnown);
    return most;
}

Survey surveyJob(const SurveyRun &run, io::Workers &workers)
{
    silencePictures();
    Survey survey;
    for (const int room : kRooms) {
        survey = surveyWithRoomFor(room, run, workers);
        if (!survey.report.inksMixed)
            break;
    }
    refuseMissing(run, run.work / "survey", survey);
    refuseTooManyInks(run, survey);
    return survey;
}

}  // namespace riders::plates
