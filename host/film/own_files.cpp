#include "film/own_files.h"

#include <algorithm>
#include <fstream>
#include <string>

#include "film/forms/tiff_form.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

constexpr std::size_t kHead = 1024, kTail = 1 << 20;

std::string bytesOf(const fs::path &file, std::uintmax_t from, std::size_t count)
{
    std::ifstream in(file, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(from));
    std::string bytes(count, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(0, in.gcount())));
    return bytes;
}

bool isOwnPostscript(const fs::path &file)
{
    const std::string head = bytesOf(file, 0, kHead);
    return head.starts_with("%!PS") && head.find("\n%%Creator: riders\n") != head.npos;
}

// What a PDF says of itself stands before the table at its end.
bool isOwnPdf(const fs::path &file)
{
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error || !bytesOf(file, 0, kHead).starts_with("%PDF-"))
        return false;
    const std::string tail = bytesOf(file, size - std::min<std::uintmax_t>(size, kTail), kTail);
    return tail.find("/Producer (riders)") != tail.npos;
}

}  // namespace

bool isOwnFilm(const fs::path &file)
{
    return isOwnTiff(file) || isOwnPostscript(file) || isOwnPdf(file);
}

void refuseForeign(const fs::path &file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found)
        return;
    if (status.type() == fs::file_type::none)
        io::refuseErrno(file, error.value());
    if (!fs::is_regular_file(status))
        throw io::Refusal(file.string() + ": exists and is no ordinary file; name another place with -o");
    if (!isOwnFilm(file))
        throw io::Refusal(file.string() + ": exists and was not made by riders; name another place with -o, or "
                                          "replace it with --force");
}

}  // namespace riders::film
