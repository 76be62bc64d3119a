#include "menus/menu_bytes.h"

#include <string.h>

#include "toolbox/bigendian.h"
#include "toolbox/memory.h"

namespace toolbox::menus {
namespace {

std::uint8_t byteAt(MenuHandle menu, std::int32_t offset)
{
    return static_cast<std::uint8_t>((*menu)[offset]);
}

// The item that starts at the offset, or nothing where the menu ends: at an
// empty text, or where the block is cut short.
std::optional<ItemPlace> itemAt(MenuHandle menu, std::int32_t start, std::int32_t size)
{
    if (start >= size || byteAt(menu, start) == 0)
        return std::nullopt;
    ItemPlace place{start, byteAt(menu, start)};
    if (place.end() > size)
        return std::nullopt;
    return place;
}

std::int32_t firstItemOffset(MenuHandle menu)
{
    return titleOffset + 1 + byteAt(menu, titleOffset);
}

}  // namespace

bool isMenu(MenuHandle menu)
{
    return menu && *menu && GetHandleSize(menu) > titleOffset && GetHandleSize(menu) >= firstItemOffset(menu);
}

std::int16_t menuID(MenuHandle menu)
{
    BigInt16 id;
    memcpy(&id, *menu, sizeof id);
    return id;
}

std::string menuTitle(MenuHandle menu)
{
    return std::string(*menu + titleOffset + 1, byteAt(menu, titleOffset));
}

int itemCount(MenuHandle menu)
{
    if (!isMenu(menu))
        return 0;
    std::int32_t size = GetHandleSize(menu);
    int count = 0;
    for (auto place = itemAt(menu, firstItemOffset(menu), size); place; place = itemAt(menu, place->end(), size))
        ++count;
    return count;
}

std::optional<ItemPlace> findItem(MenuHandle menu, int item)
{
    if (!isMenu(menu) || item < 1)
        return std::nullopt;
    std::int32_t size = GetHandleSize(menu);
    auto place = itemAt(menu, firstItemOffset(menu), size);
    for (int i = 1; place && i < item; ++i)
        place = itemAt(menu, place->end(), size);
    return place;
}

std::int32_t endOfItems(MenuHandle menu)
{
    auto last = findItem(menu, itemCount(menu));
    return last ? last->end() : firstItemOffset(menu);
}

std::string itemText(MenuHandle menu, const ItemPlace &place)
{
    return {*menu + place.start + 1, static_cast<std::size_t>(place.textLength)};
}

std::uint8_t attribute(MenuHandle menu, const ItemPlace &place, Attribute which)
{
    return byteAt(menu, place.attributes() + which);
}

void setAttribute(MenuHandle menu, const ItemPlace &place, Attribute which, std::uint8_t value)
{
    (*menu)[place.attributes() + which] = static_cast<char>(value);
}

std::uint32_t enableFlags(MenuHandle menu)
{
    BigUInt32 flags;
    memcpy(&flags, *menu + flagsOffset, sizeof flags);
    return flags;
}

void setEnableFlags(MenuHandle menu, std::uint32_t flags)
{
    BigUInt32 stored = flags;
    memcpy(*menu + flagsOffset, &stored, sizeof stored);
}

bool isDivider(MenuHandle menu, int item)
{
    auto place = findItem(menu, item);
    return place && (*menu)[place->start + 1] == '-';
}

bool canBeChosen(MenuHandle menu, int item)
{
    if (!findItem(menu, item) || isDivider(menu, item))
        return false;
    std::uint32_t flags = enableFlags(menu);
    return (flags & 1) && (item > lastItemWithFlag || (flags >> item & 1));
}

bool replaceBytes(MenuHandle menu, std::int32_t at, std::int32_t count, std::string_view bytes)
{
    std::int32_t size = GetHandleSize(menu);
    auto inserted = static_cast<std::int32_t>(bytes.size());
    std::int32_t after = size - at - count;
    if (inserted > count) {
        SetHandleSize(menu, size + inserted - count);
        if (MemError() != noErr)
            return false;
    }
    memmove(*menu + at + inserted, *menu + at + count, static_cast<std::size_t>(after));
    memcpy(*menu + at, bytes.data(), bytes.size());
    if (inserted < count)
        SetHandleSize(menu, size + inserted - count);
    return true;
}

std::string textBytes(std::string_view text)
{
    if (text.empty())
        text = " ";
    text = text.substr(0, 255);
    return static_cast<char>(text.size()) + std::string(text);
}

std::string itemBytes(std::string_view text, ItemStyle style)
{
    std::string bytes = textBytes(text);
    for (std::uint8_t part : {style.icon, style.key, style.mark, style.face})
        bytes += static_cast<char>(part);
    return bytes;
}

}  // namespace toolbox::menus
