#include "plates/files/bit_tiff.h"

#include <tiffio.h>

namespace riders::plates {

void describeBits(tiff *out, std::uint32_t columns, std::uint32_t rows, double across, double down)
{
    TIFFSetField(out, TIFFTAG_IMAGEWIDTH, columns);
    TIFFSetField(out, TIFFTAG_IMAGELENGTH, rows);
    TIFFSetField(out, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(out, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(out, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(out, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    TIFFSetField(out, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(out, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(out, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(out, TIFFTAG_XRESOLUTION, across);
    TIFFSetField(out, TIFFTAG_YRESOLUTION, down);
    TIFFSetField(out, TIFFTAG_ROWSPERSTRIP, rows);
}

}  // namespace riders::plates
