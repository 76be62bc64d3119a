#include "app/last_folder.h"

#include "io/output.h"
#include "io/refusal.h"
#include "toolbox/files.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/standardfile_folder.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

// Empty when there is no such place or it cannot be made.
fs::path keepingFile(bool make)
{
    int16_t volume;
    int32_t folder;
    if (FindFolder(kOnSystemDisk, kPreferencesFolderType, make, &volume, &folder) != noErr)
        return {};
    return toolbox::folders::pathOf(volume, folder) / "Last Folder";
}

// Every path is shorter; what is longer was not written by this program.
constexpr std::size_t kLongest = 4096;

// The file holds the path alone, without a line end: a name may end in one.
// Empty for anything that does not name an existing folder.
fs::path readFolder(const fs::path &file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return {};
    std::string text(kLongest + 1, '\0');
    try {
        text.resize(io::readFully(io::openInput(file), text.data(), text.size()));
    } catch (const io::Refusal &) {
        return {};
    }
    const fs::path folder = text;
    const bool usable = text.size() <= kLongest && text.find('\0') == text.npos && folder.is_absolute();
    return usable && fs::is_directory(folder, error) ? folder : fs::path();
}

void writeFolder(const fs::path &file, const fs::path &folder)
{
    try {
        io::writeFile(file, folder.string());
    } catch (const io::Refusal &) {
        // It is only a convenience, not worth stopping anyone for.
    }
}

}  // namespace

LastFolder::LastFolder()
{
    if (fs::path file = keepingFile(false); !file.empty())
        kept_ = readFolder(file);
    if (!kept_.empty())
        toolbox::setStandardFileFolder(kept_);
}

LastFolder::~LastFolder()
{
    const fs::path used = toolbox::standardFileFolder();
    std::error_code error;
    if (used.empty() || used == kept_ || !fs::is_directory(used, error))
        return;
    if (fs::path file = keepingFile(true); !file.empty())
        writeFolder(file, used);
}

}  // namespace riders::app
