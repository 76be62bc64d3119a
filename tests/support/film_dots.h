// A tint screened as films are, to be measured.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "meter/meter.h"
#include "screening/compare.h"

// Where pixels are not square each is painted several times, so that the page is as on paper. One resolution must
// be a multiple of the other.
class FilmDots {
public:
    FilmDots(const riders::screening::Thresholds &thresholds, const riders::screening::Resolution &resolution,
             int tone, double inches)
        : dpi_(std::max(resolution.across, resolution.down)), side_(static_cast<int>(inches * dpi_)),
          rowBytes_((static_cast<std::size_t>(side_) + 7) / 8), bits_(rowBytes_ * static_cast<std::size_t>(side_))
    {
        const auto wide = static_cast<int>(std::lround(dpi_ / resolution.across)),
                   high = static_cast<int>(std::lround(dpi_ / resolution.down));
        const std::vector<std::uint8_t> tones(static_cast<std::size_t>(side_), static_cast<std::uint8_t>(tone));
        std::vector<std::uint8_t> row(rowBytes_);
        for (int y = 0; y < side_; ++y) {
            riders::screening::screenRow(thresholds, 0, y / high, tones.data(), tones.size(), row.data());
            for (int x = 0; x < side_; ++x)
                if ((row[std::size_t(x / wide / 8)] >> (7 - x / wide % 8) & 1) != 0)
                    bits_[static_cast<std::size_t>(y) * rowBytes_ + std::size_t(x / 8)] |=
                        static_cast<std::uint8_t>(0x80 >> x % 8);
        }
    }

    riders::meter::BitPage page() const { return {bits_.data(), side_, side_, rowBytes_, dpi_}; }
    riders::meter::ScreenReading read() const
    {
        return riders::meter::readScreen(page(), riders::meter::PageWindow{0, 0, side_, side_});
    }

private:
    double dpi_;
    int side_;
    std::size_t rowBytes_;
    std::vector<std::uint8_t> bits_;
};
