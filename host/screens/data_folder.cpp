#include "screens/data_folder.h"

#include <system_error>

namespace riders::screens {

std::filesystem::path dataFolder(const std::string &name)
{
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::error_code ignored;
    if (std::filesystem::is_directory(program / name, ignored))
        return program / name;
    return (program / RIDERS_DATA_FROM_PROGRAM / name).lexically_normal();
}

}  // namespace riders::screens
