#include "desktop/lost_display.h"

#include <SDL_syswm.h>   // after our own header: it brings in X's macros
#include <dlfcn.h>
#include <wayland-client.h>

// Xlib is asked for its calls by name: on Wayland it need not be there.
namespace toolbox::desktop {
namespace {

using SetHandler = XIOErrorHandler (*)(XIOErrorHandler);
using SetExitHandler = void (*)(Display *, XIOErrorExitHandler, void *);

bool lost = false;

int saysNothing(Display *)
{
    return 0;
}

void noteLoss(Display *, void *)
{
    lost = true;
}

template <typename Call> Call callNamed(void *library, const char *name)
{
    return library ? reinterpret_cast<Call>(dlsym(library, name)) : nullptr;
}

}  // namespace

LostDisplay::LostDisplay() : xlib_(dlopen("libX11.so.6", RTLD_NOW | RTLD_NOLOAD))
{
    lost = false;
}

void LostDisplay::watch(SDL_Window *window)
{
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info))
        return;
    if (info.subsystem == SDL_SYSWM_WAYLAND)
        wayland_ = info.info.wl.display;
    const auto setExit = callNamed<SetExitHandler>(xlib_, "XSetIOErrorExitHandler");
    const auto setHandler = callNamed<SetHandler>(xlib_, "XSetIOErrorHandler");
    if (info.subsystem != SDL_SYSWM_X11 || !setExit || !setHandler)
        return;
    setHandler(saysNothing);
    setExit(info.info.x11.display, noteLoss, nullptr);
}

bool LostDisplay::isLost() const
{
    return lost || (wayland_ && wl_display_get_error(wayland_) != 0);
}

}  // namespace toolbox::desktop
