// The waves in a patch of a page: its Fourier transform.
#pragma once

#include <vector>

#include "meter/bit_page.h"
#include "meter/wave.h"

namespace riders::meter {

// The patch is made of blocks of `shrink` by `shrink` pixels, their ink added;
// it lies in the middle of the window and has at most 1024 blocks a side.
class Spectrum {
public:
    // The window lies on the page and has 32 blocks a side or more.
    Spectrum(const BitPage &page, const PageWindow &window, int shrink);

    struct Peak {
        Wave wave;            // periods per page pixel, between -1/2 and 1/2 of a block
        double strength = 0;  // amplitude, in share of ink
    };
    // The strongest peaks, each wave and its opposite as one, strongest first.
    std::vector<Peak> peaks(std::size_t most) const;
    // Whether a peak is stronger than random bits would have: they have one as strong in one of as many
    // patches as there are waves.
    bool standsOut(const Peak &peak) const;
    // Strongest peak within two steps of the wave, folded back where it is too fast for the blocks.
    Peak peakNear(const Wave &wave) const;
    // Strongest wave of fewer periods per pixel than this, without those too slow to be distinguished from an
    // edge.
    Peak strongestBelow(double frequency) const;

    int across() const { return across_; }  // pixels of the page
    int down() const { return down_; }

private:
    void fill(const BitPage &page, const PageWindow &window);
    void transform();
    float strengthAt(int kx, int ky) const;
    Peak refined(int kx, int ky) const;
    bool nearNothing(int kx, int ky) const;
    bool isPeak(int kx, int ky) const;

    int shrink_, columns_, rows_, across_, down_;
    double meanPower_ = 0;                  // of a wave
    std::vector<float> blocks_, strength_;  // strength_: rows_ by columns_ / 2 + 1
};

}  // namespace riders::meter
