#include "desktop/sound.h"

#include <dlfcn.h>

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

void sayNothing(const char *, int, const char *, int, const char *, ...)
{
}

// If there is no sound card, the library for them says so at length on standard
// error, unless it is given a procedure to call instead.
void quietSoundLibrary()
{
    void *library = dlopen("libasound.so.2", RTLD_NOW | RTLD_LOCAL);
    void *setter = library ? dlsym(library, "snd_lib_error_set_handler") : nullptr;
    if (setter)
        reinterpret_cast<int (*)(decltype(&sayNothing))>(setter)(sayNothing);
}

}  // namespace

Sound::~Sound()
{
    rest();
    if (card_ == Card::there)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool Sound::haveCard()
{
    if (card_ != Card::notAsked)
        return card_ == Card::there;
    quietSoundLibrary();
    card_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0 ? Card::there : Card::missing;
    return card_ == Card::there;
}

bool Sound::openAt(int rate)
{
    if (device_ && rate == rate_)
        return true;
    rest();
    SDL_AudioSpec spec{};
    spec.freq = rate;
    spec.format = AUDIO_U8;
    spec.channels = 1;
    spec.samples = 512;
    device_ = SDL_OpenAudioDevice(nullptr, 0, &spec, nullptr, 0);
    rate_ = rate;
    if (device_)
        return true;
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    card_ = Card::missing;
    return false;
}

std::optional<Sound::Clock::time_point> Sound::start(const std::vector<std::uint8_t> &samples,
                                                     double samplesPerSecond)
{
    if (samples.empty() || !(samplesPerSecond >= lowestRate && samplesPerSecond <= highestRate) || !haveCard() ||
        !openAt(static_cast<int>(std::lround(samplesPerSecond))))
        return std::nullopt;
    SDL_ClearQueuedAudio(device_);
    SDL_QueueAudio(device_, samples.data(), static_cast<Uint32>(samples.size()));
    SDL_PauseAudioDevice(device_, 0);
    const std::chrono::duration<double> length(static_cast<double>(samples.size()) / rate_);
    over_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(length);
    return over_;
}

void Sound::startBeep()
{
    constexpr int rate = 22050;
    static const std::vector<std::uint8_t> samples = beepSamples(rate);
    start(samples, rate);
}

void Sound::fallSilent()
{
    if (device_)
        SDL_ClearQueuedAudio(device_);
}

// An open device keeps a thread busy playing silence.
std::optional<Sound::Clock::time_point> Sound::restsAt() const
{
    if (!device_)
        return std::nullopt;
    return over_ + std::chrono::seconds(1);
}

void Sound::rest()
{
    if (device_)
        SDL_CloseAudioDevice(device_);
    device_ = 0;
}

}  // namespace toolbox::desktop
