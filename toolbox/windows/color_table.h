// Window and control colour tables: 'wctb', 'dctb', 'actb', 'cctb'. Private to
// the Toolbox.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "toolbox/types.h"

namespace toolbox::windows {

struct Color {
    std::uint16_t red, green, blue;
};

using ColorTable = std::map<int, Color>;   // by part number

// Reads the resource's bytes; entries beyond its end are left out.
ColorTable readColorTable(Handle bytes);
std::optional<Color> colorOf(const ColorTable &table, int part);
// For ForeColor and BackColor.
std::int32_t forDrawing(Color color);
// Whether the main display shows colours at all.
bool displayHasColors();

}  // namespace toolbox::windows
