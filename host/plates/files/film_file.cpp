#include "plates/files/film_file.h"

#include <tiffio.h>

#include <memory>
#include <string_view>

#include "io/refusal.h"
#include "plates/files/bit_tiff.h"
#include "plates/files/group4.h"

namespace riders::plates {

void writeFilm(const std::filesystem::path &file, const BitPlate &plate, double dpi)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "w"), TIFFClose);
    if (!tiff)
        throw io::Refusal(file.string() + ": cannot be written");
    TIFF *out = tiff.get();
    describeBits(out, static_cast<std::uint32_t>(plate.width), static_cast<std::uint32_t>(plate.height), dpi, dpi);
    TIFFSetField(out, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    Group4Encoder encoder(static_cast<std::size_t>(plate.width));
    for (int y = 0; y < plate.height; ++y)
        encoder.row(plate.row(y));
    encoder.end();
    const std::string_view bytes = encoder.bytes();
    if (TIFFWriteRawStrip(out, 0, const_cast<char *>(bytes.data()), static_cast<tmsize_t>(bytes.size())) < 0)
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
    if (!TIFFFlush(out))
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
}

}  // namespace riders::plates
