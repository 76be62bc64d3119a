#include "settings/working_copy.h"

#include <utility>

#include "io/bytes.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::settings {
namespace {

// One that cannot be looked at is not taken for one that is missing: choices would go unsaved without a word.
bool isFile(const fs::path &file)
{
    std::error_code failed;
    const fs::file_status status = fs::status(file, failed);
    if (status.type() == fs::file_type::none)
        io::refuseErrno(file, failed.value());
    return fs::is_regular_file(status);
}

}  // namespace

WorkingCopy::WorkingCopy(SavedSettings saved) : saved_(std::move(saved)), folder_(private_.path() / "settings")
{
    fs::create_directory(folder_);
}

std::string WorkingCopy::bytes() const
{
    std::string all;
    for (const std::string &name : saved_.names())
        if (isFile(folder_ / name)) {
            const std::string part = io::contentsOf(folder_ / name);
            all += std::to_string(part.size()) + ' ' + part;
        }
    return all;
}

void WorkingCopy::empty() const
{
    std::error_code failed;
    fs::remove_all(folder_, failed);
    if (!failed)
        fs::create_directory(folder_, failed);
    if (failed)
        io::refuseErrno(folder_, failed.value());
}

void WorkingCopy::prepare()
{
    readable_ = false;
    if (!unsaved_) {
        empty();
        saved_.copyTo(folder_);
    }
    before_ = bytes();
    readable_ = true;
}

void WorkingCopy::keep()
{
    const bool changed = bytes() != before_;
    if (!readable_ || !(unsaved_ || changed))
        return;
    unsaved_ = true;
    try {
        saved_.takeFrom(folder_);
        unsaved_ = false;
    } catch (const io::Refusal &) {
        if (changed)
            throw;
    }
}

// The next call's copy is made anew.
void WorkingCopy::forget()
{
    unsaved_ = false;
}

}  // namespace riders::settings
