#include "dialogs/placement.h"

#include "toolbox/quickdraw.h"

namespace toolbox::dialogs {

Rect placed(Rect bounds, int16_t position)
{
    // Low byte: where; the high byte's lower bits: how.
    constexpr int how = 0x3800, centred = 0x2800, alertLike = 0x3000;
    if ((position & 0xFF) != 0x0A)
        return bounds;
    Rect screen = qd.screenBits.bounds;
    screen.top += 20;
    int freeAcross = screen.right - screen.left - (bounds.right - bounds.left);
    int freeDown = screen.bottom - screen.top - (bounds.bottom - bounds.top);
    int above = 0;
    if ((position & how) == centred)
        above = freeDown / 2;
    else if ((position & how) == alertLike)
        above = freeDown / 5;
    else
        return bounds;
    OffsetRect(&bounds, static_cast<int16_t>(screen.left + freeAcross / 2 - bounds.left),
               static_cast<int16_t>(screen.top + above - bounds.top));
    return bounds;
}

}  // namespace toolbox::dialogs
