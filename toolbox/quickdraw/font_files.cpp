#include "quickdraw/font_files.h"

#include <array>

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {
namespace {

using Faces = std::array<const char *, 4>;  // plain, bold, italic, bold italic

constexpr Faces sans{"NimbusSans-Regular", "NimbusSans-Bold", "NimbusSans-Italic", "NimbusSans-BoldItalic"};
// Heavy as it stands; bold makes it no heavier.
constexpr Faces system{"NimbusSans-Bold", "NimbusSans-Bold", "NimbusSans-BoldItalic", "NimbusSans-BoldItalic"};
constexpr Faces mono{"NimbusMonoPS-Regular", "NimbusMonoPS-Bold", "NimbusMonoPS-Italic",
                     "NimbusMonoPS-BoldItalic"};
constexpr Faces roman{"NimbusRoman-Regular", "NimbusRoman-Bold", "NimbusRoman-Italic", "NimbusRoman-BoldItalic"};

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
        return {"StandardSymbolsPS", true, (face & bold) != 0, (face & italic) != 0};
    return {facesOf(font)[(face & bold ? 1 : 0) + (face & italic ? 2 : 0)]};
}

}  // namespace toolbox::quickdraw
