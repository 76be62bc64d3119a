// On Wayland SDL loads OpenGL for every window that is not one for Vulkan, also where the pixels go through shared
// memory; without a graphics card that brings a compiler of shaders, 55 MiB of it. So the window is one for
// Vulkan, of which SDL asks no more than which extensions it has, and this object says that it is Vulkan and has
// them.
#include "desktop/without_opengl.h"

#include <SDL_vulkan.h>
#include <dlfcn.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace toolbox::desktop {
namespace {

// As Vulkan's interface has it.
struct Extension {
    char name[256];
    std::uint32_t version;
};
constexpr Extension extensions[] = {{"VK_KHR_surface", 25}, {"VK_KHR_wayland_surface", 6}};

int listExtensions(const char *, std::uint32_t *count, Extension *list)
{
    constexpr int incomplete = 5;
    constexpr auto all = static_cast<std::uint32_t>(std::size(extensions));
    const std::uint32_t given = list ? std::min(*count, all) : 0;
    std::copy_n(extensions, given, list);
    *count = list ? given : all;
    return list && given < all ? incomplete : 0;
}

}  // namespace
}  // namespace toolbox::desktop

// SDL asks this for all other functions by name.
extern "C" __attribute__((visibility("default"))) void *vkGetInstanceProcAddr(void *, const char *name)
{
    const bool known = std::string_view(name) == "vkEnumerateInstanceExtensionProperties";
    return known ? reinterpret_cast<void *>(&toolbox::desktop::listExtensions) : nullptr;
}

namespace toolbox::desktop {

Uint32 flagsWithoutOpenGl()
{
    const char *driver = SDL_GetCurrentVideoDriver();
    Dl_info self;
    if (!driver || std::string_view(driver) != "wayland" ||
        dladdr(reinterpret_cast<void *>(&vkGetInstanceProcAddr), &self) == 0)
        return 0;
    return SDL_Vulkan_LoadLibrary(self.dli_fname) == 0 ? SDL_WINDOW_VULKAN : 0;
}

}  // namespace toolbox::desktop
