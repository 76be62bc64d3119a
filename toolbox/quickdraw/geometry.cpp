#include "toolbox/quickdraw.h"

#include <algorithm>

#include "quickdraw/area.h"

void SetPt(Point *point, int16_t h, int16_t v)
{
    *point = {v, h};
}

void SetRect(Rect *r, int16_t left, int16_t top, int16_t right, int16_t bottom)
{
    *r = {top, left, bottom, right};
}

// Coordinates that leave the plane wrap around, as 16-bit sums do.
static int16_t sum(int a, int b)
{
    return static_cast<int16_t>(a + b);
}

void OffsetRect(Rect *r, int16_t dh, int16_t dv)
{
    *r = {sum(r->top, dv), sum(r->left, dh), sum(r->bottom, dv), sum(r->right, dh)};
}

void InsetRect(Rect *r, int16_t dh, int16_t dv)
{
    *r = {sum(r->top, dv), sum(r->left, dh), sum(r->bottom, -dv), sum(r->right, -dh)};
    if (EmptyRect(r))
        *r = {};
}

Boolean SectRect(const Rect *a, const Rect *b, Rect *result)
{
    Rect both{std::max(a->top, b->top), std::max(a->left, b->left), std::min(a->bottom, b->bottom),
              std::min(a->right, b->right)};
    bool overlap = !EmptyRect(a) && !EmptyRect(b) && !EmptyRect(&both);
    *result = overlap ? both : Rect{};
    return overlap;
}

void UnionRect(const Rect *a, const Rect *b, Rect *result)
{
    if (EmptyRect(a))
        *result = *b;
    else if (EmptyRect(b))
        *result = *a;
    else
        *result = {std::min(a->top, b->top), std::min(a->left, b->left), std::max(a->bottom, b->bottom),
                   std::max(a->right, b->right)};
}

Boolean PtInRect(Point point, const Rect *r)
{
    return point.v >= r->top && point.v < r->bottom && point.h >= r->left && point.h < r->right;
}

Boolean EqualRect(const Rect *a, const Rect *b)
{
    return a->top == b->top && a->left == b->left && a->bottom == b->bottom && a->right == b->right;
}

Boolean EmptyRect(const Rect *r)
{
    return toolbox::quickdraw::emptyRect(*r);
}
