#include "screens/data_folder.h"

#include <system_error>

namespace riders::screens {

std::filesystem::path dataFolder(const std::string &name)
{
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::filesystem::path installed = program.parent_path() / "share" / "riders" / name;
    std::error_code ignored;
    return std::filesystem::is_directory(installed, ignored) ? installed : program / name;
}

}  // namespace riders::screens
