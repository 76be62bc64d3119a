#include "desktop/sound.h"

#include <cmath>
#include <numbers>

namespace toolbox::desktop {
namespace {

constexpr std::uint8_t silence = 0x80;
constexpr double lowestRate = 1000, highestRate = 192000;

// A soft tone that swells and fades, so that it does not click.
std::vector<std::uint8_t> beepSamples(int rate)
{
    constexpr double seconds = 0.15, pitch = 660, loudness = 24;
    const int count = static_cast<int>(rate * seconds);
    std::vector<std::uint8_t> samples;
    for (int i = 0; i < count; ++i) {
        const double swell = std::sin(std::numbers::pi * i / count);
        const double wave = std::sin(2 * std::numbers::pi * pitch * i / rate);
        samples.push_back(static_cast<std::uint8_t>(std::lround(silence + loudness * swell * wave)));
    }
    return samples;
}

}  // namespace

Sound::~Sound()
{
    stop();
    if (card_ == Card::there)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool Sound::haveCard()
{
    if (card_ == Card::notAsked)
        card_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0 ? Card::there : Card::missing;
    return card_ == Card::there;
}

bool Sound::start(const std::vector<std::uint8_t> &samples, double samplesPerSecond)
{
    stop();
    if (samples.empty() || !(samplesPerSecond >= lowestRate && samplesPerSecond <= highestRate) || !haveCard())
        return false;
    SDL_AudioSpec spec{};
    spec.freq = static_cast<int>(std::lround(samplesPerSecond));
    spec.format = AUDIO_U8;
    spec.channels = 1;
    spec.samples = 512;
    device_ = SDL_OpenAudioDevice(nullptr, 0, &spec, nullptr, 0);
    if (!device_) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        card_ = Card::missing;
        return false;
    }
    SDL_QueueAudio(device_, samples.data(), static_cast<Uint32>(samples.size()));
    SDL_PauseAudioDevice(device_, 0);
    return true;
}

void Sound::startBeep()
{
    constexpr int rate = 22050;
    start(beepSamples(rate), rate);
}

void Sound::stop()
{
    if (device_)
        SDL_CloseAudioDevice(device_);
    device_ = 0;
}

bool Sound::playing() const
{
    return device_ && SDL_GetQueuedAudioSize(device_) > 0;
}

}  // namespace toolbox::desktop
