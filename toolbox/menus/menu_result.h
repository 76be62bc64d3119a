// How a choice from a menu is returned. Private to the Menu Manager.
#pragma once

#include <cstdint>

namespace toolbox::menus {

// Menu ID and item in one; 0 for no item.
inline std::int32_t menuResult(std::int16_t id, int item)
{
    auto high = static_cast<std::uint32_t>(static_cast<std::uint16_t>(id)) << 16;
    return item == 0 ? 0 : static_cast<std::int32_t>(high | static_cast<std::uint32_t>(item));
}

}  // namespace toolbox::menus
