#include "proof/plate_files.h"

#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "apply/refusal.h"

namespace fs = std::filesystem;

namespace riders {
namespace {

constexpr int kLongestSide = 1 << 20;  // pixels
constexpr size_t kRowsAtOnce = 64;

struct CloseTiff {
    void operator()(TIFF *tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

[[noreturn]] void refuseFile(const fs::path &file)
{
    throw Refusal(file.string() + ": is not a picture as the interpreter should write it");
}

struct OpenTiff {
    Tiff tiff;
    std::uint32_t width = 0, height = 0;
    bool zeroIsInk = false;
};

OpenTiff openTiff(const fs::path &file, int bits)
{
    OpenTiff open{Tiff(TIFFOpen(file.c_str(), "r"))};
    std::uint16_t samples = 1, depth = 1, photometric = PHOTOMETRIC_MINISBLACK;
    if (!open.tiff)
        refuseFile(file);
    TIFFGetField(open.tiff.get(), TIFFTAG_IMAGEWIDTH, &open.width);
    TIFFGetField(open.tiff.get(), TIFFTAG_IMAGELENGTH, &open.height);
    TIFFGetFieldDefaulted(open.tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(open.tiff.get(), TIFFTAG_BITSPERSAMPLE, &depth);
    TIFFGetField(open.tiff.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    open.zeroIsInk = photometric == PHOTOMETRIC_MINISBLACK;
    if (samples != 1 || depth != bits || open.width == 0 || open.height == 0 || open.width > kLongestSide ||
        open.height > kLongestSide || !open.zeroIsInk ||
        static_cast<std::uint64_t>(TIFFScanlineSize64(open.tiff.get())) !=
            (static_cast<std::uint64_t>(open.width) * static_cast<unsigned>(bits) + 7) / 8)
        refuseFile(file);
    return open;
}

// Rows of the file into rows of memory, ink being ones.
void readRows(const OpenTiff &open, std::uint8_t *rows, size_t rowBytes, const fs::path &file)
{
    for (std::uint32_t y = 0; y < open.height; ++y) {
        std::uint8_t *row = rows + y * rowBytes;
        if (TIFFReadScanline(open.tiff.get(), row, y) < 0)
            refuseFile(file);
        for (size_t i = 0; i < rowBytes; ++i)
            row[i] = static_cast<std::uint8_t>(~row[i]);
    }
}

// Bits behind the width are nobody's.
void clearEdge(BitPlate &plate)
{
    if (plate.width % 8 == 0)
        return;
    const auto mask = static_cast<std::uint8_t>(0xFF << (8 - plate.width % 8));
    for (int y = 0; y < plate.height; ++y)
        plate.row(y)[plate.rowBytes - 1] &= mask;
}

int atSixteen(const std::uint8_t *bytes)
{
    return bytes[0] | bytes[1] << 8;
}

struct CloseFile {
    void operator()(FILE *file) const { fclose(file); }
};

// The bytes of a PCX file behind its header, the runs undone.
class PcxBytes {
public:
    explicit PcxBytes(const fs::path &file) : file_(fopen(file.c_str(), "rb"))
    {
        if (!file_ || fread(header_.data(), 1, header_.size(), file_.get()) != header_.size() ||
            header_[0] != 10 || header_[2] != 1 || header_[3] != 4 || header_[65] != 1)
            refuseFile(file);
    }

    const std::array<std::uint8_t, 128> &header() const { return header_; }

    // False at the end of the file.
    bool read(std::uint8_t *row, size_t count)
    {
        size_t at = 0;
        while (at < count) {
            if (run_ == 0 && !next())
                return false;
            const size_t some = std::min(run_, count - at);
            std::fill_n(row + at, some, value_);
            at += some;
            run_ -= some;
        }
        return true;
    }

private:
    bool byte(std::uint8_t &value)
    {
        if (at_ == filled_) {
            filled_ = fread(buffer_.data(), 1, buffer_.size(), file_.get());
            at_ = 0;
        }
        if (filled_ == 0)
            return false;
        value = buffer_[at_++];
        return true;
    }

    bool next()
    {
        if (!byte(value_))
            return false;
        run_ = 1;
        if (value_ >= 0xC0) {
            run_ = value_ & 0x3F;
            return byte(value_) && (run_ > 0 || next());
        }
        return true;
    }

    std::unique_ptr<FILE, CloseFile> file_;
    std::array<std::uint8_t, 128> header_{};
    std::vector<std::uint8_t> buffer_ = std::vector<std::uint8_t>(256 << 10);
    size_t at_ = 0, filled_ = 0, run_ = 0;
    std::uint8_t value_ = 0;
};

// For each byte of two pixels, what they add to a byte of each plate: bit 1
// the left pixel, bit 0 the right one, cyan in the highest byte.
std::array<std::uint32_t, 256> pixelPairs()
{
    std::array<std::uint32_t, 256> pairs{};
    for (unsigned value = 0; value < 256; ++value)
        for (unsigned plate = 0; plate < 4; ++plate) {
            const unsigned left = value >> (7 - plate) & 1, right = value >> (3 - plate) & 1;
            pairs[value] |= (left << 1 | right) << (24 - 8 * plate);
        }
    return pairs;
}

void dealRow(const std::vector<std::uint8_t> &pixels, std::vector<BitPlate> &plates, int y)
{
    static const std::array<std::uint32_t, 256> pairs = pixelPairs();
    std::uint8_t *rows[4] = {plates[0].row(y), plates[1].row(y), plates[2].row(y), plates[3].row(y)};
    const std::uint8_t *from = pixels.data();
    for (size_t i = 0; i < plates[0].rowBytes; ++i, from += 4) {
        const std::uint32_t all = pairs[from[0]] << 6 | pairs[from[1]] << 4 | pairs[from[2]] << 2 | pairs[from[3]];
        for (unsigned plate = 0; plate < 4; ++plate)
            rows[plate][i] = static_cast<std::uint8_t>(all >> (24 - 8 * plate));
    }
}

int nearestWidth(int lower, int about)
{
    const int turns = std::max(0, (about - lower + 32768) / 65536);
    return lower + turns * 65536;
}

}  // namespace

BitPlate::BitPlate(int across, int down)
    : width(across), height(down), rowBytes((static_cast<size_t>(across) + 7) / 8),
      bits(rowBytes * static_cast<size_t>(down))
{
}

bool BitPlate::hasInk() const
{
    return std::any_of(bits.begin(), bits.end(), [](std::uint8_t byte) { return byte != 0; });
}

TintPlate readTints(const fs::path &tiff)
{
    const OpenTiff open = openTiff(tiff, 8);
    TintPlate plate{static_cast<int>(open.width), static_cast<int>(open.height), {}};
    plate.ink.resize(static_cast<size_t>(open.width) * open.height);
    readRows(open, plate.ink.data(), open.width, tiff);
    return plate;
}

std::vector<TintPlate> readComposite(const fs::path &tiff)
{
    const Tiff open(TIFFOpen(tiff.c_str(), "r"));
    std::uint32_t width = 0, height = 0;
    std::uint16_t samples = 0, depth = 0, photometric = 0;
    if (!open)
        refuseFile(tiff);
    TIFFGetField(open.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(open.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(open.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(open.get(), TIFFTAG_BITSPERSAMPLE, &depth);
    TIFFGetField(open.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    std::vector<std::uint8_t> row(size_t(4) * width);
    if (samples != 4 || depth != 8 || photometric != PHOTOMETRIC_SEPARATED || width == 0 || width > kLongestSide ||
        height > kLongestSide || TIFFScanlineSize64(open.get()) != row.size())
        refuseFile(tiff);
    std::vector<TintPlate> plates(4, {static_cast<int>(width), static_cast<int>(height), {}});
    for (std::uint32_t y = 0; y < height; ++y) {
        if (TIFFReadScanline(open.get(), row.data(), y) < 0)
            refuseFile(tiff);
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
    clearEdge(plate);
    return plate;
}

std::vector<BitPlate> readProcessPlates(const fs::path &pcx, int aboutWidth, int aboutHeight)
{
    PcxBytes bytes(pcx);
    const int width = nearestWidth(atSixteen(&bytes.header()[8]) - atSixteen(&bytes.header()[4]) + 1, aboutWidth);
    if (width < 1 || width > kLongestSide)
        refuseFile(pcx);
    std::vector<BitPlate> plates(4, BitPlate(width, 0));
    // A row of the file has an even number of bytes, two pixels each.
    const size_t fileRow = (static_cast<size_t>(width) + 3) / 4 * 2;
    std::vector<std::uint8_t> pixels(std::max(fileRow, plates[0].rowBytes * 4));
    const size_t rowBytes = plates[0].rowBytes;
    for (BitPlate &plate : plates)
        plate.bits.reserve((static_cast<size_t>(aboutHeight) + kRowsAtOnce) * rowBytes);
    int height = 0;
    for (; height < kLongestSide && bytes.read(pixels.data(), fileRow); ++height) {
        for (BitPlate &plate : plates)
            if (plate.bits.size() == height * rowBytes)
                plate.bits.resize(plate.bits.size() + kRowsAtOnce * rowBytes);
        dealRow(pixels, plates, height);
    }
    for (BitPlate &plate : plates) {
        plate.height = height;
        plate.bits.resize(height * rowBytes);
        clearEdge(plate);
    }
    return plates;
}

void writeFilm(const fs::path &file, const BitPlate &plate, double dpi)
{
    const Tiff tiff(TIFFOpen(file.c_str(), "w"));
    if (!tiff)
        throw Refusal(file.string() + ": cannot be written");
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
            throw Refusal(file.string() + ": cannot be written; is the disk full?");
    if (!TIFFFlush(out))
        throw Refusal(file.string() + ": cannot be written; is the disk full?");
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

bool isProcessPlate(std::string_view plate)
{
    return std::find(std::begin(kProcessPlates), std::end(kProcessPlates), plate) != std::end(kProcessPlates);
}

}  // namespace riders
