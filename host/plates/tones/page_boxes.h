// Where a PDF says that its pages are trimmed.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "plates/tones/tones.h"

namespace riders::plates {

struct TrimAndBleed {
    std::optional<TonePage::Box> trim, bleed;
};
using PageBoxes = std::map<int, TrimAndBleed>;  // by the page's number

// Asks the interpreter. Empty for a job that is no PDF, and for one that it cannot read.
PageBoxes boxesOf(const TonesRun &run, const std::filesystem::path &folder);

// Takes a line that boxes.ps has written; any other is ignored. `quarterTurns` is how the page is rendered,
// anticlockwise.
void takeBoxLine(std::string_view line, int quarterTurns, PageBoxes &boxes);

}  // namespace riders::plates
