#include "play/film.h"

#include <algorithm>

#include "play/displays.h"

namespace riders::play {
namespace {

constexpr int kAcross = 4;
constexpr int kGap = 4;
constexpr std::size_t kMostFrames = 200;
constexpr std::uint32_t kGrey = 0x808080;

std::size_t offset(const toolbox::Picture &picture, int h, int v)
{
    return static_cast<std::size_t>(v) * static_cast<std::size_t>(picture.width) + static_cast<std::size_t>(h);
}

void paste(const toolbox::Picture &frame, toolbox::Picture &sheet, int h, int v)
{
    for (int row = 0; row < frame.height; ++row)
        std::copy_n(frame.pixels.begin() + static_cast<std::ptrdiff_t>(offset(frame, 0, row)), frame.width,
                    sheet.pixels.begin() + static_cast<std::ptrdiff_t>(offset(sheet, h, v + row)));
}

}  // namespace

void Film::take(const toolbox::Picture &shown, const toolbox::Display &display)
{
    if (seen_++ % every_ == 0 && frames_.size() < kMostFrames)
        frames_.push_back(pictureOf(shown, display, view_));
}

// Frames are of one size, unless the display changed its own; the largest counts.
toolbox::Picture Film::sheet() const
{
    int width = 0, height = 0;
    for (const toolbox::Picture &frame : frames_) {
        width = std::max(width, frame.width);
        height = std::max(height, frame.height);
    }
    int count = static_cast<int>(frames_.size());
    int columns = std::min(kAcross, count), rows = (count + kAcross - 1) / kAcross;
    toolbox::Picture sheet{columns * (width + kGap), rows * (height + kGap), {}};
    sheet.pixels.assign(offset(sheet, 0, sheet.height), kGrey);
    for (int i = 0; i < count; ++i)
        paste(frames_[static_cast<std::size_t>(i)], sheet, i % kAcross * (width + kGap),
              i / kAcross * (height + kGap));
    return sheet;
}

}  // namespace riders::play
