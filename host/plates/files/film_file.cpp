#include "plates/files/film_file.h"

#include <tiffio.h>

#include <memory>

#include "io/refusal.h"

namespace riders::plates {

void writeFilm(const std::filesystem::path &file, const BitPlate &plate, double dpi)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "w"), TIFFClose);
    if (!tiff)
        throw io::Refusal(file.string() + ": cannot be written");
    TIFF *out = tiff.get();
    TIFFSetField(out, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(plate.width));
    TIFFSetField(out, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(plate.height));
    TIFFSetField(out, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(out, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(out, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(out, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    TIFFSetField(out, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    TIFFSetField(out, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(out, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(out, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(out, TIFFTAG_XRESOLUTION, dpi);
    TIFFSetField(out, TIFFTAG_YRESOLUTION, dpi);
    TIFFSetField(out, TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(plate.height));
    for (int y = 0; y < plate.height; ++y)
        if (TIFFWriteScanline(out, const_cast<std::uint8_t *>(plate.row(y)), static_cast<std::uint32_t>(y)) < 0)
            throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
    if (!TIFFFlush(out))
        throw io::Refusal(file.string() + ": cannot be written; is the disk full?");
}

}  // namespace riders::plates
