// The desktop's clipboard. Private to the desktop machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace toolbox::desktop {

// Text as the Toolbox has it: \n line ends, cut at a character before it gets
// longer than any field holds.
std::string tidied(std::string text);

class Clipboard {
public:
    std::string text() const;
    void setText(const std::string &text);
    // The desktop says that the clipboard has changed. False when it was us.
    bool changed();
    std::uint32_t serial() const { return serial_; }

private:
    std::optional<std::string> ours_;   // what we put there, until somebody else does
    std::uint32_t serial_ = 0;
};

}  // namespace toolbox::desktop
