// How many device pixels a QuickDraw pixel gets. Private to the desktop machine.
#pragma once

#include <optional>
#include <string>

namespace toolbox::desktop {

constexpr int largestScale = 3;

// What is known of the display and of what the person asked for.
struct DisplayFacts {
    int wanted = 0;                 // 1 to 3, 0 for none
    std::string environment{};      // RIDERS_SCALE
    std::string toolkitScale{};     // GDK_SCALE
    std::string toolkitFactor{};    // QT_SCALE_FACTOR, which may have a fraction
    double wantedDotsPerInch = 0;   // Xft.dpi; 0: not set
    double pixelsPerPoint = 1;      // device pixels per unit of the window system
    double dotsPerInch = 0;         // 0: not known
};

// 1 to 3. What was asked for counts first; then the window system's own ratio; if
// it has none, what the person has set for other programs (for GTK, for Qt, for
// all on X), and finally the display's density, one for each 96 dots per inch.
int chooseScale(const DisplayFacts &facts);

}  // namespace toolbox::desktop
