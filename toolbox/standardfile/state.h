// What the open file dialog shows, for the scripted user, which has to find its
// way on the display. Private to the Toolbox.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "standardfile/file_list.h"
#include "toolbox/standardfile.h"

namespace toolbox::standardfile {

enum Item : std::int16_t { acceptItem = 1, folderItem = 4, outlineItem = 5 };

struct State {
    DialogPtr dialog;
    bool saving;
    std::filesystem::path folder;
    std::vector<Row> rows;
    std::vector<Rect> rowRects;   // global; empty for a row scrolled away
    Rect arrowUp, arrowDown;      // of the scroll bar, global
    int selected;                 // index of a row, -1 for none
    std::int16_t cancelItem;
    std::int16_t nameItem;        // 0 in the open dialog
};

// Nothing while no file dialog is open.
std::optional<State> state();

}  // namespace toolbox::standardfile
