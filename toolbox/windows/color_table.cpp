#include "windows/color_table.h"

#include <cstring>

#include "toolbox/bigendian.h"
#include "toolbox/memory.h"
#include "toolbox/quickdraw.h"

namespace toolbox::windows {
namespace {

// As the tables are stored: seed, reserved word, entries less one, entries.
constexpr int headBytes = 8;
struct Entry {
    BigInt16 part;
    BigUInt16 red, green, blue;
};
static_assert(sizeof(Entry) == 8);

struct Constant {
    std::int32_t constant;
    Color color;
};
constexpr Constant constants[] = {
    {blackColor, {0, 0, 0}},
    {whiteColor, {0xFFFF, 0xFFFF, 0xFFFF}},
    {redColor, {0xDD6B, 0x08C2, 0x06A2}},
    {greenColor, {0, 0x8000, 0x11B0}},
    {blueColor, {0, 0, 0xD400}},
    {cyanColor, {0x0241, 0xAB54, 0xEAFF}},
    {magentaColor, {0xF2D7, 0x0856, 0x84EC}},
    {yellowColor, {0xFC00, 0xF37D, 0x052F}},
};

std::int64_t distance(Color a, Color b)
{
    auto square = [](std::int64_t d) { return d * d; };
    return square(a.red - b.red) + square(a.green - b.green) + square(a.blue - b.blue);
}

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

std::int32_t nearestConstant(Color color)
{
    const Constant *best = constants;
    for (const Constant &candidate : constants)
        if (distance(candidate.color, color) < distance(best->color, color))
            best = &candidate;
    return best->constant;
}

bool screenHasColors()
{
    return (**(**GetMainDevice()).gdPMap).pixelSize >= 2;
}

}  // namespace toolbox::windows
