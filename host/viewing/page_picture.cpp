#include "viewing/page_picture.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "io/output.h"
#include "io/limited_process.h"
#include "io/private_folder.h"
#include "io/refusal.h"
#include "plates/interpreter/interpreter.h"
#include "viewing/colour_file.h"
#include "viewing/interpreter_run.h"

namespace fs = std::filesystem;

namespace riders::viewing {

// Writes how many pages the PDF "job" has.
extern const std::string_view kPageCount;

namespace {

constexpr double kDpi = 100;  // more than a window has room for, less than takes long

}  // namespace

PagePicture drawPage(const ViewedJob &job, int mostColumns, int mostRows, io::Beside &unwanted)
{
    const io::PrivateFolder folder;
    const fs::path work = folder.path() / "work";
    fs::create_directory(work);
    const plates::PreparedJob prepared = plates::prepareJob(job.job, job.riders, folder.path());
    plates::interpret({.job = prepared,
                       .device = plates::PlateDevice::colours,
                       .dpi = kDpi,
                       .pages = {job.page},
                       .folder = work,
                       .limits = kLimits,
                       .endsAfterPages = true,
                       .beside = &unwanted});
    ColourFile file(pageFile(work, "ppm", job));
    PagePicture page{{}, file.columns() / kDpi, file.rows() / kDpi};
    const double shrink = std::max(
        {1.0, static_cast<double>(file.columns()) / mostColumns, static_cast<double>(file.rows()) / mostRows});
    page.picture = file.picture(std::clamp(static_cast<int>(std::lround(file.columns() / shrink)), 1, mostColumns),
                                std::clamp(static_cast<int>(std::lround(file.rows() / shrink)), 1, mostRows));
    return page;
}

int countPages(const fs::path &job, io::Beside &unwanted)
{
    const plates::JobKind kind = plates::kindOfJob(job);
    if (kind != plates::JobKind::pdf)
        return kind == plates::JobKind::eps ? 1 : 0;
    const io::PrivateFolder folder;
    fs::create_directory(folder.path() / "temporary");
    fs::create_symlink(fs::absolute(job), folder.path() / "job");
    io::writeFile(folder.path() / "pages.ps", kPageCount);
    int pages = 0;
    io::runLimited({.command = {"gs", "-q", "-P-", "-dSAFER", "-dBATCH", "-dNOPROMPT", "-dNODISPLAY",
                                "--permit-file-read=job", "pages.ps"},
                    .folder = folder.path(),
                    .temporary = "temporary",
                    .seconds = kLimits.secondsAPage,
                    .megabytes = kLimits.megabytes,
                    .line =
                        [&](std::string_view line) {
                            std::from_chars(line.data(), line.data() + line.size(), pages);
                            return false;
                        },
                    .beside = &unwanted});
    return pages;
}

}  // namespace riders::viewing
