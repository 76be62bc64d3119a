// Running the build's own programs over many objects.
#pragma once

#include <string>
#include <vector>

namespace architecture {

// A folder that exists for as long as this object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

// What a shell command writes, its errors too. Throws if it fails.
std::string outputOf(const std::string &command);

// The argument by which the build's programs take a list of files, which is
// written into the folder.
std::string listArgument(const TemporaryFolder &folder, const std::vector<std::string> &files);

}  // namespace architecture
