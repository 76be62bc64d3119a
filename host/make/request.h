// What a user asks of `riders make`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "make/plates_piece.h"

namespace riders::make {

struct MakeRequest {
    std::filesystem::path plugin;
    std::filesystem::path output;
    // As the user wrote them, with a period; what is not named is left to the
    // printer.
    std::optional<std::string> frequency;  // lines per inch
    std::optional<std::string> angle;      // degrees
    std::optional<std::string> spot;       // a dot shape of the menu or an installed one, or a file
    bool spotOfSet = false;          // the file is where a set of screens has it, perhaps hidden from dialogs
    std::vector<PlatePiece> plates;  // of single plates; no dialog has these
    std::optional<std::string> flatness;
    std::optional<std::string> annotation;  // UTF-8
    std::optional<std::string> font;
    std::optional<std::string> size;  // points
    bool errorHandler = false;
    bool force = false;  // replace a file that is no riders file, too
    // Start from the user's saved settings and save them again; otherwise they
    // are neither read nor written.
    bool saveSettings = false;
};

}  // namespace riders::make
