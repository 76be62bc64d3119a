#include <cstring>

#include "toolbox/host/session.h"
#include "toolbox/quickdraw.h"

// The machine draws the pointer, in the shapes it has: the arrow, and for every
// other cursor the one over text.
void SetCursor(const Cursor *cursor)
{
    const bool arrow = std::memcmp(cursor->data, qd.arrow.data, sizeof cursor->data) == 0;
    using Shape = toolbox::Machine::CursorShape;
    toolbox::machine().setCursor(arrow ? Shape::arrow : Shape::text);
}

void InitCursor(void)
{
    SetCursor(&qd.arrow);
}

// Nothing is ever drawn over the pointer, so there is nothing to hide it from.
void HideCursor(void)
{
}

void ShowCursor(void)
{
}
