// For whoever learns that the screens have changed. Private to the Toolbox.
#pragma once

namespace toolbox::windows {

// Menu bar, desktop and every window are painted anew, and every window gets
// an update event. Nothing before the Window Manager is started.
void screensChanged();

}  // namespace toolbox::windows
