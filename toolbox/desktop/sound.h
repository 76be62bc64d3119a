// Sound through the sound card, if there is one. Private to the desktop
// machine.
#pragma once

#include <SDL.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace toolbox::desktop {

// The card is opened with the first sound and closed when none has been played
// for a while; one that could not be opened is not tried again.
class Sound {
public:
    using Clock = std::chrono::steady_clock;

    Sound() = default;
    ~Sound();
    Sound(const Sound &) = delete;
    Sound &operator=(const Sound &) = delete;
    // Starts unsigned 8-bit samples, one channel, in place of what is playing.
    // Returns when they will be over; nothing when they cannot be played.
    std::optional<Clock::time_point> start(const std::vector<std::uint8_t> &samples, double samplesPerSecond);
    void startBeep();
    void fallSilent();

    // When rest is to be called, if at all.
    std::optional<Clock::time_point> restsAt() const;
    void rest();

private:
    bool haveCard();
    bool openAt(int rate);

    enum class Card { notAsked, there, missing };
    Card card_ = Card::notAsked;
    SDL_AudioDeviceID device_ = 0;
    int rate_ = 0;
    Clock::time_point over_{};
};

}  // namespace toolbox::desktop
