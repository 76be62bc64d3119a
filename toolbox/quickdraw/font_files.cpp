#include "quickdraw/font_files.h"

#include <array>

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {
namespace {

using Faces = std::array<const char *, 4>;  // plain, bold, italic, bold italic

constexpr Faces sans{"NimbusSans-Regular", "NimbusSans-Bold", "NimbusSans-Italic", "NimbusSans-BoldItalic"};
// Already heavy; bold makes it no heavier.
constexpr Faces system{"NimbusSans-Bold", "NimbusSans-Bold", "NimbusSans-BoldItalic", "NimbusSans-BoldItalic"};
constexpr Faces mono{"NimbusMonoPS-Regular", "NimbusMonoPS-Bold", "NimbusMonoPS-Italic",
                     "NimbusMonoPS-BoldItalic"};
constexpr Faces roman{"NimbusRoman-Regular", "NimbusRoman-Bold", "NimbusRoman-Italic", "NimbusRoman-BoldItalic"};

// The OpenType form of this font does not say where its characters are.
constexpr const char *symbolFile = "type1/urw-base35/StandardSymbolsPS.t1";

enum { newYork = 2, times = 20, courier = 22, symbol = 23 };

const Faces &facesOf(int16_t font)
{
    switch (font) {
    case systemFont:
        return system;
    case newYork:
    case times:
        return roman;
    case monaco:
    case courier:
        return mono;
    default:
        return sans;
    }
}

}  // namespace

FontFile fontFileFor(int16_t font, uint8_t face)
{
    if (font == symbol)
        return {symbolFile, true, (face & bold) != 0, (face & italic) != 0};
    const char *name = facesOf(font)[(face & bold ? 1 : 0) + (face & italic ? 2 : 0)];
    return {std::string("opentype/urw-base35/") + name + ".otf"};
}

}  // namespace toolbox::quickdraw
