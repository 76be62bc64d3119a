// The screen that a settings dialog's texts mean.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "choosing/shown_choice.h"
#include "screens/shapes.h"

namespace riders::choosing {

// A spot function file that has been opened, and the name that is shown for it.
struct KnownFile {
    std::string name;
    std::filesystem::path path;
};

struct ChosenScreen {
    std::optional<double> frequency, angle;  // nothing: left to the printer
    enum class Shape { printers, builtIn, file, unknown } kind = Shape::printers;
    std::string shape;           // as it is shown
    std::filesystem::path file;  // of an imported spot function

    bool operator==(const ChosenScreen &) const = default;
    // Whether the printer is left to decide on everything.
    bool nothing() const { return !frequency && !angle && kind == Shape::printers; }
};

// `ownShape`: what is shown where the printer's own dot shape is chosen. An imported one is the latest file that
// is shown so, also where only the beginning of its name is, with an ellipsis.
ChosenScreen screenOf(const ShownChoice &shown, const std::string &ownShape, const std::vector<KnownFile> &files);

}  // namespace riders::choosing
