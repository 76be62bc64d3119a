// Options that a user always wants, as they are written in a file or in the environment; docs/riders-file.md
// describes the form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "io/refusal.h"

namespace riders::commands {

// What is wrong with a preset, and where it is.
struct WrongPreset : io::Refusal {
    using io::Refusal::Refusal;
};

struct Preset {
    std::string from;                  // "FILE:LINE" or "RIDERS_OPTIONS"
    std::string command;               // empty: every one that has the option
    std::string option;                // as on the command line: --dpi, -O
    std::optional<std::string> value;  // none for a flag
};

// Lines of a file, "name = value", "flag" or "flag = yes", under the "[command]" that they are for. Throws
// WrongPreset.
std::vector<Preset> presetsInText(std::string_view text, const std::string &file);

// The words of a text, divided by blanks; those in quotation marks of either kind are one. Throws WrongPreset
// where one is not closed.
std::vector<std::string> quotedWords(std::string_view text, const std::string &from);

}  // namespace riders::commands
