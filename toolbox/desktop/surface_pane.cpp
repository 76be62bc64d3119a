#include "desktop/surface_pane.h"

namespace toolbox::desktop {
namespace {

// SDL's own way: pixels go to the display server as they are. Except on X it may
// need a graphics driver and the memory that takes.
class SurfacePane : public Pane {
public:
    explicit SurfacePane(SDL_Window *window) : window_(window) {}
    bool show(const Picture &picture, const SDL_Rect &part) override;
    bool showAll(const Picture &picture) override;

private:
    void blit(const Picture &picture, SDL_Rect part, SDL_Surface &target);
    SDL_Window *window_;
};

bool SurfacePane::show(const Picture &picture, const SDL_Rect &part)
{
    SDL_Surface *target = SDL_GetWindowSurface(window_);
    if (!target)
        return false;
    blit(picture, part, *target);
    SDL_Rect inside;
    const SDL_Rect all{0, 0, target->w, target->h};
    if (SDL_IntersectRect(&part, &all, &inside))
        SDL_UpdateWindowSurfaceRects(window_, &inside, 1);
    return true;
}

bool SurfacePane::showAll(const Picture &picture)
{
    SDL_Surface *target = SDL_GetWindowSurface(window_);
    if (!target)
        return false;
    SDL_FillRect(target, nullptr, SDL_MapRGB(target->format, 255, 255, 255));
    blit(picture, {0, 0, picture.width, picture.height}, *target);
    return SDL_UpdateWindowSurface(window_) == 0;
}

void SurfacePane::blit(const Picture &picture, SDL_Rect part, SDL_Surface &target)
{
    auto *pixels = const_cast<std::uint32_t *>(picture.pixels.data());
    SDL_Surface *source = SDL_CreateRGBSurfaceWithFormatFrom(pixels, picture.width, picture.height, 32,
                                                             picture.width * 4, SDL_PIXELFORMAT_RGB888);
    SDL_Rect place = part;
    SDL_BlitSurface(source, &part, &target, &place);
    SDL_FreeSurface(source);
}

}  // namespace

std::unique_ptr<Pane> makeSurfacePane(SDL_Window *window)
{
    return std::make_unique<SurfacePane>(window);
}

}  // namespace toolbox::desktop
