#include "plates/files/film_file.h"

#include <string_view>

#include "io/refusal.h"
#include "libtiff/libtiff.h"
#include "plates/files/bit_tiff.h"
#include "plates/files/group4.h"

namespace riders::plates {

using tiff::libtiff;

void writeFilm(const std::filesystem::path &file, const BitPlate &plate, double dpi)
{
    const tiff::File tiff(libtiff().open(file.c_str(), "w"));
    if (!tiff)
        throw io::Refusal(file.string() + ": cannot be written");
    TIFF *out = tiff.get();
    describeBits(out, static_cast<std::uint32_t>(plate.width), static_cast<std::uint32_t>(plate.height), dpi, dpi);
    libtiff().setField(out, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    Group4Encoder encoder(static_cast<std::size_t>(plate.width));
    for (int y = 0; y < plate.height; ++y)
        encoder.row(plate.row(y));
    encoder.end();
    const std::string_view bytes = encoder.bytes();
    if (libtiff().writeRawStrip(out, 0, const_cast<char *>(bytes.data()), static_cast<tmsize_t>(bytes.size())) < 0)
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
    if (!libtiff().flush(out))
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
}

}  // namespace riders::plates
