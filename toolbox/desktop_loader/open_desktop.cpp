// Loads the shared object that makes windows, when the first window is wanted.
#include "toolbox/host/desktop.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "desktop_loader/module.h"

namespace toolbox {
namespace {

bool isSet(const char *name)
{
    const char *value = std::getenv(name);
    return value && *value;
}

// Without a display server SDL would go on to look for a bare console.
void requireDisplay()
{
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("SDL_VIDEODRIVER"))
        throw DesktopError("no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
}

void requireSense(const DesktopOptions &options)
{
    constexpr int widest = 16384;
    if (!isDepth(options.depth))
        throw std::invalid_argument("the depth is 1, 2, 4, 8 or 32");
    if (options.scale < 0 || options.scale > 3)
        throw std::invalid_argument("the scale is 1, 2, 3, or 0 for the display's");
    if (std::min(options.width, options.height) < 1 || std::max(options.width, options.height) > widest)
        throw std::invalid_argument("the window's size is out of range");
}

// Kept loaded: SDL leaves threads and handlers running whose code is in it.
OpenDesktopProc *moduleEntry()
{
    const auto module = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "riders_desktop.so";
    void *library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void *entry = library ? dlsym(library, openDesktopName) : nullptr;
    if (!entry)
        throw DesktopError(std::string("no window: ") + dlerror());
    return reinterpret_cast<OpenDesktopProc *>(entry);
}

}  // namespace

std::unique_ptr<Desktop> openDesktop(const DesktopOptions &options)
{
    requireSense(options);
    requireDisplay();
    return std::unique_ptr<Desktop>(moduleEntry()(options));
}

}  // namespace toolbox
