// Where films go, and where they are worked on.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "film/forms/plate_writer.h"
#include "film/request.h"
#include "io/private_folder.h"

namespace riders::film {

// A folder for forms with a file for each plate, else a file, or standard output.
class FilmPlace {
public:
    // Makes the folder where it is missing. Throws Refusal, also where a file is there that is not ours and may
    // not be replaced.
    explicit FilmPlace(const FilmRequest &request);
    // Removes the folder where it was made here and nothing is in it.
    ~FilmPlace();
    FilmPlace(const FilmPlace &) = delete;
    FilmPlace &operator=(const FilmPlace &) = delete;

    // Of a plate, by the name of its file: that file, or the one with all plates.
    std::filesystem::path fileOf(const std::string &name) const;
    // For temporary files; gone at the end. Absolute.
    const std::filesystem::path &work() const { return work_->path(); }
    // The form that writes there. Throws Refusal.
    std::unique_ptr<Form> makeForm() const;

private:
    void makeFolder();

    const FilmRequest &request_;
    const std::filesystem::path place_;  // empty for standard output
    bool made_ = false;
    std::optional<io::PrivateFolder> work_;
};

// What the names of files in that format end in.
const char *extensionOf(FilmFormat format);

}  // namespace riders::film
