#include "sound.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace art {
namespace {

constexpr int rate = 22050;
constexpr double seconds = 0.85;

// A soft start, then partials that die away, the high ones first.
double bell(double frequency, double time)
{
    struct Partial {
        double multiple, loudness, decay;
    };
    constexpr Partial partials[] = {{1, 0.62, 5}, {2, 0.22, 8}, {3.01, 0.12, 13}, {5.4, 0.04, 22}};
    if (time < 0)
        return 0;
    double sum = 0;
    for (const Partial &partial : partials)
        sum += partial.loudness * std::exp(-partial.decay * time) *
               std::sin(2 * std::numbers::pi * frequency * partial.multiple * time);
    return sum * std::min(1.0, time / 0.004);
}

void append(std::string &bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> 8 * i & 255);
}

std::string samples()
{
    std::string result;
    for (int i = 0; i < static_cast<int>(rate * seconds); ++i) {
        double time = static_cast<double>(i) / rate;
        double fade = std::min(1.0, (seconds - time) / 0.2);
        double value = 0.5 * bell(659.26, time) + 0.5 * bell(987.77, time - 0.14);
        result += static_cast<char>(std::lround(128 + 110 * std::clamp(value * fade, -1.0, 1.0)));
    }
    return result;
}

}  // namespace

std::string chime()
{
    std::string data = samples();
    if (data.size() % 2)
        data += '\x80';
    std::string bytes = "RIFF";
    append(bytes, static_cast<std::uint32_t>(36 + data.size()), 4);
    bytes += "WAVEfmt ";
    append(bytes, 16, 4);
    append(bytes, 1, 2);      // plain samples
    append(bytes, 1, 2);      // one channel
    append(bytes, rate, 4);
    append(bytes, rate, 4);   // bytes per second
    append(bytes, 1, 2);      // bytes per sample
    append(bytes, 8, 2);      // bits
    bytes += "data";
    append(bytes, static_cast<std::uint32_t>(data.size()), 4);
    return bytes + data;
}

}  // namespace art
