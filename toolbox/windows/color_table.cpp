#include "windows/color_table.h"

#include <cstring>

#include "quickdraw/port.h"
#include "toolbox/bigendian.h"
#include "toolbox/memory.h"
#include "toolbox/quickdraw.h"

namespace toolbox::windows {
namespace {

// As the tables are stored: seed, reserved word, number of entries less one,
// entries.
constexpr int headBytes = 8;
struct Entry {
    BigInt16 part;
    BigUInt16 red, green, blue;
};
static_assert(sizeof(Entry) == 8);

}  // namespace

ColorTable readColorTable(Handle bytes)
{
    ColorTable table;
    if (!bytes || !*bytes)
        return table;
    Size size = GetHandleSize(bytes);
    for (Size at = headBytes; at + static_cast<Size>(sizeof(Entry)) <= size; at += sizeof(Entry)) {
        Entry entry;
        std::memcpy(&entry, *bytes + at, sizeof entry);
        table[entry.part] = Color{entry.red, entry.green, entry.blue};
    }
    return table;
}

std::optional<Color> colorOf(const ColorTable &table, int part)
{
    auto found = table.find(part);
    if (found == table.end())
        return std::nullopt;
    return found->second;
}

std::int32_t forDrawing(Color color)
{
    auto high = [](std::uint16_t part) { return static_cast<std::uint8_t>(part >> 8); };
    return quickdraw::directColor(high(color.red), high(color.green), high(color.blue));
}

bool displayHasColors()
{
    return (**(**GetMainDevice()).gdPMap).pixelSize >= 2;
}

}  // namespace toolbox::windows
