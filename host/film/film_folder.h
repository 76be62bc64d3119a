// The folder that films are made in.
#pragma once

#include <filesystem>
#include <optional>

#include "io/private_folder.h"

namespace riders::film {

class FilmFolder {
public:
    // Makes it where it is missing. Throws Refusal.
    explicit FilmFolder(const std::filesystem::path &place);
    // Removes it where it was made here and nothing is in it.
    ~FilmFolder();
    FilmFolder(const FilmFolder &) = delete;
    FilmFolder &operator=(const FilmFolder &) = delete;

    const std::filesystem::path &path() const { return place_; }
    // For temporary files; gone at the end.
    const std::filesystem::path &work() const { return work_->path(); }

private:
    const std::filesystem::path place_;
    bool made_ = false;
    std::optional<io::PrivateFolder> work_;
};

}  // namespace riders::film
