#include "plates/files/bit_tiff.h"

#include "libtiff/libtiff.h"

namespace riders::plates {

using tiff::libtiff;

void describeBits(TIFF *out, std::uint32_t columns, std::uint32_t rows, double across, double down)
{
    libtiff().setField(out, TIFFTAG_IMAGEWIDTH, columns);
    libtiff().setField(out, TIFFTAG_IMAGELENGTH, rows);
    libtiff().setField(out, TIFFTAG_BITSPERSAMPLE, 1);
    libtiff().setField(out, TIFFTAG_SAMPLESPERPIXEL, 1);
    libtiff().setField(out, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    libtiff().setField(out, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    libtiff().setField(out, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    libtiff().setField(out, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    libtiff().setField(out, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    libtiff().setField(out, TIFFTAG_XRESOLUTION, across);
    libtiff().setField(out, TIFFTAG_YRESOLUTION, down);
    libtiff().setField(out, TIFFTAG_ROWSPERSTRIP, rows);
}

}  // namespace riders::plates
