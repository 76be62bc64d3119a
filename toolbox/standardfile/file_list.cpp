#include "standardfile/file_list.h"

#include <algorithm>

#include "events/tracking.h"
#include "quickdraw/dimming.h"
#include "quickdraw/wide_text.h"
#include "text/letters.h"
#include "toolbox/events.h"
#include "toolbox/host/text.h"
#include "toolbox/host/utf8.h"

namespace toolbox::standardfile {
namespace {

constexpr int rowHeight = 16;
constexpr int arrowHeight = 16;
constexpr int thumbHeight = 16;
constexpr int textIndent = 20;
constexpr int baseline = 12;

void useListText()
{
    TextFont(systemFont);
    TextSize(12);
    TextFace(normal);
    TextMode(srcOr);
}

Point localPoint(Point global)
{
    GlobalToLocal(&global);
    return global;
}

// A triangle of five lines, pointing up (-1) or down (1), in the middle.
void drawTriangle(const Rect &r, int direction)
{
    int middle = (r.left + r.right) / 2 - 1;
    int tip = (r.top + r.bottom) / 2 + direction * 2;
    for (int i = 0; i < 5; ++i) {
        MoveTo(static_cast<int16_t>(middle - i), static_cast<int16_t>(tip - direction * i));
        Line(static_cast<int16_t>(2 * i), 0);
    }
}

}  // namespace

void drawFolderPicture(int16_t left, int16_t top)
{
    Rect body;
    SetRect(&body, left, static_cast<int16_t>(top + 2), static_cast<int16_t>(left + 12), static_cast<int16_t>(top + 11));
    FrameRect(&body);
    MoveTo(static_cast<int16_t>(left + 1), static_cast<int16_t>(top + 1));
    Line(0, 0);
    MoveTo(static_cast<int16_t>(left + 2), top);
    Line(2, 0);
    MoveTo(static_cast<int16_t>(left + 5), static_cast<int16_t>(top + 1));
    Line(0, 0);
}

void drawFilePicture(int16_t left, int16_t top)
{
    MoveTo(static_cast<int16_t>(left + 2), top);
    Line(5, 0);
    Line(3, 3);
    Line(0, 7);
    Line(-8, 0);
    Line(0, -10);
    MoveTo(static_cast<int16_t>(left + 7), top);
    Line(0, 3);
    Line(3, 0);
}

static void drawRomanFitting(const std::string &roman, int width)
{
    constexpr char ellipsis = '\xC9';
    Str255 text;
    setPascal(text, roman);
    for (std::size_t length = roman.size(); length > 0 && StringWidth(text) > width; --length)
        setPascal(text, roman.substr(0, length - 1) + ellipsis);
    DrawString(text);
}

static void drawWideFitting(std::string utf8, int width)
{
    std::string text = utf8;
    while (!utf8.empty() && quickdraw::widthOfWide(text).value_or(0) > width) {
        utf8.resize(beginningOfCharacter(utf8, utf8.size() - 1));
        text = utf8 + "\u2026";
    }
    quickdraw::drawWide(text);
}

void drawFitting(const std::string &roman, const std::string &linuxName, int width)
{
    std::string shown = linuxName;
    std::replace(shown.begin(), shown.end(), ':', '/');
    if (!romanFromUtf8(shown) && quickdraw::widthOfWide(shown))
        drawWideFitting(shown, width);
    else
        drawRomanFitting(roman, width);
}

void FileList::setPlace(const Rect &list, const Rect &scrollBar)
{
    list_ = list;
    scrollBar_ = scrollBar;
}

void FileList::setRows(std::vector<Row> rows)
{
    rows_ = std::move(rows);
    first_ = 0;
    selected_ = lastClicked_ = -1;
}

int FileList::rowsShown() const
{
    return std::max(1, (list_.bottom - list_.top - 2) / rowHeight);
}

int FileList::lastFirst() const
{
    return std::max(0, static_cast<int>(rows_.size()) - rowsShown());
}

const Row *FileList::selected() const
{
    return selected_ < 0 ? nullptr : &rows_[static_cast<std::size_t>(selected_)];
}

Rect FileList::rowRect(int index) const
{
    if (index < first_ || index >= first_ + rowsShown() || index >= static_cast<int>(rows_.size()))
        return {};
    Rect row;
    int top = list_.top + 1 + (index - first_) * rowHeight;
    SetRect(&row, static_cast<int16_t>(list_.left + 1), static_cast<int16_t>(top),
            static_cast<int16_t>(list_.right - 1), static_cast<int16_t>(top + rowHeight));
    return row;
}

int FileList::rowAt(Point where) const
{
    for (int index = first_; index < first_ + rowsShown(); ++index) {
        Rect row = rowRect(index);
        if (PtInRect(where, &row))
            return index;
    }
    return -1;
}

void FileList::drawList() const
{
    PenNormal();
    EraseRect(&list_);
    FrameRect(&list_);
    for (int index = first_; index < first_ + rowsShown() && index < static_cast<int>(rows_.size()); ++index)
        drawRow(index);
}

void FileList::drawRow(int index) const
{
    const Row &row = rows_[static_cast<std::size_t>(index)];
    Rect r = rowRect(index);
    EraseRect(&r);
    auto pictureLeft = static_cast<int16_t>(r.left + 4), pictureTop = static_cast<int16_t>(r.top + 2);
    if (row.isFolder)
        drawFolderPicture(pictureLeft, pictureTop);
    else
        drawFilePicture(pictureLeft, pictureTop);
    useListText();
    MoveTo(static_cast<int16_t>(r.left + textIndent), static_cast<int16_t>(r.top + baseline));
    drawFitting(row.name, row.linuxName, r.right - r.left - textIndent - 2);
    if (!row.selectable)
        quickdraw::dim(r);
    if (index == selected_)
        InvertRect(&r);
}

Rect FileList::arrowUp() const
{
    Rect arrow = scrollBar_;
    arrow.bottom = static_cast<int16_t>(arrow.top + arrowHeight);
    return arrow;
}

Rect FileList::arrowDown() const
{
    Rect arrow = scrollBar_;
    arrow.top = static_cast<int16_t>(arrow.bottom - arrowHeight);
    return arrow;
}

// Empty when everything is visible.
Rect FileList::thumb() const
{
    if (lastFirst() == 0)
        return {};
    int way = scrollBar_.bottom - scrollBar_.top - 2 * arrowHeight - thumbHeight;
    Rect thumb = arrowUp();
    OffsetRect(&thumb, 0, static_cast<int16_t>(arrowHeight + way * first_ / lastFirst()));
    return thumb;
}

void FileList::drawScrollBar() const
{
    PenNormal();
    EraseRect(&scrollBar_);
    Rect up = arrowUp(), down = arrowDown(), handle = thumb();
    if (lastFirst() > 0)
        FillRect(&scrollBar_, &qd.ltGray);
    for (const Rect &arrow : {up, down}) {
        EraseRect(&arrow);
        FrameRect(&arrow);
    }
    FrameRect(&scrollBar_);
    drawTriangle(up, -1);
    drawTriangle(down, 1);
    if (!EmptyRect(&handle)) {
        EraseRect(&handle);
        FrameRect(&handle);
    }
}

void FileList::select(int index)
{
    if (index >= 0 && !rows_[static_cast<std::size_t>(index)].selectable)
        index = -1;
    if (index == selected_)
        return;
    int before = selected_;
    selected_ = index;
    for (int changed : {before, index}) {
        Rect r = rowRect(changed);
        if (changed >= 0 && !EmptyRect(&r))
            drawRow(changed);
    }
}

void FileList::scrollTo(int first)
{
    first = std::clamp(first, 0, lastFirst());
    if (first == first_)
        return;
    first_ = first;
    drawList();
    drawScrollBar();
}

void FileList::moveSelection(int step)
{
    int count = static_cast<int>(rows_.size());
    int index = selected_ < 0 && step < 0 ? count : selected_;
    do
        index += step;
    while (index >= 0 && index < count && !rows_[static_cast<std::size_t>(index)].selectable);
    if (index < 0 || index >= count)
        return;
    select(index);
    scrollTo(std::clamp(first_, index - rowsShown() + 1, index));
}

void FileList::selectNamed(const std::string &beginning)
{
    std::string wanted = foldedCase(beginning);
    auto found = std::find_if(rows_.begin(), rows_.end(), [&](const Row &row) {
        return row.selectable && foldedCase(row.name).starts_with(wanted);
    });
    if (found == rows_.end())
        return;
    int index = static_cast<int>(found - rows_.begin());
    select(index);
    scrollTo(std::clamp(first_, index - rowsShown() + 1, index));
}

FileList::Click FileList::click(Point where, std::uint32_t when)
{
    if (PtInRect(where, &scrollBar_)) {
        trackScrolling(partAt(where));
        return Click::tracked;
    }
    if (!PtInRect(where, &list_))
        return Click::outside;
    int row = rowAt(where);
    bool again = row >= 0 && row == lastClicked_ && when - lastClickTime_ <= GetDblTime();
    select(row);
    trackSelection();
    lastClicked_ = again ? -1 : selected_;
    lastClickTime_ = when;
    return again && selected_ == row ? Click::opened : Click::tracked;
}

// The selection follows the mouse while the button is down.
void FileList::trackSelection()
{
    while (std::optional<Input> input = events::nextTrackingInput()) {
        int row = rowAt(localPoint(input->where));
        if (row >= 0)
            select(row);
        if (input->kind == Input::Kind::mouseUp)
            return;
    }
}

FileList::Part FileList::partAt(Point where) const
{
    Rect up = arrowUp(), down = arrowDown(), handle = thumb();
    if (lastFirst() == 0 || !PtInRect(where, &scrollBar_))
        return Part::none;
    if (PtInRect(where, &up))
        return Part::up;
    if (PtInRect(where, &down))
        return Part::down;
    if (PtInRect(where, &handle))
        return Part::thumb;
    return where.v < handle.top ? Part::pageUp : Part::pageDown;
}

void FileList::scrollBy(Part part)
{
    int page = std::max(1, rowsShown() - 1);
    if (part == Part::up || part == Part::down)
        scrollTo(first_ + (part == Part::down ? 1 : -1));
    else if (part == Part::pageUp || part == Part::pageDown)
        scrollTo(first_ + (part == Part::pageDown ? page : -page));
}

// Scrolls once at the press, then repeatedly while the mouse stays on the part.
void FileList::trackScrolling(Part part)
{
    constexpr std::uint32_t firstPause = 24, pause = 6;
    Point mouse;
    GetMouse(&mouse);
    if (part == Part::thumb)
        return trackThumb(mouse);
    scrollBy(part);
    for (std::uint32_t next = TickCount() + firstPause; StillDown();) {
        GetMouse(&mouse);
        if (TickCount() < next || partAt(mouse) != part)
            continue;
        scrollBy(part);
        next = TickCount() + pause;
    }
    EventRecord release;
    GetNextEvent(1 << mouseUp, &release);
}

void FileList::trackThumb(Point start)
{
    int firstAtStart = first_;
    int way = scrollBar_.bottom - scrollBar_.top - 2 * arrowHeight - thumbHeight;
    while (std::optional<Input> input = events::nextTrackingInput()) {
        int moved = localPoint(input->where).v - start.v;
        if (way > 0)
            scrollTo(firstAtStart + (moved * lastFirst() + (moved < 0 ? -way : way) / 2) / way);
        if (input->kind == Input::Kind::mouseUp)
            return;
    }
}

}  // namespace toolbox::standardfile
