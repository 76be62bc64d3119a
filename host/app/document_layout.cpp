#include "app/document_layout.h"

#include <algorithm>
#include <cmath>

#include "app/dialog_items.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/text.h"

namespace riders::app {
namespace {

constexpr int kMargin = 16, kGap = 12, kLine = 16, kButton = 20;
constexpr int kFrame = 26;  // of the window above and below
constexpr int kLeastWidth = 480, kLeastHeight = 284, kMostWidth = 1000, kMostHeight = 700;
constexpr int kLabel = 84, kRow = 18;
constexpr int kAway = -600;  // where what is not shown lies

Rect at(int left, int top, int width, int height)
{
    return {static_cast<int16_t>(top), static_cast<int16_t>(left), static_cast<int16_t>(top + std::max(height, 0)),
            static_cast<int16_t>(left + std::max(width, 0))};
}

void placeButtons(DialogPtr dialog, int width, int height)
{
    const int top = height - kMargin - kButton, right = width - kMargin;
    placeItem(dialog, addButton, at(right - 148, top, 148, kButton));
    placeItem(dialog, outlineItem, at(right - 152, top - 4, 156, kButton + 8));
    placeItem(dialog, takeOutButton, at(right - 264, top, 100, kButton));
    placeItem(dialog, closeButton, at(right - 344, top, 70, kButton));
}

// A riders file has one page, of tints.
void placePage(DialogPtr dialog, int width, int height, bool riders)
{
    const int row = height - kMargin - kButton, turning = riders ? kAway : kMargin;
    placeItem(dialog, pageItem, at(kMargin, kMargin, width, row - kGap - kMargin));
    placeItem(dialog, previousButton, at(turning, row, 24, kButton));
    placeItem(dialog, nextButton, at(turning + 30, row, 24, kButton));
    placeItem(dialog, againButton, at(riders ? kMargin : kAway, row, 100, kButton));
    // On the smallest displays there is no room for it.
    constexpr int least = 76;
    placeItem(dialog, pageText,
              at(width - 64 < least ? kAway : turning + 64, row + 2, std::max(width - 64, least), kLine));
}

void placeComments(DialogPtr dialog, int left, int width, int choices)
{
    for (int16_t i = 0; i < 3; ++i) {
        const int shown = choices == 0 ? left : kAway;
        placeItem(dialog, static_cast<int16_t>(titleLabel + i),
                  at(i == 0 ? left : shown, kMargin + kRow * i, kLabel, kLine));
        placeItem(dialog, static_cast<int16_t>(titleText + i),
                  at(shown + kLabel, kMargin + kRow * i, width - kLabel, kLine));
    }
    for (int16_t i = 0; i < kMostChoices; ++i)
        placeItem(dialog, static_cast<int16_t>(firstChoiceText + i),
                  at((i < choices ? left : kAway) + kLabel, kMargin + kRow * i, width - kLabel, kLine));
}

// Below the lines at the top, above the buttons. Returns the side of the two boxes.
int placeDots(DialogPtr dialog, int left, int width, int height, int lines)
{
    const int top = kMargin + lines * kRow + 8;
    const int bottom = height - kMargin - kButton - kGap;
    const int words = bottom - top > 260 ? 7 * kLine : 5 * kLine;
    const int side = std::min((width - kGap) / 2, bottom - top - kLine - 10 - words);
    const int second = left + side + kGap, under = top + kLine + 2 + side + 8;
    placeItem(dialog, withCaption, at(left, top, side, kLine));
    placeItem(dialog, withoutCaption, at(second, top, side, kLine));
    placeItem(dialog, withItem, at(left, top + kLine + 2, side, side));
    placeItem(dialog, withoutItem, at(second, top + kLine + 2, side, side));
    placeItem(dialog, verdictText, at(left, under, width, 2 * kLine));
    placeItem(dialog, factsText, at(left, under + 2 * kLine + 4, width, bottom - under - 2 * kLine - 4));
    return side;
}

}  // namespace

RoomForPictures layOut(DialogPtr dialog, const toolbox::Display &display, int choices)
{
    const int room = display.bounds.right - display.bounds.left;
    const int tall = display.bounds.bottom - display.bounds.top - toolbox::menuBarHeight;
    const int width = std::clamp(room - 24, kLeastWidth, kMostWidth);
    const int height = std::clamp(tall - kFrame - 14, kLeastHeight, kMostHeight);
    const int pageWidth =
        std::clamp(width * 2 / 5, width - 2 * kMargin - kGap - 520, width - 2 * kMargin - kGap - 344);
    const int left = 2 * kMargin + pageWidth, right = width - kMargin - left;
    SizeWindow(dialog, static_cast<int16_t>(width), static_cast<int16_t>(height), true);
    MoveWindow(dialog, static_cast<int16_t>(display.bounds.left + std::max(room - width, 0) / 2),
               static_cast<int16_t>(display.bounds.top + toolbox::menuBarHeight + kFrame +
                                    std::max(tall - kFrame - height, 0) / 3),
               false);
    placeButtons(dialog, width, height);
    placePage(dialog, pageWidth, height, choices > 0);
    placeComments(dialog, left, right, choices);
    const int side = placeDots(dialog, left, right, height, choices > 0 ? choices : 3);
    const Rect page = itemBox(dialog, pageItem);
    return {(page.right - page.left - 2) * display.scale, (page.bottom - page.top - 2) * display.scale,
            (side - 2) * display.scale, (side - 2) * display.scale};
}

Rect pagePlace(const Rect &box, const viewing::PagePicture &page, int scale)
{
    const int width = (page.picture.width + scale - 1) / scale, height = (page.picture.height + scale - 1) / scale;
    return at(box.left + (box.right - box.left - width) / 2, box.top + (box.bottom - box.top - height) / 2, width,
              height);
}

// A part of the last pixel would make the others uneven.
Rect dotsPlace(const Rect &frame, const toolbox::Picture &dots, int enlargement, int scale)
{
    return at(frame.left, frame.top, dots.width * enlargement / scale, dots.height * enlargement / scale);
}

void drawPageAround(const Rect &box, const Rect &place)
{
    RgnHandle around = NewRgn(), inside = NewRgn();
    RectRgn(around, &box);
    RectRgn(inside, &place);
    DiffRgn(around, inside, around);
    EraseRgn(around);
    DisposeRgn(inside);
    DisposeRgn(around);
    Rect frame = place;
    InsetRect(&frame, -1, -1);
    PenNormal();
    FrameRect(&frame);
}

// At least large enough to be seen, and to be seen on any colour.
void drawLoupe(const Rect &place, const JobView::Part &part)
{
    constexpr int least = 9;
    const double width = place.right - place.left, height = place.bottom - place.top;
    const double middleAcross = (part.left + part.right) / 2, middleDown = (part.top + part.bottom) / 2;
    const int wide = std::max(least, static_cast<int>(std::lround((part.right - part.left) * width)));
    const int high = std::max(least, static_cast<int>(std::lround((part.bottom - part.top) * height)));
    Rect loupe = at(place.left + static_cast<int>(std::lround(middleAcross * width)) - wide / 2,
                    place.top + static_cast<int>(std::lround(middleDown * height)) - high / 2, wide, high);
    PenNormal();
    ForeColor(whiteColor);
    InsetRect(&loupe, -2, -2);
    FrameRect(&loupe);
    InsetRect(&loupe, 3, 3);
    FrameRect(&loupe);
    ForeColor(redColor);
    InsetRect(&loupe, -2, -2);
    PenSize(2, 2);
    FrameRect(&loupe);
    PenNormal();
    ForeColor(blackColor);
}

void drawWords(const Rect &box, const std::string &text)
{
    Str255 words;
    toolbox::setPascal(words, toolbox::romanFromUtf8Lossy(text));
    MoveTo(static_cast<int16_t>((box.left + box.right - StringWidth(words)) / 2),
           static_cast<int16_t>((box.top + box.bottom) / 2));
    DrawString(words);
}

toolbox::Picture forDepth(const toolbox::Picture &picture, int depth)
{
    if (depth > 1)
        return picture;
    // Eight by eight thresholds, as far from each other as can be.
    const auto threshold = [](int x, int y) {
        int value = 0;
        for (int bit = 0, mask = x ^ y; bit < 3; ++bit)
            value = value << 2 | (mask >> bit & 1) << 1 | (y >> bit & 1);
        return 4 * value + 2;
    };
    toolbox::Picture dots = picture;
    for (int y = 0; y < dots.height; ++y)
        for (int x = 0; x < dots.width; ++x) {
            std::uint32_t &pixel = dots.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(dots.width) +
                                               static_cast<std::size_t>(x)];
            const auto grey = static_cast<int>(
                ((pixel >> 16 & 0xFF) * 30 + (pixel >> 8 & 0xFF) * 59 + (pixel & 0xFF) * 11) / 100);
            pixel = grey > threshold(x, y) ? 0xFFFFFF : 0;
        }
    return dots;
}

}  // namespace riders::app
