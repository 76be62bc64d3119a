// The desktop's clipboard. Private to the desktop machine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace toolbox::desktop {

// Text as the Toolbox has it: \n line ends, and cut, between characters, at a length
// that no field can hold.
std::string tidied(std::string text);

// Not every window system reports when the clipboard changes, so it is read
// whenever it is asked for: if it differs from last time, another program set it.
class Clipboard {
public:
    std::string text();
    void setText(const std::string &text);
    std::uint32_t serial();

private:
    // The present text; the serial advances when it is not the one before.
    std::string look();

    std::size_t seen_ = std::hash<std::string>()("");   // hash of the text last seen
    std::uint32_t serial_ = 0;
};

}  // namespace toolbox::desktop
