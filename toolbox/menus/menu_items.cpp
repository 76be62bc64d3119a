// The items of a menu: reading, changing and adding them.
#include <algorithm>
#include <string>
#include <vector>

#include "menus/menu_bytes.h"
#include "quickdraw/font_names.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::menus {
namespace {

constexpr std::uint8_t checkMark = 0x12;

bool appendItem(MenuHandle menu, std::string_view text, ItemStyle style, bool enabled)
{
    int item = itemCount(menu) + 1;
    std::int32_t end = endOfItems(menu);
    bool ended = end < GetHandleSize(menu);
    if (!replaceBytes(menu, end, 0, itemBytes(text, style) + (ended ? "" : std::string(1, '\0'))))
        return false;
    if (item <= lastItemWithFlag) {
        std::uint32_t bit = 1u << item;
        std::uint32_t flags = enableFlags(menu);
        setEnableFlags(menu, enabled ? flags | bit : flags & ~bit);
    }
    return true;
}

std::uint8_t styleBit(char letter)
{
    constexpr std::string_view letters = "BIUOS";
    std::size_t bit = letters.find(letter);
    return bit == letters.npos ? 0 : static_cast<std::uint8_t>(1 << bit);
}

struct Described {
    std::string text;
    ItemStyle style;
    bool enabled = true;
};

// One item in AppendMenu's notation.
Described described(std::string_view data)
{
    Described item;
    for (std::size_t i = 0; i < data.size(); ++i) {
        bool followed = i + 1 < data.size();
        auto next = static_cast<std::uint8_t>(followed ? data[i + 1] : 0);
        if (data[i] == '(')
            item.enabled = false;
        else if (data[i] == '^' && followed)
            item.style.icon = static_cast<std::uint8_t>(next - '0'), ++i;
        else if (data[i] == '!' && followed)
            item.style.mark = next, ++i;
        else if (data[i] == '/' && followed)
            item.style.key = next, ++i;
        else if (data[i] == '<' && followed)
            item.style.face |= styleBit(static_cast<char>(next)), ++i;
        else
            item.text += data[i];
    }
    return item;
}

std::vector<std::string> resourceNames(ResType type)
{
    std::vector<std::string> names;
    for (int16_t i = 1; i <= CountResources(type); ++i) {
        int16_t id = 0;
        ResType found = 0;
        Str255 name = {0};
        if (Handle resource = GetIndResource(type, i)) {
            GetResInfo(resource, &id, &found, name);
            names.emplace_back(pascalView(name));
        }
    }
    return names;
}

}  // namespace
}  // namespace toolbox::menus

using namespace toolbox;
using namespace toolbox::menus;

extern "C" {

int16_t CountMItems(MenuHandle menu)
{
    return static_cast<int16_t>(itemCount(menu));
}

void GetItem(MenuHandle menu, int16_t item, Str255 text)
{
    auto place = findItem(menu, item);
    setPascal(text, place ? itemText(menu, *place) : "");
}

void SetItem(MenuHandle menu, int16_t item, ConstStr255Param text)
{
    if (auto place = findItem(menu, item))
        replaceBytes(menu, place->start, 1 + place->textLength, textBytes(pascalView(text)));
}

void AppendMenu(MenuHandle menu, ConstStr255Param data)
{
    if (!isMenu(menu))
        return;
    std::string_view rest = pascalView(data);
    for (;;) {
        std::size_t end = rest.find_first_of(";\r");
        Described item = described(rest.substr(0, end));
        if (!appendItem(menu, item.text, item.style, item.enabled) || end == rest.npos)
            return;
        rest.remove_prefix(end + 1);
    }
}

void AddResMenu(MenuHandle menu, ResType type)
{
    if (!isMenu(menu))
        return;
    std::vector<std::string> names = resourceNames(type);
    if (type == 'FONT')
        for (const std::string &family : quickdraw::fontFamilies())
            names.push_back(family);
    std::erase_if(names, [](const std::string &name) {
        return name.empty() || name.front() == '.' || name.front() == '%';
    });
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    for (const std::string &name : names)
        if (!appendItem(menu, name, {}, true))
            return;
}

void CheckItem(MenuHandle menu, int16_t item, Boolean checked)
{
    if (auto place = findItem(menu, item))
        setAttribute(menu, *place, markByte, checked ? checkMark : 0);
}

void GetItemMark(MenuHandle menu, int16_t item, int16_t *mark)
{
    auto place = findItem(menu, item);
    *mark = place ? attribute(menu, *place, markByte) : 0;
}

void EnableItem(MenuHandle menu, int16_t item)
{
    if (isMenu(menu) && item >= 0 && item <= lastItemWithFlag)
        setEnableFlags(menu, enableFlags(menu) | 1u << item);
}

void DisableItem(MenuHandle menu, int16_t item)
{
    if (isMenu(menu) && item >= 0 && item <= lastItemWithFlag)
        setEnableFlags(menu, enableFlags(menu) & ~(1u << item));
}

}  // extern "C"
