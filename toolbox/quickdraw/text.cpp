#include "toolbox/quickdraw.h"

#include <algorithm>
#include <string_view>

#include "quickdraw/current_port.h"
#include "quickdraw/displays.h"
#include "quickdraw/drawing.h"
#include "quickdraw/fonts.h"
#include "toolbox/host/drawn_text.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"

using namespace toolbox;
using namespace toolbox::quickdraw;

namespace {

DrawnTextProc drawnTextReader;

std::string_view stretch(const void *text, int16_t first, int16_t count)
{
    return {static_cast<const char *>(text) + first, static_cast<std::size_t>(std::max<int16_t>(count, 0))};
}

int widthOf(const GrafPort &port, std::string_view text)
{
    const TextStyle style = TextStyle::of(port);
    int width = 0;
    for (char character : text)
        width += advanceOf(style, static_cast<uint8_t>(character));
    return std::min(width, 32767);
}

void traceText(const GrafPort &port, std::string_view text)
{
    if (trace::drawingWanted())
        trace::drawing("text %d,%d %s font %d size %d face %d color %d", port.pnLoc.h, port.pnLoc.v,
                       trace::quoted(utf8FromRoman(text)).c_str(), port.txFont, port.txSize, port.txFace,
                       static_cast<int>(port.fgColor));
}

void letRead(GrafPort &port, std::string_view text)
{
    if (drawnTextReader)
        drawnTextReader(&port, port.pnLoc, std::string(text));
}

// The last letter of an italic text leans beyond its width.
int leanOf(const GrafPort &port)
{
    return port.txFace & italic ? fontInfoOf(TextStyle::of(port)).ascent / 2 : 0;
}

Rect textBox(const GrafPort &port, int width)
{
    const FontInfo info = fontInfoOf(TextStyle::of(port));
    const Point pen = port.pnLoc;
    auto to16 = [](int value) { return static_cast<int16_t>(std::clamp(value, -32768, 32767)); };
    return {to16(pen.v - info.ascent), pen.h, to16(pen.v + info.descent), to16(pen.h + width)};
}

void drawGlyphs(const GrafPort &port, std::string_view text, const Ink &ink)
{
    const TextStyle style = TextStyle::of(port);
    const Area visible = visibleArea(port);
    for (Surface &surface : surfaces()) {
        const Area clip = surface.device(visible);
        if (clip.empty())
            continue;
        const bool graded = ink.onBlack != Action::invert && surface.canGrade(ink);
        int h = port.pnLoc.h + port.portBits.bounds.left;
        const int v = port.pnLoc.v + port.portBits.bounds.top;
        for (char each : text) {
            const auto character = static_cast<uint8_t>(each);
            surface.drawGlyph(glyphOf(style, character, surface.scale(), graded), h, v, clip, ink);
            h += advanceOf(style, character);
        }
    }
}

void underlineText(const GrafPort &port, int width, const Ink &ink)
{
    const Rect box = textBox(port, width);
    const auto top = static_cast<int16_t>(port.pnLoc.v + 1);
    paintShape(port, Area(Rect{top, box.left, static_cast<int16_t>(top + 1), box.right}), ink);
}

void drawStretch(std::string_view text)
{
    GrafPort &port = currentPort();
    traceText(port, text);
    letRead(port, text);
    const int width = widthOf(port, text);
    const Ink ink = Ink::of(port, qd.black, port.txMode);
    if (ink.onWhite == Action::back)
        paintShape(port, Area(textBox(port, width + leanOf(port))), Ink::of(port, qd.white, patCopy));
    drawGlyphs(port, text, ink);
    if (port.txFace & underline)
        underlineText(port, width, ink);
    port.pnLoc.h = static_cast<int16_t>(port.pnLoc.h + width);
}

}  // namespace

void toolbox::setDrawnTextProc(DrawnTextProc proc)
{
    drawnTextReader = std::move(proc);
}

void GetFontInfo(FontInfo *info)
{
    *info = fontInfoOf(TextStyle::of(currentPort()));
}

int16_t StringWidth(ConstStr255Param text)
{
    return static_cast<int16_t>(widthOf(currentPort(), pascalView(text)));
}

int16_t TextWidth(const void *text, int16_t first, int16_t count)
{
    return static_cast<int16_t>(widthOf(currentPort(), stretch(text, first, count)));
}

int16_t CharWidth(int16_t character)
{
    return static_cast<int16_t>(advanceOf(TextStyle::of(currentPort()), static_cast<uint8_t>(character)));
}

void DrawString(ConstStr255Param text)
{
    drawStretch(pascalView(text));
}

void DrawText(const void *text, int16_t first, int16_t count)
{
    drawStretch(stretch(text, first, count));
}

void DrawChar(int16_t character)
{
    const auto byte = static_cast<char>(character);
    drawStretch({&byte, 1});
}
