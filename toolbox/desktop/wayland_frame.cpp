#include "desktop/wayland_frame.h"

#include <SDL_syswm.h>
#include <dlfcn.h>
#include <unistd.h>
#include <wayland-client.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <system_error>

namespace toolbox::desktop {
namespace {

// Where libdecor looks; empty where SDL has not loaded it.
std::filesystem::path pluginFolder()
{
    if (const char *const named = std::getenv("LIBDECOR_PLUGIN_DIR"))
        return named;
    void *const library = dlopen("libdecor-0.so.0", RTLD_LAZY | RTLD_NOLOAD);
    void *const symbol = library == nullptr ? nullptr : dlsym(library, "libdecor_new");
    Dl_info info{};
    if (symbol == nullptr || dladdr(symbol, &info) == 0)
        return {};
    return std::filesystem::path(info.dli_fname).parent_path() / "libdecor" / "plugins-1";
}

// Asks in a queue of its own, so that nothing of SDL's is passed over.
bool drawsFrames(wl_display *display)
{
    const std::unique_ptr<wl_event_queue, decltype(&wl_event_queue_destroy)> queue(
        wl_display_create_queue(display), wl_event_queue_destroy);
    auto *const wrapper = static_cast<wl_display *>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy *>(wrapper), queue.get());
    wl_registry *const registry = wl_display_get_registry(wrapper);
    bool found = false;
    static const wl_registry_listener listener = {
        [](void *isFound, wl_registry *, std::uint32_t, const char *interface, std::uint32_t) {
            if (std::string_view(interface) == "zxdg_decoration_manager_v1")
                *static_cast<bool *>(isFound) = true;
        },
        [](void *, wl_registry *, std::uint32_t) {}};
    wl_registry_add_listener(registry, &listener, &found);
    wl_display_roundtrip_queue(display, queue.get());
    wl_registry_destroy(registry);
    wl_proxy_wrapper_destroy(wrapper);
    return found;
}

}  // namespace

bool hasFramePlugin(const std::filesystem::path &folder)
{
    std::error_code failed;
    for (std::filesystem::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed))
        if (at->path().extension() == ".so")
            return true;
    return false;
}

void sayIfWithoutFrame(SDL_Window *window)
{
    if (isatty(STDERR_FILENO) == 0)
        return;
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_WAYLAND)
        return;
    if (!hasFramePlugin(pluginFolder()) && !drawsFrames(info.info.wl.display))
        std::fputs(
            "riders: windows have no frame here, since nothing draws one; the package libdecor-0-plugin-1-cairo "
            "has what does\n",
            stderr);
}

}  // namespace toolbox::desktop
