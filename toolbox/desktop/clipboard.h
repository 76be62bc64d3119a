// The desktop's clipboard. Private to the desktop machine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace toolbox::desktop {

// Text as the Toolbox has it: \n line ends, cut at a character before it gets
// longer than any field holds.
std::string tidied(std::string text);

// Not every window system reports when the clipboard changes, so it is looked at
// whenever it is asked for: what differs from last time is another program's.
class Clipboard {
public:
    std::string text();
    void setText(const std::string &text);
    std::uint32_t serial();

private:
    // The text that is there; the serial counts when it is not the one before.
    std::string look();

    std::size_t seen_ = std::hash<std::string>()("");   // hash of the text last seen
    std::uint32_t serial_ = 0;
};

}  // namespace toolbox::desktop
