#include "proof/output_folder.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::proof {
namespace {

constexpr size_t kMarkWithin = 1024;

bool hasMark(const fs::path &page)
{
    std::ifstream in(page, std::ios::binary);
    std::string head(kMarkWithin, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    return head.find(kProofMark) != std::string::npos;
}

bool holdsOnly(const fs::path &folder, const std::string &extension)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        const fs::path name = entry.path().filename();
        if (!entry.is_regular_file() || entry.is_symlink() || !name.string().starts_with("page-") ||
            name.extension() != extension)
            return false;
    }
    return true;
}

// The place without links, dots and a slash at the end, so that what is moved is the folder itself.
fs::path realPlace(const fs::path &place)
{
    std::error_code error;
    fs::path real = fs::weakly_canonical(fs::absolute(place), error);
    if (error)
        throw io::Refusal(place.string() + ": " + error.message());
    return real.has_filename() ? real : real.parent_path();
}

void refuseForeign(const fs::path &place, const fs::path &shown)
{
    if (!fs::exists(place))
        return;
    if (!fs::is_directory(place))
        throw io::Refusal(shown.string() + ": is there and is no folder; name another with -o");
    if (!fs::is_empty(place) && !isProofFolder(place))
        throw io::Refusal(shown.string() + ": is there and holds files that are not an earlier proof's; "
                                       "name another folder with -o");
}

fs::path newFolderIn(const fs::path &parent)
{
    std::string pattern = parent / ".riders-proof-XXXXXX";
    if (!mkdtemp(pattern.data()))
        io::refuseErrno(parent, errno);
    return pattern;
}

mode_t usualMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0777 & ~mask;
}

}  // namespace

bool isProofFolder(const fs::path &folder)
{
    std::error_code error;
    if (!fs::is_directory(folder, error) || !hasMark(folder / kPageName))
        return false;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        const fs::path name = entry.path().filename();
        if (entry.is_symlink() || (name != kPageName && name != kFilmsName && name != kPicturesName))
            return false;
        if (entry.is_directory() && !holdsOnly(entry.path(), name == kFilmsName ? ".tif" : ".png"))
            return false;
    }
    return true;
}

OutputFolder::OutputFolder(const fs::path &place) : place_(realPlace(place))
{
    try {
        refuseForeign(place_, place);
        outer_ = newFolderIn(place_.parent_path());
        proof_ = outer_ / "proof";
        work_ = outer_ / "work";
        fs::create_directories(proof_ / kFilmsName);
        fs::create_directories(proof_ / kPicturesName);
        fs::create_directories(work_);
    } catch (const fs::filesystem_error &error) {
        std::error_code ignored;
        if (!outer_.empty())
            fs::remove_all(outer_, ignored);
        throw io::Refusal(place.string() + ": " + error.code().message());
    }
}

OutputFolder::~OutputFolder()
{
    std::error_code ignored;
    fs::remove_all(outer_, ignored);
}

void OutputFolder::finish()
{
    const mode_t mode = usualMode();
    for (const fs::path &folder : {proof_, proof_ / kFilmsName, proof_ / kPicturesName})
        chmod(folder.c_str(), mode);
    refuseForeign(place_, place_);  // it may have come about meanwhile
    // Exchanged at one blow; the earlier one then goes with what is taken away.
    if (renameat2(AT_FDCWD, proof_.c_str(), AT_FDCWD, place_.c_str(), RENAME_EXCHANGE) == 0)
        return;
    // Not there yet, or a disk that cannot exchange.
    const fs::path old = outer_ / "old";
    const bool stoodAside = rename(place_.c_str(), old.c_str()) == 0;
    if (rename(proof_.c_str(), place_.c_str()) == 0)
        return;
    const int error = errno;
    if (stoodAside)
        rename(old.c_str(), place_.c_str());
    io::refuseErrno(place_, error);
}

}  // namespace riders::proof
