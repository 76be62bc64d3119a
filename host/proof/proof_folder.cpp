#include "proof/proof_folder.h"

#include <fstream>
#include <string>

#include "io/refusal.h"
#include "proof/report/report.h"

namespace fs = std::filesystem;

namespace riders::proof {
namespace {

constexpr size_t kMarkWithin = 1024;

bool hasMark(const fs::path &page)
{
    std::ifstream in(page, std::ios::binary);
    std::string head(kMarkWithin, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    return head.find(proofMark()) != std::string::npos;
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

ProofFolder::ProofFolder(const fs::path &place) : place_(io::placeWithoutLinks(place))
{
    try {
        refuseForeign(place_, place);
        folder_.emplace(place_, ".riders-proof-");
        fs::create_directory(path() / kFilmsName);
        fs::create_directory(pictures());
    } catch (const fs::filesystem_error &error) {
        throw io::Refusal(place.string() + ": " + error.code().message());
    }
}

void ProofFolder::finish()
{
    refuseForeign(place_, place_);  // something may have appeared there in the meantime
    folder_->finish();
}

}  // namespace riders::proof
