#include "looking/look_folder.h"

#include <fstream>
#include <iterator>
#include <string>

#include "io/bytes.h"
#include "io/refusal.h"
#include "looking/loupe/loupe_page.h"
#include "looking/report/report.h"
#include "looking/tiles/tile_on_demand.h"

namespace fs = std::filesystem;

namespace riders::looking {
namespace {

constexpr size_t kMarkWithin = 1024;
constexpr size_t kLongestPage = size_t(256) << 20;

// The page of a proof; empty for any other.
std::string proofPage(const fs::path &page)
{
    std::ifstream in(page, std::ios::binary);
    std::string text(kMarkWithin, '\0');
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(in.gcount()));
    std::error_code error;
    if (text.find(proofMark()) == std::string::npos || fs::file_size(page, error) > kLongestPage || error)
        return {};
    return text.append(std::istreambuf_iterator<char>(in), {});
}

// Whether everything in the folder is an ordinary file to which the page refers, not written to since the page:
// that was the last. A film that somebody has retouched, or put in another's place, is more than a proof.
bool holdsOnlyWhatIsShown(const fs::path &folder, const std::string &page, fs::file_time_type written)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        const std::string name = folder.filename() / entry.path().filename();
        if (!entry.is_regular_file() || entry.is_symlink() || entry.last_write_time() > written ||
            page.find('"' + name + '"') == std::string::npos)
            return false;
    }
    return true;
}

bool isPage(const fs::path &name)
{
    return name == kPageName || name == kLoupeName;
}

bool isKnown(const fs::path &name)
{
    return isPage(name) || name == kFilmsName || name == kPicturesName || name == kTilesName;
}

bool isNumbers(const std::string &name, const std::string &between)
{
    return !name.empty() && name.find_first_not_of("0123456789" + between) == name.npos;
}

// Whether it holds nothing but the tiles of plates that the page which zooms knows.
bool holdsOnlyTiles(const fs::path &folder, fs::file_time_type written)
{
    if (!fs::is_regular_file(folder.parent_path() / kLoupeName))
        return fs::is_empty(folder);
    const std::string loupe = io::contentsOf(folder.parent_path() / kLoupeName);
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
        const fs::path name = entry->path().filename();
        const bool known = entry.depth() == 0   ? loupe.find(folderInLoupe(name)) != loupe.npos
                           : entry.depth() == 1 ? isNumbers(name, "") || name == kKeptPlate
                                                : isNumbers(name.stem(), "-") && name.extension() == ".png";
        const bool asItShould = entry.depth() < 2 && name != kKeptPlate
                                    ? entry->is_directory()
                                    : entry->is_regular_file() && entry->last_write_time() <= written;
        if (entry->is_symlink() || !known || !asItShould)
            return false;
    }
    return true;
}

void refuseForeign(const fs::path &place, const fs::path &shown)
{
    if (!fs::exists(place))
        return;
    if (!fs::is_directory(place))
        throw io::Refusal(shown.string() + ": exists and is not a folder; name another with -o");
    if (!fs::is_empty(place) && !isLookFolder(place))
        throw io::Refusal(shown.string() + ": exists and holds files that are not an earlier proof's, "
                                           "or changed since; name another folder with -o");
}

}  // namespace

bool isLookFolder(const fs::path &folder)
{
    std::error_code error;
    if (!fs::is_directory(folder, error) || !fs::is_regular_file(folder / kPageName, error))
        return false;
    const std::string page = proofPage(folder / kPageName);
    if (page.empty())
        return false;
    const fs::file_time_type written = fs::last_write_time(folder / kPageName);
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        const fs::path name = entry.path().filename();
        if (entry.is_symlink() || !isKnown(name) || entry.is_directory() == isPage(name) ||
            (name == kLoupeName && (entry.last_write_time() > written || page.find(kLoupeName) == page.npos)))
            return false;
        if (entry.is_directory() && !(name == kTilesName ? holdsOnlyTiles(entry.path(), written)
                                                         : holdsOnlyWhatIsShown(entry.path(), page, written)))
            return false;
    }
    return true;
}

LookFolder::LookFolder(const fs::path &place, Holds holds) : place_(io::placeWithoutLinks(place))
{
    try {
        refuseForeign(place_, place);
        folder_.emplace(place_, ".riders-proof-");
        if (holds == Holds::picturesAndFilms)
            fs::create_directory(path() / kFilmsName);
        fs::create_directory(pictures());
    } catch (const fs::filesystem_error &error) {
        throw io::Refusal(place.string() + ": " + error.code().message());
    }
}

void LookFolder::makeRoomForTiles() const
{
    std::error_code error;
    fs::create_directory(path() / kTilesName, error);
    if (error)
        io::refuseErrno(path() / kTilesName, error.value());
}

void LookFolder::writePages(const LookFacts &facts) const
{
    if (!facts.loupe.empty())
        writeLoupe(path() / kLoupeName, facts, {std::string(kTilesName) + "/", kPageName});
    writeReport(page(), facts);
}

void LookFolder::finish()
{
    // Something may have appeared there in the meantime.
    folder_->finish([this] { refuseForeign(place_, place_); });
}

}  // namespace riders::looking
