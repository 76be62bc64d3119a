// The bytes of a 'MENU' and where its parts lie. A menu may come from any
// file, so nothing here reads past the block. Private to the Menu Manager.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "toolbox/menus.h"

namespace toolbox::menus {

struct ItemStyle {
    std::uint8_t icon = 0;
    std::uint8_t key = 0;
    std::uint8_t mark = 0;
    std::uint8_t face = 0;
};

// Offsets into the block.
struct ItemPlace {
    std::int32_t start;        // of the length byte
    std::int32_t textLength;
    std::int32_t attributes() const { return start + 1 + textLength; }
    std::int32_t end() const { return attributes() + 4; }
};

enum Attribute { iconByte = 0, keyByte = 1, markByte = 2, faceByte = 3 };

inline constexpr std::int32_t flagsOffset = 10;
inline constexpr std::int32_t titleOffset = 14;
inline constexpr int lastItemWithFlag = 31;

// Whether there is a block with at least a whole title in it.
bool isMenu(MenuHandle menu);
std::int16_t menuID(MenuHandle menu);
std::string menuTitle(MenuHandle menu);
int itemCount(MenuHandle menu);
// Nothing for 0 or less, or beyond the last item.
std::optional<ItemPlace> findItem(MenuHandle menu, int item);
// Where an item after the last one would start.
std::int32_t endOfItems(MenuHandle menu);
std::string itemText(MenuHandle menu, const ItemPlace &place);
std::uint8_t attribute(MenuHandle menu, const ItemPlace &place, Attribute which);
void setAttribute(MenuHandle menu, const ItemPlace &place, Attribute which, std::uint8_t value);

std::uint32_t enableFlags(MenuHandle menu);
void setEnableFlags(MenuHandle menu, std::uint32_t flags);
// False for a divider, a disabled item and every item of a disabled menu.
bool canBeChosen(MenuHandle menu, int item);
bool isDivider(MenuHandle menu, int item);

// Replaces count bytes with others; the block may move. False, with nothing
// changed, when there is no room.
bool replaceBytes(MenuHandle menu, std::int32_t at, std::int32_t count, std::string_view bytes);
// An item as it is stored. An empty text becomes one space: empty, it would end
// the menu.
std::string itemBytes(std::string_view text, ItemStyle style = {});
std::string textBytes(std::string_view text);

}  // namespace toolbox::menus
