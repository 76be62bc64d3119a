#include "quickdraw/wide_text.h"

#include "quickdraw/current_port.h"
#include "quickdraw/displays.h"
#include "quickdraw/drawing.h"
#include "quickdraw/fonts.h"
#include "toolbox/host/trace.h"
#include "toolbox/host/utf8.h"

namespace toolbox::quickdraw {

std::optional<int> widthOfWide(std::string_view utf8)
{
    const auto points = codePoints(utf8);
    if (!points)
        return std::nullopt;
    const TextStyle style = TextStyle::of(currentPort());
    int width = 0;
    for (char32_t point : *points) {
        const auto advance = wideAdvanceOf(style, point);
        if (!advance)
            return std::nullopt;
        width += *advance;
    }
    return width;
}

static void drawOn(Surface &surface, const GrafPort &port, const std::u32string &points, const Ink &ink)
{
    const Area clip = surface.device(visibleArea(port));
    if (clip.empty())
        return;
    const TextStyle style = TextStyle::of(port);
    const bool graded = surface.canGrade(ink);
    int h = port.pnLoc.h + port.portBits.bounds.left;
    for (char32_t point : points) {
        surface.drawGlyph(wideGlyphOf(style, point, surface.scale(), graded), h,
                          port.pnLoc.v + port.portBits.bounds.top, clip, ink);
        h += wideAdvanceOf(style, point).value_or(0);
    }
}

void drawWide(std::string_view utf8)
{
    const auto width = widthOfWide(utf8);
    if (!width)
        return;
    GrafPort &port = currentPort();
    trace::drawing("text %d,%d \"%s\" font %d size %d face %d color %d", port.pnLoc.h, port.pnLoc.v,
                   std::string(utf8).c_str(), port.txFont, port.txSize, port.txFace, static_cast<int>(port.fgColor));
    for (Surface &surface : surfaces())
        drawOn(surface, port, *codePoints(utf8), Ink::of(port, qd.black, srcOr));
    port.pnLoc.h = static_cast<int16_t>(port.pnLoc.h + *width);
}

}  // namespace toolbox::quickdraw
