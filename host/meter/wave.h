// A wave on a page.
#pragma once

namespace riders::meter {

struct Wave {
    double x = 0, y = 0;  // periods per pixel, to the right and down the sheet
};

}  // namespace riders::meter
