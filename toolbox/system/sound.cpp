// The beep, and sampled sounds from 'snd ' resources.
#include "toolbox/system.h"

#include <optional>
#include <string_view>

#include "toolbox/host/big_bytes.h"
#include "toolbox/host/session.h"
#include "toolbox/host/trace.h"
#include "toolbox/memory.h"

namespace {

struct SampledSound {
    std::vector<std::uint8_t> samples;
    double samplesPerSecond = 0;
};

// Big-endian numbers from bytes that may be cut short; 0 past the end.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
    std::uint32_t at(std::size_t offset, int size) const
    {
        return has(offset, static_cast<std::size_t>(size)) ? toolbox::bytesAt(bytes_, offset, size) : 0;
    }
    bool has(std::size_t offset, std::size_t count) const
    {
        return offset <= bytes_.size() && count <= bytes_.size() - offset;
    }
    std::string_view part(std::size_t offset, std::size_t count) const { return bytes_.substr(offset, count); }

private:
    std::string_view bytes_;
};

constexpr std::uint32_t playBufferHere = 0x8051;

// Where the header of the sound to be played lies; a sound that only carries
// data and plays nothing has none.
std::optional<std::size_t> headerOffset(const Bytes &sound)
{
    if (sound.at(0, 2) != 1)
        return std::nullopt;
    std::size_t commandCountAt = 4 + 6 * static_cast<std::size_t>(sound.at(2, 2));
    std::size_t commands = sound.at(commandCountAt, 2);
    for (std::size_t i = 0; i < commands; ++i) {
        std::size_t command = commandCountAt + 2 + 8 * i;
        if (sound.has(command, 8) && sound.at(command, 2) == playBufferHere)
            return sound.at(command + 4, 4);
    }
    return std::nullopt;
}

std::optional<SampledSound> sampledSound(const Bytes &sound)
{
    std::optional<std::size_t> header = headerOffset(sound);
    constexpr std::size_t headerSize = 22;
    if (!header || !sound.has(*header, headerSize) || sound.at(*header, 4) != 0 || sound.at(*header + 20, 1) != 0)
        return std::nullopt;
    std::size_t count = sound.at(*header + 4, 4);
    double rate = sound.at(*header + 8, 4) / 65536.0;
    if (!sound.has(*header + headerSize, count) || rate <= 0)
        return std::nullopt;
    std::string_view samples = sound.part(*header + headerSize, count);
    return SampledSound{{samples.begin(), samples.end()}, rate};
}

}  // namespace

extern "C" {

void SysBeep(int16_t)
{
    toolbox::trace::line("beep");
    toolbox::machine().beep();
}

OSErr SndPlay(void *, Handle sound, Boolean async)
{
    if (!sound || !*sound)
        return nilHandleErr;
    if (async)
        return paramErr;
    std::optional<SampledSound> parts =
        sampledSound(Bytes({*sound, static_cast<std::size_t>(GetHandleSize(sound))}));
    if (!parts)
        return paramErr;
    toolbox::machine().playSound(parts->samples, parts->samplesPerSecond);
    return noErr;
}

}  // extern "C"
