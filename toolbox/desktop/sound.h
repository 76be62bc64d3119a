// Sound through the sound card, if there is one. Private to the desktop
// machine.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <vector>

namespace toolbox::desktop {

// The card is asked for with the first sound and given back after each; one
// that could not be had is not asked for again.
class Sound {
public:
    ~Sound();
    // Starts unsigned 8-bit samples, one channel, in place of what plays.
    // False when they cannot be played.
    bool start(const std::vector<std::uint8_t> &samples, double samplesPerSecond);
    void startBeep();
    void stop();
    // Whether samples are left to play.
    bool playing() const;

private:
    bool haveCard();

    enum class Card { notAsked, there, missing };
    Card card_ = Card::notAsked;
    SDL_AudioDeviceID device_ = 0;
};

}  // namespace toolbox::desktop
