#include "printer/formats.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace riders::printer {

bool isTaken(const std::string &format)
{
    const auto isIt = [&](const char *known) { return format == known; };
    return std::any_of(std::begin(kFormats), std::end(kFormats), isIt) || isIt("image/jpeg") || isIt("image/png");
}

bool mayBeTaken(const std::string &format)
{
    return isTaken(format) || format == "application/octet-stream" || format == "image/pwg-raster" ||
           format == "image/urf";
}

const char *formatOf(const unsigned char *bytes, std::size_t size, void *)
{
    constexpr unsigned char kPreview[] = {0xC5, 0xD0, 0xD3, 0xC6};
    return size > sizeof kPreview && std::memcmp(bytes, kPreview, sizeof kPreview) == 0 ? "image/x-eps" : nullptr;
}

}  // namespace riders::printer
