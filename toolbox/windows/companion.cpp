#include "toolbox/host/companion.h"

#include "windows/window_list.h"

namespace toolbox {

void setCompanion(WindowPtr window, WindowPtr companion)
{
    if (windows::Window *found = windows::find(window))
        found->companion = windows::peek(companion);
}

void windows::hideCompanion(WindowPeek record)
{
    if (const Window *found = find(record); found && find(found->companion))
        HideWindow(portOf(found->companion));
}

void windows::forgetCompanion(WindowPeek record)
{
    for (Window &window : list)
        if (window.companion == record)
            window.companion = nullptr;
}

}  // namespace toolbox
