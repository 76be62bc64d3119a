#include "textedit/lines.h"

#include "windows/port_scope.h"

namespace toolbox::textedit {
namespace {

std::string_view withoutHangingBlanks(std::string_view line)
{
    size_t last = line.find_last_not_of(' ');
    return line.substr(0, last == line.npos ? 0 : last + 1);
}

// The end of the word that begins at or after start, before stop.
int wordEnd(std::string_view text, int start, int stop)
{
    int at = start;
    while (at < stop && text[at] == ' ')
        ++at;
    while (at < stop && text[at] != ' ')
        ++at;
    return at;
}

int charactersThatFit(std::string_view text, int start, int stop, int width)
{
    int at = start + 1;
    while (at < stop && widthOf(text.substr(start, at + 1 - start)) <= width)
        ++at;
    return at;
}

// Where the next line begins, given that this one begins at start.
int breakAfter(std::string_view text, int start, int stop, int width)
{
    int fits = start;
    while (fits < stop) {
        int end = wordEnd(text, fits, stop);
        if (widthOf(withoutHangingBlanks(text.substr(start, end - start))) > width)
            break;
        fits = end;
    }
    if (fits == start && fits < stop)
        return charactersThatFit(text, start, stop, width);
    while (fits < stop && text[fits] == ' ')
        ++fits;
    return fits;
}

}  // namespace

std::vector<Line> breakLines(std::string_view text, int width, bool wrap)
{
    std::vector<Line> lines;
    int length = static_cast<int>(text.size());
    int start = 0;
    for (;;) {
        size_t cr = text.find('\r', start);
        int stop = cr == text.npos ? length : static_cast<int>(cr);
        int next = start;
        do {
            next = wrap ? breakAfter(text, start, stop, width) : stop;
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
    ClipScope clip(box);
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
