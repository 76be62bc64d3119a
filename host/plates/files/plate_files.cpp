#include "plates/files/plate_files.h"

#include <algorithm>

#include "io/refusal.h"
#include "libtiff/libtiff.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

using Tiff = tiff::File;
using tiff::libtiff;

struct OpenTiff {
    Tiff tiff;
    std::uint32_t width = 0, height = 0;
    bool zeroIsInk = false;
};

OpenTiff openTiff(const fs::path &file, int bits)
{
    OpenTiff open{Tiff(libtiff().open(file.c_str(), "r"))};
    std::uint16_t samples = 1, depth = 1, photometric = PHOTOMETRIC_MINISBLACK;
    if (!open.tiff)
        refusePicture(file);
    libtiff().getField(open.tiff.get(), TIFFTAG_IMAGEWIDTH, &open.width);
    libtiff().getField(open.tiff.get(), TIFFTAG_IMAGELENGTH, &open.height);
    libtiff().getFieldDefaulted(open.tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    libtiff().getFieldDefaulted(open.tiff.get(), TIFFTAG_BITSPERSAMPLE, &depth);
    libtiff().getField(open.tiff.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    open.zeroIsInk = photometric == PHOTOMETRIC_MINISBLACK;
    if (samples != 1 || depth != bits || open.width == 0 || open.height == 0 || open.width > kLongestPlateSide ||
        open.height > kLongestPlateSide || !open.zeroIsInk ||
        static_cast<std::uint64_t>(libtiff().scanlineSize(open.tiff.get())) !=
            (static_cast<std::uint64_t>(open.width) * static_cast<unsigned>(bits) + 7) / 8)
        refusePicture(file);
    return open;
}

// Ink being ones.
void readRow(const OpenTiff &open, std::uint32_t y, std::uint8_t *row, size_t rowBytes, const fs::path &file)
{
    if (libtiff().readScanline(open.tiff.get(), row, y, 0) < 0)
        refusePicture(file);
    for (size_t i = 0; i < rowBytes; ++i)
        row[i] = static_cast<std::uint8_t>(~row[i]);
}

// Rows of the file into rows of memory.
void readRows(const OpenTiff &open, std::uint8_t *rows, size_t rowBytes, const fs::path &file)
{
    for (std::uint32_t y = 0; y < open.height; ++y)
        readRow(open, y, rows + y * rowBytes, rowBytes, file);
}

}  // namespace

void silencePictures()
{
    libtiff().setWarningHandler(nullptr);
    libtiff().setErrorHandler(nullptr);
}

void refusePicture(const fs::path &file)
{
    throw io::Refusal(file.string() + ": the interpreter has not written this picture whole; is the disk full?");
}

TintPlate readTints(const fs::path &tiff)
{
    const OpenTiff open = openTiff(tiff, 8);
    TintPlate plate{static_cast<int>(open.width), static_cast<int>(open.height), {}};
    plate.ink.resize(static_cast<size_t>(open.width) * open.height);
    readRows(open, plate.ink.data(), open.width, tiff);
    return plate;
}

PlateSize readTintRows(const fs::path &tiff,
                       const std::function<void(const std::uint8_t *tints, const PlateSize &size)> &take)
{
    const OpenTiff open = openTiff(tiff, 8);
    const PlateSize size{static_cast<int>(open.width), static_cast<int>(open.height)};
    std::vector<std::uint8_t> row(open.width);
    for (std::uint32_t y = 0; y < open.height; ++y) {
        readRow(open, y, row.data(), row.size(), tiff);
        take(row.data(), size);
    }
    return size;
}

std::vector<TintPlate> readComposite(const fs::path &tiff)
{
    const Tiff open(libtiff().open(tiff.c_str(), "r"));
    std::uint32_t width = 0, height = 0;
    std::uint16_t samples = 0, depth = 0, photometric = 0;
    if (!open)
        refusePicture(tiff);
    libtiff().getField(open.get(), TIFFTAG_IMAGEWIDTH, &width);
    libtiff().getField(open.get(), TIFFTAG_IMAGELENGTH, &height);
    libtiff().getFieldDefaulted(open.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    libtiff().getFieldDefaulted(open.get(), TIFFTAG_BITSPERSAMPLE, &depth);
    libtiff().getField(open.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    std::vector<std::uint8_t> row(size_t(4) * width);
    if (samples != 4 || depth != 8 || photometric != PHOTOMETRIC_SEPARATED || width == 0 ||
        width > kLongestPlateSide || height > kLongestPlateSide ||
        libtiff().scanlineSize(open.get()) != row.size())
        refusePicture(tiff);
    std::vector<TintPlate> plates(4, {static_cast<int>(width), static_cast<int>(height), {}});
    for (std::uint32_t y = 0; y < height; ++y) {
        if (libtiff().readScanline(open.get(), row.data(), y, 0) < 0)
            refusePicture(tiff);
        for (size_t i = 0; i < row.size(); ++i)
            plates[i % 4].ink.push_back(row[i]);
    }
    return plates;
}

BitPlate readPlate(const fs::path &tiff)
{
    const OpenTiff open = openTiff(tiff, 1);
    BitPlate plate(static_cast<int>(open.width), static_cast<int>(open.height));
    readRows(open, plate.bits.data(), plate.rowBytes, tiff);
    plate.clearEdge();
    return plate;
}

std::vector<PlateFile> plateFiles(const fs::path &folder, int page)
{
    const std::string start = std::to_string(page) + "(", end = ").tif";
    std::vector<PlateFile> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name.size() >= start.size() + end.size() && name.starts_with(start) && name.ends_with(end))
            files.push_back({name.substr(start.size(), name.size() - start.size() - end.size()), entry.path()});
    }
    const auto rank = [](const PlateFile &file) {
        return std::find(std::begin(kProcessPlates), std::end(kProcessPlates), file.plate) - kProcessPlates;
    };
    std::sort(files.begin(), files.end(), [&](const PlateFile &one, const PlateFile &other) {
        return rank(one) != rank(other) ? rank(one) < rank(other) : one.plate < other.plate;
    });
    return files;
}

}  // namespace riders::plates
