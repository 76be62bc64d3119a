#include "plates/files/process_plates.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr size_t kRowsAtOnce = 64;

int atSixteen(const std::uint8_t *bytes)
{
    return bytes[0] | bytes[1] << 8;
}

struct CloseFile {
    void operator()(FILE *file) const { fclose(file); }
};

// The bytes of a PCX file after its header, with its runs expanded.
class PcxBytes {
public:
    explicit PcxBytes(const fs::path &file) : path_(file), file_(fopen(file.c_str(), "rb"))
    {
        if (!file_ || fread(header_.data(), 1, header_.size(), file_.get()) != header_.size() ||
            header_[0] != 10 || header_[2] != 1 || header_[3] != 4 || header_[65] != 1)
            refusePicture(file);
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
            if (filled_ == 0 && ferror(file_.get()))
                refusePicture(path_);
        }
        if (filled_ == 0)
            return false;
        value = buffer_[at_++];
        return true;
    }

    // Finds the next run; those without length are skipped.
    bool next()
    {
        do {
            if (!byte(value_))
                return false;
            run_ = 1;
            if (value_ >= 0xC0) {
                run_ = value_ & 0x3F;
                if (!byte(value_))
                    return false;
            }
        } while (run_ == 0);
        return true;
    }

    fs::path path_;
    std::unique_ptr<FILE, CloseFile> file_;
    std::array<std::uint8_t, 128> header_{};
    std::vector<std::uint8_t> buffer_ = std::vector<std::uint8_t>(64 << 10);
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

std::vector<BitPlate> readProcessPlates(const fs::path &pcx, int aboutWidth, int aboutHeight)
{
    PcxBytes bytes(pcx);
    const int width = nearestWidth(atSixteen(&bytes.header()[8]) - atSixteen(&bytes.header()[4]) + 1, aboutWidth);
    if (width < 1 || width > kLongestPlateSide)
        refusePicture(pcx);
    std::vector<BitPlate> plates(4, BitPlate(width, 0));
    // A row of the file has an even number of bytes, two pixels each.
    const size_t fileRow = (static_cast<size_t>(width) + 3) / 4 * 2;
    std::vector<std::uint8_t> pixels(std::max(fileRow, plates[0].rowBytes * 4));
    const size_t rowBytes = plates[0].rowBytes;
    for (BitPlate &plate : plates)
        plate.bits.reserve((static_cast<size_t>(aboutHeight) + kRowsAtOnce) * rowBytes);
    int height = 0;
    for (; height < kLongestPlateSide && bytes.read(pixels.data(), fileRow); ++height) {
        for (BitPlate &plate : plates)
            if (plate.bits.size() == height * rowBytes)
                plate.bits.resize(plate.bits.size() + kRowsAtOnce * rowBytes);
        dealRow(pixels, plates, height);
    }
    for (BitPlate &plate : plates) {
        plate.height = height;
        plate.bits.resize(height * rowBytes);
        plate.clearEdge();
    }
    return plates;
}

}  // namespace riders::plates
