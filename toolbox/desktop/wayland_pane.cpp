// Pixels in memory that is shared with the Wayland compositor. SDL would send
// them through a graphics driver, with twice the memory and more copying.
#include "desktop/wayland_pane.h"

#include "toolbox/host/desktop.h"

#include <SDL_syswm.h>   // after our own headers: it brings in X's macros
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

namespace toolbox::desktop {
namespace {

constexpr std::uint32_t white = 0xFFFFFF;

template <auto destroy> struct Destroying {
    template <typename Proxy> void operator()(Proxy *proxy) const { destroy(proxy); }
};
template <typename Proxy, auto destroy> using Owned = std::unique_ptr<Proxy, Destroying<destroy>>;

// One picture's worth of shared memory. Busy while the compositor reads it.
class SharedBuffer {
public:
    SharedBuffer(wl_shm &memory, SDL_Point size);
    ~SharedBuffer();
    SharedBuffer(const SharedBuffer &) = delete;
    SharedBuffer &operator=(const SharedBuffer &) = delete;

    bool usable() const { return pixels_ != nullptr; }
    bool busy() const { return busy_; }
    SDL_Point size() const { return size_; }
    void fill(const Picture &picture);
    wl_buffer *give();

private:
    SDL_Point size_;
    std::size_t bytes_;
    std::uint32_t *pixels_ = nullptr;
    Owned<wl_buffer, wl_buffer_destroy> buffer_;
    bool busy_ = false;
};

SharedBuffer::SharedBuffer(wl_shm &memory, SDL_Point size) : size_(size), bytes_(std::size_t(size.x) * size.y * 4)
{
    const int file = memfd_create("riders", MFD_CLOEXEC);
    if (file < 0)
        return;
    void *mapped = MAP_FAILED;
    if (ftruncate(file, static_cast<off_t>(bytes_)) == 0)
        mapped = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (mapped != MAP_FAILED) {
        pixels_ = static_cast<std::uint32_t *>(mapped);
        Owned<wl_shm_pool, wl_shm_pool_destroy> pool(wl_shm_create_pool(&memory, file, static_cast<int>(bytes_)));
        buffer_.reset(
            wl_shm_pool_create_buffer(pool.get(), 0, size.x, size.y, size.x * 4, WL_SHM_FORMAT_XRGB8888));
        static const wl_buffer_listener listener = {
            [](void *self, wl_buffer *) { static_cast<SharedBuffer *>(self)->busy_ = false; }};
        wl_buffer_add_listener(buffer_.get(), &listener, this);
    }
    close(file);
}

SharedBuffer::~SharedBuffer()
{
    if (pixels_)
        munmap(pixels_, bytes_);
}

void SharedBuffer::fill(const Picture &picture)
{
    const int width = std::min(size_.x, picture.width);
    for (int row = 0; row < size_.y; ++row) {
        std::uint32_t *to = pixels_ + std::size_t(row) * size_.x;
        const int filled = row < picture.height ? width : 0;
        std::copy_n(picture.pixels.begin() + std::ptrdiff_t(row) * picture.width, filled, to);
        std::fill(to + filled, to + size_.x, white);
    }
}

wl_buffer *SharedBuffer::give()
{
    busy_ = true;
    return buffer_.get();
}

// Uses SDL's connection, as far as SDL shares it, with a separate event queue,
// which SDL fills when it reads the connection.
class WaylandPane : public Pane {
public:
    WaylandPane(SDL_Window *window, const SDL_SysWMinfo &info);
    bool show(const Picture &picture, const SDL_Rect &part) override;
    bool showAll(const Picture &picture) override;

private:
    void findSharedMemory();
    SharedBuffer *freeBuffer(SDL_Point size);
    void damage(const SDL_Rect &part);

    SDL_Window *window_;
    wl_display *display_;
    wl_surface *surface_;
    Owned<wl_event_queue, wl_event_queue_destroy> events_;
    Owned<wl_registry, wl_registry_destroy> registry_;
    Owned<wl_shm, wl_shm_destroy> memory_;
    std::array<std::unique_ptr<SharedBuffer>, 3> buffers_;
};

WaylandPane::WaylandPane(SDL_Window *window, const SDL_SysWMinfo &info)
    : window_(window), display_(info.info.wl.display), surface_(info.info.wl.surface),
      events_(wl_display_create_queue(display_))
{
    findSharedMemory();
    if (!memory_)
        throw DesktopError("no window: the Wayland display shares no memory");
}

void WaylandPane::findSharedMemory()
{
    Owned<wl_display, wl_proxy_wrapper_destroy> display(
        static_cast<wl_display *>(wl_proxy_create_wrapper(display_)));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy *>(display.get()), events_.get());
    registry_.reset(wl_display_get_registry(display.get()));
    static const wl_registry_listener listener = {
        [](void *self, wl_registry *registry, std::uint32_t name, const char *interface, std::uint32_t) {
            if (std::string_view(interface) == wl_shm_interface.name)
                static_cast<WaylandPane *>(self)->memory_.reset(
                    static_cast<wl_shm *>(wl_registry_bind(registry, name, &wl_shm_interface, 1)));
        },
        [](void *, wl_registry *, std::uint32_t) {}};
    wl_registry_add_listener(registry_.get(), &listener, this);
    wl_display_roundtrip_queue(display_, events_.get());
}

// One that the compositor has given back. Those of another size are dropped first.
SharedBuffer *WaylandPane::freeBuffer(SDL_Point size)
{
    wl_display_dispatch_queue_pending(display_, events_.get());
    for (auto &buffer : buffers_)
        if (buffer && !buffer->busy() && (buffer->size().x != size.x || buffer->size().y != size.y))
            buffer.reset();
    for (auto &buffer : buffers_)
        if (buffer && !buffer->busy())
            return buffer.get();
    for (auto &buffer : buffers_)
        if (!buffer) {
            buffer = std::make_unique<SharedBuffer>(*memory_, size);
            if (buffer->usable())
                return buffer.get();
            buffer.reset();
        }
    return nullptr;
}

void WaylandPane::damage(const SDL_Rect &part)
{
    constexpr int everything = std::numeric_limits<std::int32_t>::max();
    if (wl_surface_get_version(surface_) >= WL_SURFACE_DAMAGE_BUFFER_SINCE_VERSION)
        wl_surface_damage_buffer(surface_, part.x, part.y, part.w, part.h);
    else
        wl_surface_damage(surface_, 0, 0, everything, everything);
}

bool WaylandPane::show(const Picture &picture, const SDL_Rect &part)
{
    SharedBuffer *buffer = freeBuffer(pixelsOf(window_));
    if (!buffer)
        return false;
    buffer->fill(picture);
    wl_surface_attach(surface_, buffer->give(), 0, 0);
    damage(part);
    wl_surface_commit(surface_);
    wl_display_flush(display_);
    return true;
}

bool WaylandPane::showAll(const Picture &picture)
{
    const SDL_Point size = pixelsOf(window_);
    return show(picture, {0, 0, size.x, size.y});
}

}  // namespace

std::unique_ptr<Pane> makeWaylandPane(SDL_Window *window)
{
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_WAYLAND)
        throw DesktopError(std::string("no window: ") + SDL_GetError());
    return std::make_unique<WaylandPane>(window, info);
}

}  // namespace toolbox::desktop
