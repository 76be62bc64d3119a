// Films that Ghostscript wrote, to be measured.
#pragma once

#include <filesystem>
#include <string>

#include "meter/meter.h"

// Keeps the bytes of a raw PBM file; a page refers to them.
class PlainBitmap {
public:
    PlainBitmap(std::string bytes, size_t start, int width, int height, double dpi)
        : bytes_(std::move(bytes)), start_(start), width_(width), height_(height), dpi_(dpi)
    {
    }
    riders::meter::BitPage page() const
    {
        const auto *bits = reinterpret_cast<const std::uint8_t *>(bytes_.data() + start_);
        return {bits, width_, height_, static_cast<size_t>((width_ + 7) / 8), dpi_};
    }

private:
    std::string bytes_;
    size_t start_;
    int width_, height_;
    double dpi_;
};

// Throws when it is not such a file.
PlainBitmap readPlainBitmap(const std::filesystem::path &file, double dpi);
