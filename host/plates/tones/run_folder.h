// Where one run of the interpreter works.
#pragma once

#include <filesystem>
#include <utility>

namespace riders::plates {

// A folder for one run of the interpreter, empty at first; gone at the end.
class RunFolder {
public:
    explicit RunFolder(std::filesystem::path path) : path_(std::move(path))
    {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~RunFolder()
    {
        std::error_code gone;
        std::filesystem::remove_all(path_, gone);
    }
    RunFolder(const RunFolder &) = delete;
    RunFolder &operator=(const RunFolder &) = delete;

    const std::filesystem::path &path() const { return path_; }

private:
    const std::filesystem::path path_;
};

}  // namespace riders::plates
