#include "desktop/window.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "desktop/make_pane.h"
#include "desktop/scale.h"
#include "desktop/wayland_frame.h"
#include "desktop/without_opengl.h"
#include "desktop/x_resources.h"

namespace toolbox::desktop {
namespace {

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

// As they stand in the environment: "DISPLAY=:0, WAYLAND_DISPLAY=wayland-0".
std::string displaysNamed()
{
    std::string named;
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
        if (const std::string value = environment(name); !value.empty())
            named += (named.empty() ? "" : ", ") + std::string(name) + "=" + value;
    return named;
}

int scaleOf(int wanted, double pixelsPerUnit, int display)
{
    DisplayFacts facts{.wanted = wanted,
                       .environment = environment("RIDERS_SCALE"),
                       .toolkitScale = environment("GDK_SCALE"),
                       .toolkitFactor = environment("QT_SCALE_FACTOR"),
                       .pixelsPerPoint = pixelsPerUnit};
    static const double xft = xftDotsPerInch(xResources());  // a window keeps the size that it began with
    facts.wantedDotsPerInch = xft;
    float dotsPerInch = 0;
    if (SDL_GetDisplayDPI(std::max(display, 0), nullptr, &dotsPerInch, nullptr) == 0)
        facts.dotsPerInch = dotsPerInch;
    return chooseScale(facts);
}

// The size wanted, made smaller if the display has less room.
SDL_Point roomFor(SDL_Point wanted)
{
    SDL_Rect usable;
    if (SDL_GetDisplayUsableBounds(0, &usable) != 0)
        return wanted;
    return {std::min(wanted.x, usable.w), std::min(wanted.y, usable.h)};
}

SDL_Window *makeWindow(const DesktopOptions &options)
{
    const int scale = scaleOf(options.scale, 1, 0);
    const SDL_Point size = roomFor({options.width * scale, options.height * scale});
    Uint32 flags = SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI | flagsWithoutOpenGl();
    if (options.fullScreen)
        flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    SDL_Window *window = SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                          size.x, size.y, flags);
    if (!window)
        throw DesktopError(std::string("no window: ") + SDL_GetError());
    return window;
}

SDL_Rect sdlRect(const Rect &rect)
{
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

SDL_Rect united(const SDL_Rect &a, const SDL_Rect &b)
{
    SDL_Rect both;
    SDL_UnionRect(&a, &b, &both);
    return both;
}

SDL_Rect common(const SDL_Rect &a, const SDL_Rect &b)
{
    SDL_Rect both{};
    SDL_IntersectRect(&a, &b, &both);
    return both;
}

void copyPart(const Picture &from, const SDL_Rect &part, Picture &to)
{
    for (int row = part.y; row < part.y + part.h; ++row) {
        const std::size_t start = std::size_t(row) * from.width + part.x;
        std::copy_n(from.pixels.begin() + start, part.w, to.pixels.begin() + start);
    }
}

}  // namespace

Video::Video()
{
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_APP_NAME, "riders");
    // SDL has drivers that show nothing; they are used only when asked for.
    SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "x11,wayland", SDL_HINT_DEFAULT);
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_MOUSE_AUTO_CAPTURE, "1");   // drags continue outside the window
    // Pixels are copied into the window as they are; a graphics driver would only
    // take memory.
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
        throw DesktopError("no display: nothing answers at " + displaysNamed());
}

Video::~Video()
{
    lateErrors_.letPass();
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

Window::Window(const DesktopOptions &options)
    : wantedScale_(options.scale), window_(makeWindow(options)), pane_(makePane(window_.get()))
{
    lostDisplay_.watch(window_.get());
    sayIfWithoutFrame(window_.get());
    SDL_StartTextInput();
    showAgain();
}

SDL_Point Window::pixels() const
{
    return pixelsOf(window_.get());
}

double Window::pixelsPerUnit() const
{
    int width, height;
    SDL_GetWindowSize(window_.get(), &width, &height);
    return width > 0 ? static_cast<double>(pixels().x) / width : 1;
}

int Window::scale() const
{
    return scaleOf(wantedScale_, pixelsPerUnit(), SDL_GetWindowDisplayIndex(window_.get()));
}

void Window::keepAbove(int width, int height, int scale)
{
    const double units = scale / pixelsPerUnit();
    SDL_SetWindowMinimumSize(window_.get(), static_cast<int>(width * units), static_cast<int>(height * units));
}

void Window::resize(int width, int height, int scale)
{
    if (SDL_GetWindowFlags(window_.get()) & (SDL_WINDOW_MAXIMIZED | SDL_WINDOW_FULLSCREEN))
        return;
    const double units = scale / pixelsPerUnit();
    const SDL_Point size = roomFor({static_cast<int>(width * units), static_cast<int>(height * units)});
    SDL_SetWindowSize(window_.get(), size.x, size.y);
}

void Window::setTitle(const std::string &title)
{
    SDL_SetWindowTitle(window_.get(), title.c_str());
}

// The earlier size is set explicitly: without a window manager SDL would keep
// assuming that of the full screen.
void Window::setFullScreen(bool wanted)
{
    if (wanted == fullScreen())
        return;
    if (wanted)
        SDL_GetWindowSize(window_.get(), &sizeBefore_.x, &sizeBefore_.y);
    SDL_SetWindowFullscreen(window_.get(), wanted ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    if (!wanted && sizeBefore_.x > 0)
        SDL_SetWindowSize(window_.get(), sizeBefore_.x, sizeBefore_.y);
}

bool Window::fullScreen() const
{
    return SDL_GetWindowFlags(window_.get()) & SDL_WINDOW_FULLSCREEN;
}

void Window::draw(const Picture &picture, const Rect &changed)
{
    if (picture.width != picture_.width || picture.height != picture_.height) {
        picture_ = picture;
        allDrawn_ = true;
        return;
    }
    const SDL_Rect part = common(sdlRect(changed), {0, 0, picture.width, picture.height});
    if (SDL_RectEmpty(&part))
        return;
    copyPart(picture, part, picture_);
    drawn_ = united(drawn_, part);
}

void Window::show()
{
    if (!drawn())
        return;
    if (allDrawn_ ? !pane_->showAll(picture_) : !pane_->show(picture_, drawn_))
        return;
    drawn_ = {};
    allDrawn_ = false;
}

void Window::showAgain()
{
    allDrawn_ = true;
    show();
}

}  // namespace toolbox::desktop
