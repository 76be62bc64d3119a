#include <algorithm>
#include <optional>
#include <string_view>

#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

namespace {

// A WAV file's chunks are little-endian.
std::uint32_t littleAt(std::string_view bytes, std::size_t offset, int count)
{
    std::uint32_t value = 0;
    for (int i = count - 1; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[offset + static_cast<std::size_t>(i)]);
    return value;
}

struct Wave {
    std::uint32_t channels = 0;
    std::uint32_t rate = 0;
    std::uint32_t bits = 0;
    std::string_view samples;
};

constexpr std::uint32_t plainFormat = 1, extensibleFormat = 0xFFFE;

std::optional<std::string_view> chunk(std::string_view wave, std::string_view name)
{
    constexpr std::size_t firstChunk = 12, chunkHeader = 8;
    std::size_t at = firstChunk;
    while (at + chunkHeader <= wave.size()) {
        std::size_t length = littleAt(wave, at + 4, 4);
        std::string_view bytes = wave.substr(at + chunkHeader, length);
        if (wave.substr(at, 4) == name)
            return bytes;
        at += chunkHeader + length + length % 2;
    }
    return std::nullopt;
}

bool readFormat(std::string_view format, Wave &wave)
{
    if (format.size() < 16)
        return false;
    std::uint32_t kind = littleAt(format, 0, 2);
    if (kind == extensibleFormat && format.size() >= 26)
        kind = littleAt(format, 24, 2);
    wave.channels = littleAt(format, 2, 2);
    wave.rate = littleAt(format, 4, 4);
    wave.bits = littleAt(format, 14, 2);
    bool shape = (wave.channels == 1 || wave.channels == 2) && (wave.bits == 8 || wave.bits == 16);
    return kind == plainFormat && shape && wave.rate >= 1 && wave.rate <= 0xFFFF;
}

Wave waveIn(std::string_view bytes, const Place &place)
{
    Wave wave;
    if (!bytes.starts_with("RIFF") || bytes.substr(std::min<std::size_t>(8, bytes.size()), 4) != "WAVE")
        throw SourceError(place, "the sound is no WAV file");
    auto format = chunk(bytes, "fmt ");
    auto samples = chunk(bytes, "data");
    if (!format || !samples || !readFormat(*format, wave))
        throw SourceError(place, "the sound must be 8 or 16 bit PCM, one or two channels, below 65536 Hz");
    wave.samples = *samples;
    return wave;
}

// From 0 to 255, 128 being silence: 8-bit WAV samples are so already; 16-bit
// ones are signed.
int sampleAt(const Wave &wave, std::size_t index)
{
    if (wave.bits == 8)
        return static_cast<unsigned char>(wave.samples[index]);
    auto value = static_cast<std::int16_t>(littleAt(wave.samples, index * 2, 2));
    return (value >> 8) + 128;
}

std::string mixed(const Wave &wave)
{
    std::size_t frame = wave.channels * wave.bits / 8;
    std::string samples;
    for (std::size_t i = 0; i < wave.samples.size() / frame; ++i) {
        int sum = sampleAt(wave, i * wave.channels);
        if (wave.channels == 2)
            sum = (sum + sampleAt(wave, i * 2 + 1)) / 2;
        samples += static_cast<char>(sum);
    }
    return samples;
}

std::string format1(const std::string &samples, std::uint32_t rate)
{
    std::string bytes;
    appendWord(bytes, 1);            // format
    appendWord(bytes, 1);            // one data format:
    appendWord(bytes, 5);            // sampled,
    appendLong(bytes, 0x80);         // mono
    appendWord(bytes, 1);            // one command:
    appendWord(bytes, 0x8051);       // play the buffer
    appendWord(bytes, 0);
    appendLong(bytes, 20);           // that begins here
    appendLong(bytes, 0);            // samples follow the header
    appendLong(bytes, static_cast<std::uint32_t>(samples.size()));
    appendLong(bytes, rate << 16);
    appendLong(bytes, 0);            // no loop
    appendLong(bytes, 0);
    appendByte(bytes, 0);            // standard encoding
    appendByte(bytes, 60);           // middle C
    return bytes + samples;
}

}  // namespace

std::string soundBytes(Cursor &source)
{
    Place place = source.place();
    std::string bytes = fileBytes(source.file(), place);
    Wave wave = waveIn(bytes, place);
    return format1(mixed(wave), wave.rate);
}

}  // namespace rescomp
