// make_art FOLDER: draws the About box's pictures and makes its sound.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "screens.h"
#include "sound.h"

using namespace art;
using toolbox::Picture;

namespace {

constexpr std::uint32_t paper = 0xFFFFFF, black = 0x000000;
constexpr std::uint32_t cyan = 0x33A9DC, magenta = 0xD9448F, yellow = 0xF6D64A, deepBlue = 0x24428C, slate = 0x2B3A4E;

// Six steps per screen keep a picture of three screens within 256 colours.
double stepped(double coverage)
{
    return std::round(coverage * 5) / 5;
}

std::uint32_t asInk(bool inked)
{
    return inked ? black : paper;
}

// A tint that dissolves into dots from left to right.
constexpr int bannerWidth = 176, bannerHeight = 44;

double fading(double h)
{
    double along = std::clamp(h / bannerWidth, 0.0, 1.0);
    return 1.06 - 1.04 * along;
}

Picture bannerInColor()
{
    const Screen screens[] = {{8, 15, roundSpot}, {8, 75, roundSpot}, {8, 0, roundSpot}};
    const std::uint32_t inks[] = {cyan, magenta, yellow};
    const double strengths[] = {1, 0.78, 0.5};
    return drawn(bannerWidth, bannerHeight, [&](int h, int v) {
        std::uint32_t pixel = paper;
        for (int i = 0; i < 3; ++i) {
            auto ink = [&](double x, double y) { return screens[i].inks(x, y, fading(x) * strengths[i]); };
            pixel = printed(pixel, inks[i], stepped(covered(ink, h, v)));
        }
        return pixel;
    });
}

Picture bannerInBlack()
{
    const Screen screen{8.485281, 45, roundSpot};
    return drawn(bannerWidth, bannerHeight,
                 [&](int h, int v) { return asInk(screen.inks(h + 0.5, v + 0.5, fading(h))); });
}

// A loupe over dots.
constexpr int iconSide = 32;
constexpr double lensAcross = 13, lensDown = 13, lensRadius = 12;

double fromLens(double h, double v)
{
    return std::hypot(h - lensAcross, v - lensDown);
}

bool onFrame(double h, double v)
{
    double along = (h + v) / 2 - 20.5, across = std::abs(h - v) / 2;
    bool handle = along > 0 && along < 9 && across < 1.9;
    double ring = fromLens(h, v);
    return handle || (ring > lensRadius - 2 && ring < lensRadius);
}

bool inLens(double h, double v)
{
    return fromLens(h, v) < lensRadius - 2;
}

Picture iconInColor()
{
    const Screen first{5.656854, 45, roundSpot}, second{5.656854, 0, roundSpot};
    return drawn(iconSide, iconSide, [&](int h, int v) {
        double tint = 0.62 - 0.45 * (h + v) / (2 * lensAcross + 14);
        auto dot = [&](double x, double y) { return inLens(x, y) && first.inks(x, y, tint); };
        auto other = [&](double x, double y) { return inLens(x, y) && second.inks(x, y, tint * 0.7); };
        std::uint32_t pixel = printed(paper, cyan, stepped(covered(dot, h, v)));
        pixel = printed(pixel, magenta, stepped(covered(other, h, v)));
        return printed(pixel, slate, stepped(covered(onFrame, h, v)));
    });
}

Picture iconInBlack()
{
    const Screen screen{4.242641, 45, roundSpot};
    return drawn(iconSide, iconSide, [&](int h, int v) {
        double x = h + 0.5, y = v + 0.5, tint = 0.6 - 0.5 * (h + v) / (2 * lensAcross + 14);
        return asInk(onFrame(x, y) || (inLens(x, y) && screen.inks(x, y, tint)));
    });
}

// Five shapes of dot, each from dark to light.
constexpr int swatchSide = 36, swatchGap = 7, swatches = 5;
constexpr int rowWidth = swatches * swatchSide + (swatches - 1) * swatchGap;

const Screen &swatchScreen(int index)
{
    static const Screen screens[swatches] = {{9, 45, roundSpot},
                                             {9, 30, ellipseSpot},
                                             {7, 15, lineSpot},
                                             {9, 45, diamondSpot},
                                             {9, 0, crossSpot}};
    return screens[index];
}

bool swatchInks(double h, double v)
{
    int index = static_cast<int>(h) / (swatchSide + swatchGap);
    double within = h - index * (swatchSide + swatchGap);
    if (within >= swatchSide)
        return false;
    bool rim = within < 1 || within >= swatchSide - 1 || v < 1 || v >= swatchSide - 1;
    return rim || swatchScreen(index).inks(h, v, 0.85 - 0.75 * v / swatchSide);
}

Picture swatchesInColor()
{
    return drawn(rowWidth, swatchSide,
                 [](int h, int v) { return printed(paper, deepBlue, stepped(covered(swatchInks, h, v))); });
}

Picture swatchesInBlack()
{
    return drawn(rowWidth, swatchSide, [](int h, int v) { return asInk(swatchInks(h + 0.5, v + 0.5)); });
}

}  // namespace

int main(int count, char **arguments)
{
    if (count != 2)
        return std::fputs("usage: make_art FOLDER\n", stderr), 2;
    std::filesystem::path folder = arguments[1];
    bool written = writePng(folder / "about_color.png", bannerInColor()) &&
                   writePng(folder / "about_black.png", bannerInBlack()) &&
                   writePng(folder / "loupe_color.png", iconInColor()) &&
                   writePng(folder / "loupe_black.png", iconInBlack()) &&
                   writePng(folder / "dots_color.png", swatchesInColor()) &&
                   writePng(folder / "dots_black.png", swatchesInBlack());
    std::ofstream sound(folder / "chime.wav", std::ios::binary);
    sound << chime();
    if (!written || !sound.flush())
        return std::fprintf(stderr, "make_art: %s cannot be written\n", folder.c_str()), 1;
    return 0;
}
