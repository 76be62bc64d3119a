#include "film/forms/raster_form.h"

#include <cmath>
#include <vector>

#include "film/forms/read_file.h"
#include "io/refusal.h"
#include "libcups/libcups.h"

namespace fs = std::filesystem;

namespace riders::film {

namespace {

using cups::libcups;

constexpr std::uint64_t kSyncBytes = 4;  // at the beginning of a file; pages follow

unsigned wholeDpi(double dpi)
{
    if (dpi != std::floor(dpi))
        throw io::Refusal("rasters for printers have a whole number of pixels per inch");
    return static_cast<unsigned>(dpi);
}

void setSize(cups_page_header2_t &header, const PlateSheet &sheet)
{
    header.cupsWidth = static_cast<unsigned>(sheet.columns);
    header.cupsHeight = static_cast<unsigned>(sheet.rows);
    header.cupsBytesPerLine = static_cast<unsigned>((sheet.columns + 7) / 8);
    const double points[] = {double(sheet.columns) * 72 / sheet.resolution.across,
                             double(sheet.rows) * 72 / sheet.resolution.down};
    for (int i = 0; i < 2; ++i) {
        header.PageSize[i] = header.ImagingBoundingBox[i + 2] = static_cast<unsigned>(std::lround(points[i]));
        header.cupsPageSize[i] = header.cupsImagingBBox[i + 2] = static_cast<float>(points[i]);
    }
}

cups_page_header2_t headerFor(const PlateSheet &sheet, RasterKind kind)
{
    const unsigned across = wholeDpi(sheet.resolution.across), down = wholeDpi(sheet.resolution.down);
    cups_page_header2_t header{};
    if (kind == RasterKind::pwg) {
        constexpr double unit = 2540;  // to the inch, in PWG's sizes
        pwg_media_t *media =
            libcups().mediaForSize(static_cast<int>(std::lround(double(sheet.columns) / across * unit)),
                                   static_cast<int>(std::lround(double(sheet.rows) / down * unit)));
        if (!media || !libcups().rasterInitPwgHeader(&header, media, "black_1", static_cast<int>(across),
                                                     static_cast<int>(down), "one-sided", "normal"))
            throw io::Refusal("a film of this size and resolution cannot be PWG raster");
    }
    header.HWResolution[0] = across;
    header.HWResolution[1] = down;
    header.NumCopies = 1;
    header.cupsBitsPerColor = header.cupsBitsPerPixel = header.cupsNumColors = 1;
    header.cupsColorOrder = CUPS_ORDER_CHUNKED;
    header.cupsColorSpace = CUPS_CSPACE_K;
    setSize(header, sheet);
    return header;
}

class RasterPlate : public PlateWriter {
public:
    RasterPlate(const PlateSheet &sheet, RasterKind kind)
        : output_(sheet.file), bytes_(static_cast<unsigned>((sheet.columns + 7) / 8)), line_(bytes_),
          raster_(libcups().rasterOpen(output_.file().descriptor(), kind == RasterKind::pwg
                                                                        ? CUPS_RASTER_WRITE_PWG
                                                                        : CUPS_RASTER_WRITE_COMPRESSED),
                  libcups().rasterClose)
    {
        cups_page_header2_t header = headerFor(sheet, kind);
        if (!raster_ || !libcups().rasterWriteHeader(raster_.get(), &header))
            refuse();
    }

    void row(const std::uint8_t *bits) override
    {
        line_.assign(bits, bits + bytes_);  // which the library may write to
        if (libcups().rasterWritePixels(raster_.get(), line_.data(), bytes_) != bytes_)
            refuse();
    }

    void end() override
    {
        raster_.reset();
        output_.finish();
    }

private:
    [[noreturn]] void refuse() const { throw io::Refusal(output_.file().name() + ": cannot be written"); }

    io::Output output_;
    const unsigned bytes_;
    std::vector<unsigned char> line_;
    std::unique_ptr<cups_raster_t, decltype(&::cupsRasterClose)> raster_;
};

}  // namespace

std::unique_ptr<PlateWriter> rasterFile(const PlateSheet &sheet, RasterKind kind)
{
    return std::make_unique<RasterPlate>(sheet, kind);
}

RasterForm::RasterForm(RasterKind kind, const fs::path &file, const fs::path &work)
    : OneFileForm(file, work), kind_(kind)
{
    libcups();
}

std::unique_ptr<PlateWriter> RasterForm::spool(const PlateSheet &sheet)
{
    return rasterFile(sheet, kind_);
}

void RasterForm::add(const PlateSheet &sheet)
{
    const std::uint64_t skipped = begun_ ? kSyncBytes : 0;
    begun_ = true;
    readFrom(sheet.file, skipped, [this](std::string_view piece) { io::writeAll(out(), piece); });
}

}  // namespace riders::film
