#include "quickdraw/glyph_effects.h"

#include <algorithm>

namespace toolbox::quickdraw {
namespace {

std::uint8_t coverageAt(const GlyphImage &glyph, int x, int y)
{
    if (x < 0 || x >= glyph.width || y < 0 || y >= glyph.height)
        return 0;
    return glyph.coverage[static_cast<std::size_t>(y) * static_cast<std::size_t>(glyph.width) +
                          static_cast<std::size_t>(x)];
}

// Also inks all pixels within these distances of an inked one.
GlyphImage smeared(const GlyphImage &glyph, int toLeftAndUp, int toRight, int down)
{
    GlyphImage wide{glyph.left - toLeftAndUp, glyph.top, glyph.width + toLeftAndUp + toRight, glyph.height, {}};
    for (int y = 0; y < wide.height; ++y)
        for (int x = 0; x < wide.width; ++x) {
            std::uint8_t most = 0;
            for (int from = x - toLeftAndUp - toRight; from <= x; ++from)
                most = std::max(most, coverageAt(glyph, from, y));
            wide.coverage.push_back(most);
        }
    GlyphImage all{wide.left, wide.top - toLeftAndUp, wide.width, wide.height + toLeftAndUp + down, {}};
    for (int y = 0; y < all.height; ++y)
        for (int x = 0; x < all.width; ++x) {
            std::uint8_t most = 0;
            for (int from = y - toLeftAndUp - down; from <= y; ++from)
                most = std::max(most, coverageAt(wide, x, from));
            all.coverage.push_back(most);
        }
    return all;
}

void hollow(GlyphImage &around, const GlyphImage &plain)
{
    std::size_t i = 0;
    for (int y = 0; y < around.height; ++y)
        for (int x = 0; x < around.width; ++x, ++i) {
            const int inside = coverageAt(plain, x + around.left - plain.left, y + around.top - plain.top);
            around.coverage[i] = static_cast<std::uint8_t>(std::max(around.coverage[i] - inside, 0));
        }
}

}  // namespace

GlyphImage emboldened(const GlyphImage &thin, int scale)
{
    return smeared(thin, 0, scale, 0);
}

GlyphImage outlined(const GlyphImage &plain, int scale)
{
    return shadowed(plain, scale, 0);
}

GlyphImage shadowed(const GlyphImage &plain, int scale, int depth)
{
    const int further = (1 + depth) * scale;
    GlyphImage around = smeared(plain, scale, further, further);
    hollow(around, plain);
    return around;
}

}  // namespace toolbox::quickdraw
