// What the person may change about the screen, where the machine lets them.
#pragma once

#include <functional>

namespace riders::app {

struct ScreenSettings {
    std::function<bool()> fullScreen;
    std::function<void(bool)> setFullScreen;
    std::function<int()> depth;         // bits a pixel
    std::function<void(int)> setDepth;  // 1, 2, 4, 8 or 32
};

}  // namespace riders::app
