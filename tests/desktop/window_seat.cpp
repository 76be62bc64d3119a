#include "desktop/window_seat.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <utility>

#include "toolbox/events.h"
#include "toolbox/host/text.h"
#include "toolbox/host/utf8.h"
#include "toolbox/keys.h"

namespace desktop {
namespace {

using toolbox::Input;
using toolbox::Display;
using Kind = Input::Kind;
using Clock = std::chrono::steady_clock;

constexpr auto patience = std::chrono::seconds(20);

toolbox::DesktopOptions optionsFor(const std::vector<Display> &displays)
{
    if (displays.size() != 1)
        throw std::invalid_argument("the desktop's window is one screen");
    const Display &display = displays.front();
    return {.title = "Riders, played",
            .width = display.bounds.right,
            .height = display.bounds.bottom,
            .depth = display.depth,
            .scale = display.scale};
}

const std::map<std::uint8_t, const char *> namedKeys = {
    {toolbox::key::carriageReturn, "Return"}, {toolbox::key::enter, "KP_Enter"},
    {toolbox::key::escape, "Escape"},         {toolbox::key::tab, "Tab"},
    {toolbox::key::backspace, "BackSpace"},   {toolbox::key::forwardDelete, "Delete"},
    {toolbox::key::leftArrow, "Left"},        {toolbox::key::rightArrow, "Right"},
    {toolbox::key::upArrow, "Up"},            {toolbox::key::downArrow, "Down"},
    {toolbox::key::home, "Home"},             {toolbox::key::end, "End"},
    {' ', "space"},
};

// X names any character by its code point.
std::string keyName(std::uint8_t character)
{
    if (auto named = namedKeys.find(character); named != namedKeys.end())
        return named->second;
    const auto byte = static_cast<char>(character);
    const char32_t point = toolbox::codePoints(toolbox::utf8FromRoman({&byte, 1}))->front();
    std::array<char, 8> name;
    std::snprintf(name.data(), name.size(), "U%04X", static_cast<unsigned>(point));
    return name.data();
}

constexpr std::pair<std::uint16_t, const char *> modifierKeys[] = {
    {cmdKey, "ctrl"}, {shiftKey, "shift"}, {optionKey, "alt"}};

// The name of a capital implies its Shift.
std::uint16_t heldFor(const Input &key)
{
    return namedKeys.contains(key.character) ? key.modifiers
                                             : static_cast<std::uint16_t>(key.modifiers & ~shiftKey);
}

std::string modifierNames(std::uint16_t modifiers)
{
    std::string names;
    for (const auto &[bit, name] : modifierKeys)
        if (modifiers & bit)
            names += (names.empty() ? "" : "+") + std::string(name);
    return names;
}

bool sameKind(const Input &came, const Input &meant)
{
    if (came.kind != meant.kind)
        return false;
    return meant.kind != Kind::mouseMoved || (came.where.h == meant.where.h && came.where.v == meant.where.v);
}

}  // namespace

WindowSeat::WindowSeat(const std::vector<Display> &displays)
    : HeadlessMachine(displays), window_(toolbox::openDesktop(optionsFor(displays))), hands_(std::make_unique<Hands>())
{
    window_->passTicks(6);
    findWindow();
}

// Closing a window waits for its display, for ever if that has gone.
WindowSeat::~WindowSeat()
{
    if (window_->displayLost())
        static_cast<void>(window_.release());
}

void WindowSeat::findWindow()
{
    // The only window on this display: the program's, or the compositor's that
    // it runs in.
    windowId_ = ask("search --sync --onlyvisible --class '.*'");
    windowId_ = windowId_.substr(windowId_.rfind('\n') + 1);
    ask("windowfocus --sync " + windowId_);
    const std::string geometry = ask("getwindowgeometry --shell " + windowId_);
    int x = 0, y = 0;
    if (std::sscanf(geometry.substr(geometry.find("X=")).c_str(), "X=%d\nY=%d", &x, &y) != 2)
        throw std::runtime_error("the window is nowhere: " + geometry);
    corner_ = {x, y};
    hands_->move(x, y);
    pointer_ = {0, 0};
}

std::string WindowSeat::placeOnDisplay()
{
    const Display display = window_->displays().front();
    return std::to_string(display.bounds.right * display.scale) + "x" +
           std::to_string(display.bounds.bottom * display.scale) + "+" + std::to_string(corner_.first) + "+" +
           std::to_string(corner_.second);
}

void WindowSeat::setDisplays(std::vector<Display> displays)
{
    const toolbox::DesktopOptions wanted = optionsFor(displays);
    const Display now = window_->displays().front();
    if (wanted.scale != now.scale)
        throw std::runtime_error("a window has its display's scale");
    window_->setDepth(wanted.depth);
    if (wanted.width != now.bounds.right || wanted.height != now.bounds.bottom)
        ask("windowsize " + windowId_ + " " + std::to_string(wanted.width * now.scale) + " " +
            std::to_string(wanted.height * now.scale));
}

// xclip is the other program.
void WindowSeat::putOnClipboard(const std::string &text)
{
    const std::uint32_t before = window_->clipboardSerial();
    FILE *clip = popen("xclip -selection clipboard -in", "w");
    if (!clip || fwrite(text.data(), 1, text.size(), clip) != text.size() || pclose(clip) != 0)
        throw std::runtime_error("xclip did not take the text");
    const auto end = Clock::now() + patience;
    while (window_->clipboardSerial() == before)
        if (Clock::now() > end)
            throw std::runtime_error("the window has not heard of the clipboard");
        else
            window_->passTicks(1);
}

bool WindowSeat::inputWaiting()
{
    return !unasked_.empty() || HeadlessMachine::inputWaiting() || window_->inputWaiting();
}

void WindowSeat::passTicks(std::uint32_t count)
{
    window_->passTicks(count);
    HeadlessMachine::passTicks(count);
}

std::optional<Input> WindowSeat::waitAtWindow(std::uint32_t ticks)
{
    const std::uint32_t start = window_->ticks();
    std::optional<Input> came = window_->nextInput(ticks);
    HeadlessMachine::passTicks(came ? std::min(window_->ticks() - start, ticks) : ticks);
    return came;
}

std::optional<Input> WindowSeat::nextInput(std::uint32_t waitTicks)
{
    if (std::optional<Input> came = window_->nextInput(0))
        unasked_.push_back(*came);
    if (!unasked_.empty()) {
        Input first = unasked_.front();
        unasked_.pop_front();
        return first;
    }
    std::optional<Input> meant = HeadlessMachine::nextInput(0);
    if (!meant)
        return waitAtWindow(waitTicks);
    if (!carryOut(*meant))
        return std::nullopt;
    return whatCameOf(*meant);
}

bool WindowSeat::carryOut(const Input &meant)
{
    const int scale = window_->displays().front().scale;
    switch (meant.kind) {
    case Kind::mouseMoved:
        holdModifiers(meant.modifiers);
        if (pointer_.h == meant.where.h && pointer_.v == meant.where.v)
            return false;
        pointer_ = meant.where;
        hands_->move(corner_.first + meant.where.h * scale, corner_.second + meant.where.v * scale);
        return true;
    case Kind::mouseDown:
    case Kind::mouseUp:
        hands_->button(meant.kind == Kind::mouseDown, meant.modifiers & controlKey ? Hands::right : Hands::left);
        return true;
    case Kind::keyDown:
        holdModifiers(0);
        hands_->key(keyName(meant.character), modifierNames(heldFor(meant)));
        return true;
    case Kind::keyUp: return false;   // done with keyDown
    default: throw std::runtime_error("no hand can do that at a window");
    }
}

void WindowSeat::holdModifiers(std::uint16_t wanted)
{
    for (const auto &[bit, name] : modifierKeys)
        if ((wanted ^ held_) & bit)
            hands_->modifier(name, (wanted & bit) != 0);
    held_ = wanted;
}

Input WindowSeat::whatCameOf(const Input &meant)
{
    const auto end = Clock::now() + patience;
    while (Clock::now() < end) {
        std::optional<Input> came = window_->nextInput(60);
        if (!came)
            continue;
        if (sameKind(*came, meant))
            return *came;
        if (came->kind != Kind::mouseMoved && came->kind != Kind::keyUp)
            unasked_.push_back(*came);
    }
    throw std::runtime_error("the window has not heard of input " + std::to_string(static_cast<int>(meant.kind)));
}

void WindowSeat::present(int index, const toolbox::Picture &picture, const Rect &changed)
{
    HeadlessMachine::present(index, picture, changed);
    window_->present(index, picture, changed);
}

void WindowSeat::beep()
{
    HeadlessMachine::beep();
    window_->beep();
}

void WindowSeat::playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond)
{
    const std::uint32_t start = window_->ticks();
    window_->playSound(samples, samplesPerSecond);
    HeadlessMachine::passTicks(window_->ticks() - start);
}

}  // namespace desktop
