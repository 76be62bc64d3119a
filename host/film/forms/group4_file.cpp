#include "film/forms/group4_file.h"

#include <tiffio.h>

#include "io/refusal.h"

namespace riders::film {

Group4Bytes group4Bytes(const std::filesystem::path &file)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), TIFFClose);
    const std::uint64_t *offsets = nullptr, *counts = nullptr;
    if (!tiff || TIFFNumberOfStrips(tiff.get()) != 1 ||
        !TIFFGetField(tiff.get(), TIFFTAG_STRIPOFFSETS, &offsets) ||
        !TIFFGetField(tiff.get(), TIFFTAG_STRIPBYTECOUNTS, &counts))
        throw io::Refusal(file.string() + ": cannot be read again");
    return {offsets[0], counts[0]};
}

}  // namespace riders::film
