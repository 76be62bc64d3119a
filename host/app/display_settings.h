// What the person may change about the display, where the machine lets them.
#pragma once

#include <functional>

namespace riders::app {

struct DisplaySettings {
    std::function<bool()> fullScreen;
    std::function<void(bool)> setFullScreen;
    std::function<int()> depth;         // bits per pixel
    std::function<void(int)> setDepth;  // 1, 2, 4, 8 or 32
};

}  // namespace riders::app
