// Pictures of one part of the display, one after the other, as a sheet.
#pragma once

#include <vector>

#include "toolbox/host/machine.h"

namespace riders::play {

class Film {
public:
    // Keeps one of every `every` pictures of that part (global, on the main display),
    // the first one among them; 200 at most.
    Film(const Rect &view, int every) : view_(view), every_(every) {}

    void take(const toolbox::Picture &shown, const toolbox::Display &display);
    // Four across, from left to right and top to bottom, grey between them;
    // empty when nothing was taken.
    toolbox::Picture sheet() const;

private:
    Rect view_;
    int every_;
    int seen_ = 0;
    std::vector<toolbox::Picture> frames_;
};

}  // namespace riders::play
