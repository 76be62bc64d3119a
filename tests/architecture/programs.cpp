#include "architecture/programs.h"

#include <stdlib.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace architecture {

TemporaryFolder::TemporaryFolder() : path_(std::filesystem::temp_directory_path() / "riders-architecture-XXXXXX")
{
    if (!mkdtemp(path_.data()))
        throw std::runtime_error("cannot make " + path_);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string outputOf(const std::string &command)
{
    std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen((command + " 2>&1").c_str(), "r"), pclose);
    if (!pipe)
        throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 65536> part;
    while (size_t count = fread(part.data(), 1, part.size(), pipe.get()))
        output.append(part.data(), count);
    if (pclose(pipe.release()) != 0)
        throw std::runtime_error("failed: " + command + "\n" + output.substr(0, 2000));
    return output;
}

std::string listArgument(const TemporaryFolder &folder, const std::vector<std::string> &files)
{
    std::string path = folder.path() + "/files";
    std::ofstream list(path);
    for (const std::string &file : files)
        list << file << '\n';
    return "@" + path;
}

}  // namespace architecture
