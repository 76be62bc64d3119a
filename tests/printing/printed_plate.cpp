#include "printing/printed_plate.h"

#include <cups/raster.h>
#include <tiffio.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "io/bytes.h"
#include "libcups/libcups.h"

namespace fs = std::filesystem;

namespace printing_tests {
namespace {

using riders::cups::libcups;

void set(BitPlate &plate, long x, long y)
{
    plate.row(static_cast<int>(y))[x / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
}

}  // namespace

BitPlate readFilm(const fs::path &file)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), TIFFClose);
    if (!tiff)
        throw std::runtime_error(file.string() + " is no TIFF");
    std::uint32_t width = 0, height = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    BitPlate plate(static_cast<int>(width), static_cast<int>(height));
    for (int y = 0; y < plate.height; ++y)
        if (TIFFReadScanline(tiff.get(), plate.row(y), static_cast<std::uint32_t>(y)) != 1)
            throw std::runtime_error(file.string() + " cannot be read");
    return plate;
}

BitPlate readBitmap(const std::string &bytes)
{
    std::istringstream in(bytes);
    std::string magic;
    int width = 0, height = 0;
    in >> magic >> width >> height;
    BitPlate plate(width, height);
    if (magic != "P4" || bytes.size() != static_cast<std::size_t>(in.tellg()) + 1 + plate.bits.size())
        throw std::runtime_error("no bitmap");
    std::copy(bytes.end() - static_cast<std::ptrdiff_t>(plate.bits.size()), bytes.end(),
              reinterpret_cast<char *>(plate.bits.data()));
    return plate;
}

std::vector<BitPlate> readPwg(const fs::path &path)
{
    const riders::io::OpenFile file = riders::io::openOrdinaryFile(path);
    const std::unique_ptr<cups_raster_t, decltype(&::cupsRasterClose)> raster(
        libcups().rasterOpen(file.descriptor(), CUPS_RASTER_READ), libcups().rasterClose);
    std::vector<BitPlate> plates;
    cups_page_header2_t header;
    while (raster && libcups().rasterReadHeader(raster.get(), &header)) {
        if (header.cupsBitsPerPixel != 1 || header.cupsColorSpace != CUPS_CSPACE_K)
            throw std::runtime_error("not black and white");
        BitPlate &plate =
            plates.emplace_back(static_cast<int>(header.cupsWidth), static_cast<int>(header.cupsHeight));
        for (int y = 0; y < plate.height; ++y)
            libcups().rasterReadPixels(raster.get(), plate.row(y), header.cupsBytesPerLine);
    }
    return plates;
}

BitPlate pixelsOf(const escp2::Page &page, const riders::screening::Resolution &dpi)
{
    const auto across = static_cast<std::int64_t>(escp2::kUnitsPerInch / dpi.across),
               down = static_cast<std::int64_t>(escp2::kUnitsPerInch / dpi.down);
    std::int64_t right = 0, bottom = 0;
    for (const escp2::Droplet &droplet : page) {
        if (droplet.x < 0 || droplet.y < 0 || droplet.x % across != 0 || droplet.y % down != 0)
            throw std::runtime_error("a droplet falls beside the pixels");
        right = std::max(right, droplet.x / across);
        bottom = std::max(bottom, droplet.y / down);
    }
    BitPlate plate(static_cast<int>(right + 1), static_cast<int>(bottom + 1));
    for (const escp2::Droplet &droplet : page) {
        const std::int64_t x = droplet.x / across, y = droplet.y / down;
        if (plate.at(static_cast<int>(x), static_cast<int>(y)))
            throw std::runtime_error("two droplets fall on one pixel");
        set(plate, x, y);
    }
    return plate;
}

Ink inkOf(const BitPlate &plate)
{
    Ink ink{plate.width, plate.height, -1, -1};
    for (int y = 0; y < plate.height; ++y)
        for (int x = 0; x < plate.width; ++x)
            if (plate.at(x, y)) {
                ink.left = std::min(ink.left, x);
                ink.right = std::max(ink.right, x);
                ink.top = std::min(ink.top, y);
                ink.bottom = std::max(ink.bottom, y);
            }
    return ink;
}

long differentPixels(const BitPlate &one, const BitPlate &other)
{
    const Ink first = inkOf(one), second = inkOf(other);
    if (first.right < 0 || first.columns() != second.columns() || first.rows() != second.rows())
        return -1;
    long different = 0;
    for (int y = 0; y < first.rows(); ++y)
        for (int x = 0; x < first.columns(); ++x)
            different += one.at(first.left + x, first.top + y) != other.at(second.left + x, second.top + y);
    return different;
}

}  // namespace printing_tests
