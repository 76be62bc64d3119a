#include "desktop/make_pane.h"

#include <string_view>

#include "desktop/surface_pane.h"
#include "desktop/wayland_pane.h"

namespace toolbox::desktop {

std::unique_ptr<Pane> makePane(SDL_Window *window)
{
    const char *driver = SDL_GetCurrentVideoDriver();
    if (driver && std::string_view(driver) == "wayland")
        return makeWaylandPane(window);
    return makeSurfacePane(window);
}

}  // namespace toolbox::desktop
