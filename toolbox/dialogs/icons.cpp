#include "dialogs/icons.h"

#include <initializer_list>

#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::dialogs {
namespace {

constexpr int iconRows = 32;
constexpr int bytesPerRow = 4;
constexpr Size iconBytes = iconRows * bytesPerRow;

bool blackAt(const unsigned char *bits, int h, int v)
{
    return bits[v * bytesPerRow + h / 8] >> (7 - h % 8) & 1;
}

void drawBits(const unsigned char *bits, const Rect &box)
{
    for (int v = 0; v < iconRows; ++v)
        for (int h = 0; h < iconRows; ++h) {
            int from = h;
            while (h < iconRows && blackAt(bits, h, v))
                ++h;
            if (h == from)
                continue;
            MoveTo(static_cast<int16_t>(box.left + from), static_cast<int16_t>(box.top + v));
            LineTo(static_cast<int16_t>(box.left + h - 1), static_cast<int16_t>(box.top + v));
        }
}

struct Corner {
    int h, v;
};

void outline(const Rect &box, std::initializer_list<Corner> corners)
{
    const Corner &last = *(corners.end() - 1);
    MoveTo(static_cast<int16_t>(box.left + last.h), static_cast<int16_t>(box.top + last.v));
    for (const Corner &corner : corners)
        LineTo(static_cast<int16_t>(box.left + corner.h), static_cast<int16_t>(box.top + corner.v));
}

void bar(const Rect &box, int left, int top, int right, int bottom)
{
    Rect r;
    SetRect(&r, static_cast<int16_t>(box.left + left), static_cast<int16_t>(box.top + top),
            static_cast<int16_t>(box.left + right), static_cast<int16_t>(box.top + bottom));
    PaintRect(&r);
}

// An octagon with a bar across.
void drawStop(const Rect &box)
{
    PenSize(2, 2);
    outline(box, {{9, 0}, {21, 0}, {30, 9}, {30, 21}, {21, 30}, {9, 30}, {0, 21}, {0, 9}});
    PenSize(1, 1);
    bar(box, 7, 13, 25, 19);
}

// A sheet of paper with three lines.
void drawNote(const Rect &box)
{
    PenSize(2, 2);
    outline(box, {{5, 0}, {20, 0}, {27, 7}, {27, 30}, {5, 30}});
    PenSize(1, 1);
    bar(box, 10, 11, 24, 13);
    bar(box, 10, 17, 24, 19);
    bar(box, 10, 23, 18, 25);
}

// A triangle with an exclamation mark.
void drawCaution(const Rect &box)
{
    PenSize(2, 2);
    outline(box, {{15, 1}, {30, 29}, {0, 29}});
    PenSize(1, 1);
    bar(box, 14, 11, 18, 21);
    bar(box, 14, 23, 18, 26);
}

}  // namespace

void drawIcon(Handle icon, int16_t number, const Rect &box)
{
    if (icon && !*icon)
        LoadResource(icon);
    if (icon && *icon && GetHandleSize(icon) >= iconBytes) {
        unsigned char bits[iconBytes];
        BlockMove(*icon, bits, iconBytes);
        return drawBits(bits, box);
    }
    if (number == 0)
        drawStop(box);
    else if (number == 1)
        drawNote(box);
    else if (number == 2)
        drawCaution(box);
}

}  // namespace toolbox::dialogs
