#include "textedit/lines.h"

#include <algorithm>
#include <array>

#include "quickdraw/port_scope.h"

namespace toolbox::textedit {
namespace {

std::string_view withoutHangingBlanks(std::string_view line)
{
    size_t last = line.find_last_not_of(' ');
    return line.substr(0, last == line.npos ? 0 : last + 1);
}

// The width of each character in the current port's text settings, measured
// once.
class Advances {
public:
    int of(char character)
    {
        int &advance = known_[static_cast<unsigned char>(character)];
        if (advance < 0)
            advance = CharWidth(static_cast<unsigned char>(character));
        return advance;
    }
    Advances() { known_.fill(-1); }

private:
    std::array<int, 256> known_;
};

// Where the next line begins, given that this one begins at start. Blanks may
// hang over the edge, nothing else.
int breakAfter(std::string_view text, int start, int stop, int width, Advances &advances)
{
    int used = 0;
    int wordStart = start;
    for (int at = start; at < stop; ++at) {
        used += advances.of(text[at]);
        if (text[at] == ' ')
            wordStart = at + 1;
        else if (used > width)
            return wordStart > start ? wordStart : std::max(at, start + 1);
    }
    return stop;
}

}  // namespace

std::vector<Line> breakLines(std::string_view text, int width, bool wrap)
{
    std::vector<Line> lines;
    Advances advances;
    int length = static_cast<int>(text.size());
    int start = 0;
    for (;;) {
        size_t cr = text.find('\r', start);
        int stop = cr == text.npos ? length : static_cast<int>(cr);
        int next = start;
        do {
            next = wrap ? breakAfter(text, start, stop, width, advances) : stop;
            lines.push_back({start, next});
            start = next;
        } while (next < stop);
        if (cr == text.npos)
            return lines;
        start = stop + 1;
    }
}

int lineHeight()
{
    FontInfo info;
    GetFontInfo(&info);
    return info.ascent + info.descent + info.leading;
}

int ascent()
{
    FontInfo info;
    GetFontInfo(&info);
    return info.ascent;
}

int widthOf(std::string_view text)
{
    return TextWidth(text.data(), 0, static_cast<int16_t>(text.size()));
}

int leftOf(std::string_view line, const Rect &box, int just)
{
    if (just == 0)
        return box.left;
    int room = box.right - box.left - widthOf(withoutHangingBlanks(line));
    return box.left + (just == 1 ? room / 2 : room);
}

void drawLines(std::string_view text, const Rect &box, int just, bool wrap)
{
    quickdraw::ClipScope clip(box);
    int height = lineHeight();
    int baseline = box.top + ascent();
    for (const Line &line : breakLines(text, box.right - box.left, wrap)) {
        if (baseline - ascent() >= box.bottom)
            break;
        std::string_view characters = text.substr(line.start, line.end - line.start);
        MoveTo(static_cast<int16_t>(leftOf(characters, box, just)), static_cast<int16_t>(baseline));
        DrawText(characters.data(), 0, static_cast<int16_t>(characters.size()));
        baseline += height;
    }
}

}  // namespace toolbox::textedit
