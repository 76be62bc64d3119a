#include "toolbox/host/flash_button.h"

#include <cstdint>

#include "toolbox/events.h"

void toolbox::flashButton(ControlHandle button)
{
    constexpr std::uint32_t ticks = 8;
    HiliteControl(button, inButton);
    Delay(ticks, nullptr);
    HiliteControl(button, 0);
}
