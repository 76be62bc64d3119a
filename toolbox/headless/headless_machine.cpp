#include "toolbox/host/headless.h"

#include <stdexcept>
#include <utility>

namespace toolbox {

HeadlessMachine::HeadlessMachine(std::vector<Display> displays) : displays_(std::move(displays))
{
    if (displays_.empty())
        throw std::invalid_argument("a machine has at least one screen");
    pictures_.resize(displays_.size());
}

void HeadlessMachine::setSource(Source source)
{
    source_ = std::move(source);
}

void HeadlessMachine::push(const Input &input)
{
    queue_.push_back(input);
}

void HeadlessMachine::setDisplays(std::vector<Display> displays)
{
    if (displays.empty())
        throw std::invalid_argument("a machine has at least one screen");
    displays_ = std::move(displays);
    pictures_.resize(displays_.size());
    push({.kind = Input::Kind::displaysChanged});
}

void HeadlessMachine::putOnClipboard(const std::string &text)
{
    clipboard_ = text;
    ++clipboardSerial_;
    push({.kind = Input::Kind::clipboardChanged});
}

const Picture &HeadlessMachine::lastPicture(int index) const
{
    return pictures_.at(index);
}

int HeadlessMachine::beeps() const
{
    return beeps_;
}

int HeadlessMachine::soundsPlayed() const
{
    return soundsPlayed_;
}

// What was pushed comes first; the source is asked only when that has run out,
// and only here, so that it acts when a program waits and at no other moment.
std::optional<Input> HeadlessMachine::nextInput(std::uint32_t waitTicks)
{
    if (queue_.empty() && source_)
        if (std::optional<Input> input = source_())
            queue_.push_back(*input);
    if (queue_.empty()) {
        passTicks(waitTicks);
        return std::nullopt;
    }
    Input input = queue_.front();
    queue_.pop_front();
    return input;
}

bool HeadlessMachine::inputWaiting()
{
    return !queue_.empty();
}

std::uint32_t HeadlessMachine::ticks()
{
    return ticks_;
}

void HeadlessMachine::passTicks(std::uint32_t count)
{
    ticks_ += count;
}

std::vector<Display> HeadlessMachine::displays()
{
    return displays_;
}

void HeadlessMachine::present(int index, const Picture &picture, const Rect &)
{
    pictures_.at(index) = picture;
    if (watcher_)
        watcher_(index, picture);
}

void HeadlessMachine::setWatcher(Watcher watcher)
{
    watcher_ = std::move(watcher);
}

void HeadlessMachine::wantPictures(bool wanted)
{
    picturesWanted_ = wanted;
}

bool HeadlessMachine::picturesWanted()
{
    return picturesWanted_;
}

std::string HeadlessMachine::clipboardText()
{
    return clipboard_;
}

void HeadlessMachine::setClipboardText(const std::string &text)
{
    clipboard_ = text;
}

std::uint32_t HeadlessMachine::clipboardSerial()
{
    return clipboardSerial_;
}

void HeadlessMachine::beep()
{
    ++beeps_;
}

void HeadlessMachine::playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond)
{
    ++soundsPlayed_;
    if (samplesPerSecond > 0)
        passTicks(static_cast<std::uint32_t>(static_cast<double>(samples.size()) * 60 / samplesPerSecond));
}

void HeadlessMachine::setCursor(CursorShape shape)
{
    cursor_ = shape;
}

}  // namespace toolbox
