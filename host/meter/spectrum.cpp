#include "meter/spectrum.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <numbers>

#include "meter/libfftw.h"
#include "meter/run_counter.h"

namespace riders::meter {

namespace {

constexpr int kLargestPatch = 1024;
// Over how many steps a faded patch smears a constant.
constexpr int kSmear = 2;

struct PlanEnd {
    void operator()(fftwf_plan_s *plan) const { libfftw().destroyPlan(plan); }
};
using Plan = std::unique_ptr<fftwf_plan_s, PlanEnd>;

struct BufferEnd {
    void operator()(void *buffer) const { libfftw().free(buffer); }
};
template <typename T>
using Buffer = std::unique_ptr<T[], BufferEnd>;

// Making plans is the one thing FFTW does not allow several threads at once.
fftwf_plan planFor(int rows, int columns, float *in, fftwf_complex *out)
{
    static std::mutex mutex;
    static std::map<std::pair<int, int>, Plan> plans;
    const std::lock_guard lock(mutex);
    Plan &plan = plans[{rows, columns}];
    if (!plan)
        plan.reset(libfftw().planForward(rows, columns, in, out, FFTW_ESTIMATE));
    return plan.get();
}

// The largest size up to `blocks` that is quick to transform.
int quickSize(int blocks)
{
    for (int size : {1024, 768, 512, 384, 256, 192, 128, 96, 64, 48})
        if (size <= blocks)
            return size;
    return 32;
}

std::vector<float> fading(int size)
{
    std::vector<float> fade(size);
    for (int i = 0; i < size; ++i)
        fade[i] = float(0.5 - 0.5 * std::cos(2 * std::numbers::pi * (i + 0.5) / size));
    return fade;
}

// How far from the middle of three values the top of their hump lies.
double humpShift(double before, double middle, double after)
{
    const double l = std::log(before + 1e-12), m = std::log(middle + 1e-12), r = std::log(after + 1e-12);
    const double bend = l - 2 * m + r;
    return bend < 0 ? std::clamp((l - r) / (2 * bend), -0.5, 0.5) : 0;
}

}  // namespace

Spectrum::Spectrum(const BitPage &page, const PageWindow &window, int shrink)
    : shrink_(shrink), columns_(quickSize(std::min(window.width / shrink, kLargestPatch))),
      rows_(quickSize(std::min(window.height / shrink, kLargestPatch))), across_(columns_ * shrink),
      down_(rows_ * shrink)
{
    fill(page, window);
    transform();
}

void Spectrum::fill(const BitPage &page, const PageWindow &window)
{
    blocks_.assign(std::size_t(columns_) * rows_, 0);
    const int left = window.left + (window.width - across_) / 2, top = window.top + (window.height - down_) / 2;
    double sum = 0;
    RunCounter runs(left, shrink_, columns_);
    for (int y = 0; y < down_; ++y) {
        float *to = &blocks_[std::size_t(y / shrink_) * columns_];
        if (shrink_ == 1)
            for (int x = 0; x < columns_; ++x)
                to[x] = page.at(left + x, top + y);
        else
            runs.add(page.row(top + y), to);
    }
    for (float value : blocks_)
        sum += value;
    const float mean = float(sum / double(blocks_.size()));
    const std::vector<float> fadeX = fading(columns_), fadeY = fading(rows_);
    for (int y = 0; y < rows_; ++y)
        for (int x = 0; x < columns_; ++x)
            blocks_[std::size_t(y) * columns_ + x] =
                (blocks_[std::size_t(y) * columns_ + x] - mean) * fadeX[x] * fadeY[y];
}

void Spectrum::transform()
{
    const std::size_t half = std::size_t(columns_) / 2 + 1;
    const Buffer<float> in(libfftw().allocateReal(blocks_.size()));
    const Buffer<fftwf_complex> out(libfftw().allocateComplex(half * rows_));
    if (!in || !out)
        throw std::bad_alloc();
    fftwf_plan plan = planFor(rows_, columns_, in.get(), out.get());
    std::copy(blocks_.begin(), blocks_.end(), in.get());
    libfftw().execute(plan, in.get(), out.get());
    blocks_ = {};
    strength_.resize(half * rows_);
    // Twice for the opposite wave, four times for the fading.
    const double scale = 8.0 / (double(columns_) * rows_ * shrink_ * shrink_);
    for (std::size_t i = 0; i < strength_.size(); ++i) {
        const double real = out[i][0], imaginary = out[i][1];
        strength_[i] = float(double(float(std::sqrt(real * real + imaginary * imaginary))) * scale);
    }
    for (const float strength : strength_)
        meanPower_ += double(strength) * strength / double(strength_.size());
}

// The power of noise is spread exponentially: of n waves the strongest is about ln n times the mean.
bool Spectrum::standsOut(const Peak &peak) const
{
    return peak.strength * peak.strength > 2 * std::log(double(strength_.size())) * meanPower_;
}

float Spectrum::strengthAt(int kx, int ky) const
{
    if (kx < 0 || kx >= columns_)
        kx = (kx % columns_ + columns_) % columns_;
    if (ky < 0 || ky >= rows_)
        ky = (ky % rows_ + rows_) % rows_;
    if (kx > columns_ / 2)
        kx = columns_ - kx, ky = (rows_ - ky) % rows_;
    return strength_[std::size_t(ky) * (columns_ / 2 + 1) + kx];
}

bool Spectrum::nearNothing(int kx, int ky) const
{
    return std::abs(kx) <= kSmear && std::abs(ky) <= kSmear;
}

bool Spectrum::isPeak(int kx, int ky) const
{
    const float middle = strengthAt(kx, ky);
    if (strengthAt(kx, ky + 1) > middle)
        return false;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if (strengthAt(kx + dx, ky + dy) > middle)
                return false;
    return true;
}

Spectrum::Peak Spectrum::refined(int kx, int ky) const
{
    const double middle = strengthAt(kx, ky);
    const double x = kx + humpShift(strengthAt(kx - 1, ky), middle, strengthAt(kx + 1, ky));
    const double y = ky + humpShift(strengthAt(kx, ky - 1), middle, strengthAt(kx, ky + 1));
    return {{x / across_, y / down_}, middle};
}

std::vector<Spectrum::Peak> Spectrum::peaks(std::size_t most) const
{
    std::vector<Peak> found;
    for (int ky = -(rows_ - 1) / 2; ky <= rows_ / 2; ++ky) {
        const float *row = &strength_[std::size_t((ky + rows_) % rows_) * (std::size_t(columns_) / 2 + 1)];
        for (int kx = 0; kx <= columns_ / 2; ++kx)
            // Most are none already beside the next one.
            if ((kx == columns_ / 2 || row[kx] >= row[kx + 1]) && !nearNothing(kx, ky) && (kx > 0 || ky > 0) &&
                isPeak(kx, ky))
                found.push_back({{double(kx), double(ky)}, strengthAt(kx, ky)});
    }
    most = std::min(most, found.size());
    std::partial_sort(found.begin(), found.begin() + long(most), found.end(),
                      [](const Peak &a, const Peak &b) { return a.strength > b.strength; });
    found.resize(most);
    for (Peak &peak : found)
        peak = refined(int(peak.wave.x), int(peak.wave.y));
    return found;
}

Spectrum::Peak Spectrum::peakNear(const Wave &wave) const
{
    const int x = int(std::lround(wave.x * across_)), y = int(std::lround(wave.y * down_));
    int bestX = x, bestY = y;
    for (int ky = y - 2; ky <= y + 2; ++ky)
        for (int kx = x - 2; kx <= x + 2; ++kx)
            if (strengthAt(kx, ky) > strengthAt(bestX, bestY))
                bestX = kx, bestY = ky;
    return refined(bestX, bestY);
}

Spectrum::Peak Spectrum::strongestBelow(double frequency) const
{
    Peak best;
    const int farX = std::min(int(frequency * across_), columns_ / 2);
    const int farY = std::min(int(frequency * down_), rows_ / 2);
    for (int ky = -farY; ky <= farY; ++ky)
        for (int kx = 0; kx <= farX; ++kx)
            if (strengthAt(kx, ky) > best.strength && !nearNothing(kx, ky) &&
                std::hypot(double(kx) / across_, double(ky) / down_) < frequency)
                best = refined(kx, ky);
    return best;
}

}  // namespace riders::meter
