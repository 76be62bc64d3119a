#include "desktop/x_resources.h"

#include <SDL.h>
#include <dlfcn.h>

#include <cmath>
#include <cstdlib>
#include <string_view>

namespace toolbox::desktop {
namespace {

constexpr std::string_view setting = "Xft.dpi:";

template <typename Function>
Function function(void *library, const char *name)
{
    return reinterpret_cast<Function>(dlsym(library, name));
}

}  // namespace

// SDL has loaded the library where it is on X, and does without it elsewhere.
std::string xResources()
{
    const char *const driver = SDL_GetCurrentVideoDriver();
    if (driver == nullptr || std::string_view(driver) != "x11")
        return {};
    void *const library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr)
        return {};
    const auto open = function<void *(*)(const char *)>(library, "XOpenDisplay");
    const auto resources = function<char *(*)(void *)>(library, "XResourceManagerString");
    const auto close = function<int (*)(void *)>(library, "XCloseDisplay");
    void *const display = open && resources && close ? open(nullptr) : nullptr;
    if (display == nullptr)
        return {};
    const char *const text = resources(display);
    std::string copy = text == nullptr ? "" : text;
    close(display);
    return copy;
}

double xftDotsPerInch(const std::string &resources)
{
    double dots = 0;
    for (std::size_t at = 0; at < resources.size(); at = resources.find('\n', at) + 1) {
        if (resources.compare(at, setting.size(), setting) == 0)
            dots = std::strtod(resources.c_str() + at + setting.size(), nullptr);
        if (resources.find('\n', at) == resources.npos)
            break;
    }
    return std::isfinite(dots) && dots > 0 ? dots : 0;
}

}  // namespace toolbox::desktop
