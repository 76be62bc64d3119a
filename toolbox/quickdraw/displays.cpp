#include "quickdraw/displays.h"

#include <algorithm>
#include <stdexcept>

#include "quickdraw/pictures.h"
#include "quickdraw/present.h"
#include "toolbox/host/session.h"

namespace toolbox {
namespace quickdraw {
namespace {

std::vector<Surface> all;
unsigned timesChanged = 0;

bool hasPlaceOf(const Surface &surface, const Display &display)
{
    return EqualRect(&surface.bounds(), &display.bounds) && surface.scale() == display.scale;
}

Surface surfaceFor(const Display &display)
{
    auto kept =
        std::find_if(all.begin(), all.end(), [&](const Surface &surface) { return hasPlaceOf(surface, display); });
    if (kept == all.end())
        return Surface(display.bounds, display.depth, display.scale,
                       machine().picturesWanted() ? Surface::Kind::seen : Surface::Kind::blind);
    Surface surface = std::move(*kept);
    all.erase(kept);
    surface.setDepth(display.depth);
    return surface;
}

std::vector<Bits> copied(const Rect &global)
{
    std::vector<Bits> parts;
    for (const Surface &surface : all)
        if (Bits bits = surface.copy(global); !bits.picture.pixels.empty())
            parts.push_back(std::move(bits));
    return parts;
}

}  // namespace

bool setDisplays(const std::vector<Display> &displays)
{
    bool same = displays.size() == all.size();
    for (std::size_t i = 0; same && i < all.size(); ++i)
        same = hasPlaceOf(all[i], displays[i]) && displays[i].depth == all[i].depth();
    if (same)
        return false;
    std::vector<Surface> now;
    now.reserve(displays.size());
    for (const Display &display : displays)
        now.push_back(surfaceFor(display));
    all = std::move(now);
    ++timesChanged;
    return true;
}

void forgetDisplays()
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

void fillOnDisplays(const Area &global, const Ink &ink)
{
    for (Surface &surface : all)
        surface.fill(surface.device(global), ink);
}

Area scrollOnDisplays(const Area &global, int dh, int dv)
{
    const Area reached = global & global.movedBy(dh, dv) & desktopArea().movedBy(dh, dv);
    for (const Bits &before : copied(reached.movedBy(-dh, -dv).bounds()))
        for (Surface &surface : all)
            surface.put(before, dh, dv, reached);
    return global - reached;
}

SavedBits saveBits(const Rect &global)
{
    return {copied(global), timesChanged};
}

bool restoreBits(const SavedBits &bits)
{
    if (bits.displays != timesChanged)
        return false;
    for (const Bits &part : bits.parts)
        for (Surface &surface : all)
            surface.put(part, 0, 0, Area(part.bounds));
    return true;
}

void presentDisplays()
{
    for (std::size_t i = 0; i < all.size(); ++i)
        if (auto changed = all[i].takeChanged())
            machine().present(static_cast<int>(i), all[i].picture(), *changed);
}

}  // namespace quickdraw

Picture displayPicture(int index)
{
    return quickdraw::surfaces().at(index).picture();
}

}  // namespace toolbox
