#include "film/film_folder.h"

#include <unistd.h>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

// Removed by the next run should this one be killed.
constexpr const char *kHidden = ".riders-film-";

// True where it was not there.
bool makeFolder(const fs::path &place)
{
    std::error_code error;
    if (fs::is_directory(place, error))
        return false;
    if (fs::exists(fs::symlink_status(place, error)))
        throw io::Refusal(place.string() + ": exists and is not a folder; name another with -o");
    const bool made = fs::create_directories(place, error);
    if (error)
        throw io::Refusal(place.string() + ": " + error.message());
    return made;
}

}  // namespace

FilmFolder::FilmFolder(const fs::path &place) : place_(place), made_(makeFolder(place))
{
    try {
        work_.emplace(fs::absolute(place_), kHidden);
    } catch (...) {
        if (made_)
            rmdir(place_.c_str());
        throw;
    }
}

FilmFolder::~FilmFolder()
{
    work_.reset();
    if (made_)
        rmdir(place_.c_str());
}

}  // namespace riders::film
