#include "film/own_files.h"

#include "film/forms/tiff_form.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::film {

void refuseForeign(const fs::path &file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found)
        return;
    if (!fs::is_regular_file(status))
        throw io::Refusal(file.string() + ": exists and is no ordinary file; name another folder with -o");
    if (!isOwnTiff(file))
        throw io::Refusal(file.string() + ": exists and was not made by riders; name another folder with -o, or "
                                          "replace it with --force");
}

}  // namespace riders::film
