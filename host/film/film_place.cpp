#include "film/film_place.h"

#include <unistd.h>

#include "film/film_names.h"
#include "film/forms/no_form.h"
#include "film/forms/pdf_form.h"
#include "film/forms/postscript_form.h"
#include "film/forms/raster_form.h"
#include "film/own_files.h"
#include "io/place.h"
#include "io/refusal.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

// Removed by the next run should this one be killed.
constexpr const char *kHidden = ".riders-film-";

fs::path placeFor(const FilmRequest &request)
{
    if (request.format == FilmFormat::none)
        return {};
    if (!request.output.empty())
        return request.output == kStandardOutput ? fs::path() : request.output;
    return jobTitle(request.job) + "-film" + (isOneFile(request.format) ? extensionOf(request.format) : "");
}

// Beside what is written, so that it takes no room elsewhere.
fs::path folderForWork(const FilmRequest &request, const fs::path &place)
{
    if (request.format == FilmFormat::none && request.look)
        return fs::absolute(io::folderOf(request.look->folder));
    if (place.empty())
        return fs::temp_directory_path();
    return fs::absolute(isOneFile(request.format) ? io::folderOf(place) : place);
}

}  // namespace

const char *extensionOf(FilmFormat format)
{
    switch (format) {
    case FilmFormat::pdf:
        return ".pdf";
    case FilmFormat::postScript:
        return ".ps";
    case FilmFormat::cups:
        return ".ras";
    case FilmFormat::pwg:
        return ".pwg";
    case FilmFormat::tiff:
    case FilmFormat::none:
        break;
    }
    return ".tif";
}

FilmPlace::FilmPlace(const FilmRequest &request) : request_(request), place_(placeFor(request))
{
    if (!isOneFile(request.format))
        makeFolder();
    else if (!place_.empty() && !request.force)
        refuseForeign(place_);
    const fs::path folder = folderForWork(request, place_);
    if (!fs::is_directory(folder))
        throw io::Refusal(place_.string() + ": there is no such folder");
    try {
        work_.emplace(folder, kHidden);
    } catch (...) {
        if (made_)
            rmdir(place_.c_str());
        throw;
    }
}

FilmPlace::~FilmPlace()
{
    work_.reset();
    if (made_)
        rmdir(place_.c_str());
}

void FilmPlace::makeFolder()
{
    if (place_.empty())
        throw io::Refusal("TIFF is a file for each plate: name a folder with -o, or another --format");
    std::error_code error;
    if (fs::is_directory(place_, error))
        return;
    if (fs::exists(fs::symlink_status(place_, error)))
        throw io::Refusal(place_.string() + ": exists and is not a folder; name another with -o");
    io::makeFolders(place_);
    made_ = true;
}

fs::path FilmPlace::fileOf(const std::string &name) const
{
    return isOneFile(request_.format) ? place_ : place_ / name;
}

std::unique_ptr<Form> FilmPlace::makeForm() const
{
    switch (request_.format) {
    case FilmFormat::pdf:
        return std::make_unique<PdfForm>(place_, work());
    case FilmFormat::postScript:
        return std::make_unique<PostscriptForm>(place_, work());
    case FilmFormat::cups:
        return std::make_unique<RasterForm>(RasterKind::cups, place_, work());
    case FilmFormat::pwg:
        return std::make_unique<RasterForm>(RasterKind::pwg, place_, work());
    case FilmFormat::none:
        return std::make_unique<NoForm>();
    case FilmFormat::tiff:
        break;
    }
    return std::make_unique<TiffForm>(request_.compression);
}

}  // namespace riders::film
