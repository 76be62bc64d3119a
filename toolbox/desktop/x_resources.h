// What the person has set on an X display for all programs. Private to the desktop machine.
#pragma once

#include <string>

namespace toolbox::desktop {

// The display's resources, a line for each, as `xrdb -query` prints them; empty where there are none or this is
// not X. Asks the X server anew each time.
std::string xResources();

// The dots per inch that "Xft.dpi" in these resources gives; 0 where it gives none.
double xftDotsPerInch(const std::string &resources);

}  // namespace toolbox::desktop
