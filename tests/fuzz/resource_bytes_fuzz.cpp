// Any bytes as a menu and as a list of strings: read as far as they go.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fuzz/plugin_session.h"
#include "toolbox/memory.h"
#include "toolbox/menus.h"

namespace {

void fill(Handle resource, const uint8_t *data, size_t size)
{
    SetHandleSize(resource, static_cast<Size>(size));
    if (GetHandleSize(resource) != static_cast<Size>(size))
        abort();
    if (size > 0)
        std::memcpy(*resource, data, size);
}

void lookAtMenu(MenuHandle menu)
{
    const int16_t count = CountMItems(menu);
    if (count < 0)
        abort();
    for (int item = -1; item <= count + 1; ++item) {
        Str255 text;
        text[0] = 0;
        int16_t mark = 0;
        GetItem(menu, static_cast<int16_t>(item), text);
        GetItemMark(menu, static_cast<int16_t>(item), &mark);
        CheckItem(menu, static_cast<int16_t>(item), true);
        DisableItem(menu, static_cast<int16_t>(item));
    }
    if (CountMItems(menu) != count)
        abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static PluginSession session;
    static const MenuHandle menu = GetMenu(16136);
    static const Handle list = GetResource('STR#', 16129);
    fill(reinterpret_cast<Handle>(menu), data, size);
    lookAtMenu(menu);
    fill(list, data, size);
    for (int16_t index = -1; index < 300; ++index) {
        Str255 text;
        GetIndString(text, 16129, index);
    }
    return 0;
}
