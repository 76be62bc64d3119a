#include "quickdraw/screens.h"

#include <algorithm>
#include <stdexcept>

#include "quickdraw/pictures.h"
#include "quickdraw/present.h"
#include "toolbox/host/session.h"

namespace toolbox {
namespace quickdraw {
namespace {

std::vector<Surface> all;

bool sameRect(const Rect &a, const Rect &b)
{
    return EqualRect(&a, &b);
}

Surface surfaceFor(const Screen &screen)
{
    auto kept = std::find_if(all.begin(), all.end(),
                             [&](const Surface &surface) { return sameRect(surface.bounds(), screen.bounds); });
    if (kept == all.end())
        return Surface(screen.bounds, screen.depth, 1,
                       machine().picturesWanted() ? Surface::Kind::seen : Surface::Kind::blind);
    Surface surface = std::move(*kept);
    all.erase(kept);
    surface.setDepth(screen.depth);
    return surface;
}

// A pixel of a picture that covers the global rectangle.
template <typename AnyPicture> auto &pixelAt(AnyPicture &picture, const Rect &global, int h, int v)
{
    return picture.pixels[std::size_t(v - global.top) * picture.width + (h - global.left)];
}

}  // namespace

bool setScreens(const std::vector<Screen> &screens)
{
    bool same = screens.size() == all.size();
    for (std::size_t i = 0; same && i < all.size(); ++i)
        same = sameRect(screens[i].bounds, all[i].bounds()) && screens[i].depth == all[i].depth();
    if (same)
        return false;
    std::vector<Surface> now;
    for (const Screen &screen : screens)
        now.push_back(surfaceFor(screen));
    all = std::move(now);
    return true;
}

void forgetScreens()
{
    all.clear();
}

std::vector<Surface> &surfaces()
{
    return all;
}

Area desktopArea()
{
    Area area;
    for (const Surface &surface : all)
        area = area | Area(surface.bounds());
    return area;
}

void fillOnScreens(const Area &global, const Ink &ink)
{
    for (Surface &surface : all)
        surface.fill(global, ink);
}

void paintOnScreens(const Area &global,
                    const std::function<std::uint32_t(int h, int v, std::uint32_t under)> &pixelAt)
{
    for (Surface &surface : all) {
        if (surface.blind())
            continue;
        const Area here = global & Area(surface.bounds());
        for (const Box &box : here.boxes())
            for (int v = box.y1; v < box.y2; ++v)
                for (int h = box.x1; h < box.x2; ++h)
                    surface.setPixel(h, v, pixelAt(h, v, surface.pixel(h, v)));
    }
}

Area scrollOnScreens(const Area &global, int dh, int dv)
{
    const Rect extent = global.bounds();
    const Area reached = global & global.movedBy(dh, dv) & desktopArea().movedBy(dh, dv);
    if (std::all_of(all.begin(), all.end(), [](const Surface &surface) { return surface.blind(); }))
        return global - reached;
    const Picture before = saveBits(extent);
    for (Surface &surface : all) {
        const Area here = reached & Area(surface.bounds());
        for (const Box &box : here.boxes())
            for (int v = box.y1; v < box.y2; ++v)
                for (int h = box.x1; h < box.x2; ++h)
                    surface.setPixel(h, v, pixelAt(before, extent, h - dh, v - dv));
    }
    return global - reached;
}

Picture saveBits(const Rect &global)
{
    Picture bits;
    if (emptyRect(global))
        return bits;
    bits.width = global.right - global.left;
    bits.height = global.bottom - global.top;
    bits.pixels.assign(std::size_t(bits.width) * bits.height, 0xFFFFFF);
    for (const Surface &surface : all) {
        const Area here = Area(global) & Area(surface.bounds());
        for (const Box &box : here.boxes())
            for (int v = box.y1; v < box.y2; ++v)
                for (int h = box.x1; h < box.x2; ++h)
                    pixelAt(bits, global, h, v) = surface.pixel(h, v);
    }
    return bits;
}

void restoreBits(const Rect &global, const Picture &bits)
{
    if (bits.width != global.right - global.left || bits.height != global.bottom - global.top)
        return;
    for (Surface &surface : all) {
        const Area here = Area(global) & Area(surface.bounds());
        for (const Box &box : here.boxes())
            for (int v = box.y1; v < box.y2; ++v)
                for (int h = box.x1; h < box.x2; ++h)
                    surface.setPixel(h, v, pixelAt(bits, global, h, v));
    }
}

void presentScreens()
{
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].takeChanged())
            machine().present(static_cast<int>(i), all[i].picture());
}

}  // namespace quickdraw

Picture screenPicture(int index)
{
    return quickdraw::surfaces().at(index).picture();
}

}  // namespace toolbox
