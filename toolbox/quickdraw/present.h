// Handing finished pixels to the machine. Private to the Toolbox.
#pragma once

namespace toolbox::quickdraw {

// Presents every display that was drawn on since it was last presented.
void presentDisplays();

}  // namespace toolbox::quickdraw
