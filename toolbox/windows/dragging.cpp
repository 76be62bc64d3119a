// A window that follows the mouse as an outline.
#include <array>

#include "events/tracking.h"
#include "quickdraw/pictures.h"
#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "quickdraw/region_data.h"
#include "toolbox/windows.h"
#include "windows/painting.h"

using namespace toolbox;

namespace {

// A grey frame over everything; what lies under it is restored when it moves and
// at the end.
class Outline {
public:
    explicit Outline(const Rect &r) : place_(r) { show(); }
    ~Outline() { hide(); }
    Outline(const Outline &) = delete;
    Outline &operator=(const Outline &) = delete;

    void moveTo(const Rect &r)
    {
        if (EqualRect(&r, &place_))
            return;
        hide();
        place_ = r;
        show();
    }

private:
    static constexpr int16_t thickness = 1;

    void show()
    {
        const Rect &r = place_;
        const auto inner = [](int edge, int by) { return static_cast<int16_t>(edge + by); };
        under_ = {quickdraw::saveBits({r.top, r.left, inner(r.top, thickness), r.right}),
                  quickdraw::saveBits({inner(r.bottom, -thickness), r.left, r.bottom, r.right}),
                  quickdraw::saveBits({r.top, r.left, r.bottom, inner(r.left, thickness)}),
                  quickdraw::saveBits({r.top, inner(r.right, -thickness), r.bottom, r.right})};
        quickdraw::DrawingScope scope(quickdraw::desktopPort());
        quickdraw::ClipScope clip(quickdraw::areaOf(GetGrayRgn()));
        PenPat(&qd.gray);
        PenMode(patXor);   // visible on the desktop's grey too
        FrameRect(&r);
    }
    // Nothing to restore once the displays have changed: all was redrawn.
    void hide()
    {
        for (const quickdraw::SavedBits &bits : under_)
            quickdraw::restoreBits(bits);
    }

    Rect place_;
    std::array<quickdraw::SavedBits, 4> under_;
};

Rect movedBy(Rect r, Point from, Point to)
{
    OffsetRect(&r, static_cast<int16_t>(to.h - from.h), static_cast<int16_t>(to.v - from.v));
    return r;
}

// Where the mouse is released; nothing when it never is.
std::optional<Point> release(const Rect &frame, Point start, const Rect &bounds)
{
    Outline outline(frame);
    while (auto input = events::nextTrackingInput()) {
        if (input->kind == Input::Kind::mouseUp)
            return input->where;
        outline.moveTo(PtInRect(input->where, &bounds) ? movedBy(frame, start, input->where) : frame);
    }
    return std::nullopt;
}

}  // namespace

void DragWindow(WindowPtr window, Point start, const Rect *bounds)
{
    auto *const record = reinterpret_cast<WindowPeek>(window);
    const Rect frame = (**record->strucRgn).rgnBBox;
    const std::optional<Point> end = release(frame, start, *bounds);
    if (!end || !PtInRect(*end, bounds) || (end->h == start.h && end->v == start.v))
        return;
    const Point corner = windows::globalOrigin(*record);
    MoveWindow(window, static_cast<int16_t>(corner.h + window->portRect.left + end->h - start.h),
               static_cast<int16_t>(corner.v + window->portRect.top + end->v - start.v), false);
}
