#include "play/film.h"

#include <algorithm>

#include "play/displays.h"

namespace riders::play {
namespace {

constexpr int across = 4;
constexpr int gap = 4;
constexpr std::size_t mostFrames = 200;
constexpr std::uint32_t grey = 0x808080;

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
    if (seen_++ % every_ == 0 && frames_.size() < mostFrames)
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
    int columns = std::min(across, count), rows = (count + across - 1) / across;
    toolbox::Picture sheet{columns * (width + gap), rows * (height + gap), {}};
    sheet.pixels.assign(offset(sheet, 0, sheet.height), grey);
    for (int i = 0; i < count; ++i)
        paste(frames_[static_cast<std::size_t>(i)], sheet, i % across * (width + gap),
              i / across * (height + gap));
    return sheet;
}

}  // namespace riders::play
