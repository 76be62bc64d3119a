#include "plates/tones/page_boxes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

#include "io/limited_process.h"
#include "io/output.h"
#include "io/refusal.h"
#include "plates/tones/run_folder.h"

namespace fs = std::filesystem;

namespace riders::plates {

// Runs over the job alone, before it is rendered.
extern const std::string_view kBoxes;

namespace {

constexpr double kFarthest = 1e6;  // points

// As PDF has it: any two opposite corners.
TonePage::Box boxFrom(const double *corners)
{
    return {std::min(corners[0], corners[2]), std::min(corners[1], corners[3]), std::max(corners[0], corners[2]),
            std::max(corners[1], corners[3])};
}

TonePage::Box turned(const TonePage::Box &box, double height)
{
    return {height - box.top, box.left, height - box.bottom, box.right};
}

// From the page's own coordinates to those of the page as it is rendered.
TonePage::Box placed(TonePage::Box box, const TonePage::Box &media, double unit, int quarterTurns)
{
    box = {std::max(box.left, media.left), std::max(box.bottom, media.bottom), std::min(box.right, media.right),
           std::min(box.top, media.top)};
    box = {(box.left - media.left) * unit, (box.bottom - media.bottom) * unit, (box.right - media.left) * unit,
           (box.top - media.bottom) * unit};
    double width = (media.right - media.left) * unit, height = (media.top - media.bottom) * unit;
    for (int i = 0; i < quarterTurns; ++i) {
        box = turned(box, height);
        std::swap(width, height);
    }
    return box;
}

fs::path pdfOf(const PreparedJob &job)
{
    return job.kind == JobKind::pdf && !job.files.empty() ? job.files.back() : fs::path();
}

}  // namespace

void takeBoxLine(std::string_view line, int quarterTurns, PageBoxes &boxes)
{
    std::istringstream words{std::string(line)};
    int page = 0;
    std::string name;
    std::array<double, 12> values{};  // the box, the page's, its rotation and unit, and nothing
    words >> page >> name;
    for (double &value : values)
        if (!(words >> value) || std::abs(value) > kFarthest)
            return;
    const double turns = values[8] / 90, unit = values[9];
    if (page < 1 || turns != std::floor(turns) || !(unit > 0))
        return;
    // A page's own rotation is clockwise.
    const int turn = ((quarterTurns - static_cast<int>(turns)) % 4 + 4) % 4;
    const TonePage::Box box = placed(boxFrom(&values[0]), boxFrom(&values[4]), unit, turn);
    if (!(box.left < box.right && box.bottom < box.top))
        return;
    if (name == "TrimBox")
        boxes[page].trim = box;
    else if (name == "BleedBox")
        boxes[page].bleed = box;
}

PageBoxes boxesOf(const TonesRun &run)
{
    const fs::path pdf = pdfOf(run.job);
    PageBoxes boxes;
    if (pdf.empty())
        return boxes;
    const RunFolder own(run.work / "boxes");
    const fs::path &folder = own.path();
    fs::create_directories(folder / "temporary");
    fs::create_symlink(pdf, folder / "job");
    io::writeFile(folder / "boxes.ps", kBoxes);
    std::string pages = "/RidersJob (job) def /RidersPages [";
    for (int page : run.pages)
        pages += " " + std::to_string(page);
    io::writeFile(folder / "pages.ps", pages + "] def\n");
    io::runLimited({.command = {"gs", "-q", "-P-", "-dSAFER", "-dBATCH", "-dNOPROMPT", "-dNODISPLAY",
                                "--permit-file-read=job", "pages.ps", "boxes.ps"},
                    .folder = folder,
                    .temporary = "temporary",
                    .seconds = run.limits.secondsAPage,
                    .megabytes = run.limits.megabytes,
                    .line = [&](std::string_view line) {
                        takeBoxLine(line, run.rotation / 90, boxes);
                        return false;
                    }});
    return boxes;
}

}  // namespace riders::plates
