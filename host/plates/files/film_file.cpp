#include "plates/files/film_file.h"

#include <tiffio.h>

#include <memory>

#include "io/refusal.h"
#include "plates/files/bit_tiff.h"

namespace riders::plates {

void writeFilm(const std::filesystem::path &file, const BitPlate &plate, double dpi)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "w"), TIFFClose);
    if (!tiff)
        throw io::Refusal(file.string() + ": cannot be written");
    TIFF *out = tiff.get();
    describeBits(out, static_cast<std::uint32_t>(plate.width), static_cast<std::uint32_t>(plate.height), dpi, dpi);
    TIFFSetField(out, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    for (int y = 0; y < plate.height; ++y)
        if (TIFFWriteScanline(out, const_cast<std::uint8_t *>(plate.row(y)), static_cast<std::uint32_t>(y)) < 0)
            throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
    if (!TIFFFlush(out))
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
}

}  // namespace riders::plates
