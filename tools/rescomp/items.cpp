#include <utility>

#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

namespace {

enum class Argument { none, text, number };

struct ItemKind {
    std::string_view name;
    std::uint32_t type;
    Argument argument;
};

constexpr ItemKind kinds[] = {
    {"user", 0, Argument::none},      {"button", 4, Argument::text},   {"checkbox", 5, Argument::text},
    {"radio", 6, Argument::text},     {"control", 7, Argument::number}, {"text", 8, Argument::text},
    {"edit", 16, Argument::text},     {"icon", 32, Argument::number},  {"picture", 64, Argument::number},
};

constexpr std::uint32_t disabledBit = 128;

const ItemKind &readKind(Cursor &source)
{
    for (const ItemKind &kind : kinds)
        if (source.accept(kind.name))
            return kind;
    source.wrong("expected button, checkbox, radio, text, edit, user, icon, picture or control");
}

std::string readArgument(Cursor &source, Argument argument)
{
    std::string bytes;
    if (argument == Argument::text)
        bytes = source.text("the item's text", true);
    else if (argument == Argument::number)
        appendWord(bytes, static_cast<std::uint16_t>(source.id()));
    return bytes;
}

void appendItem(Cursor &source, std::string &bytes)
{
    std::uint32_t disabled = source.accept("disabled") ? disabledBit : 0;
    const ItemKind &kind = readKind(source);
    Area area;
    readCorner(source, area);
    readSize(source, area, 0);
    bytes.append(4, '\0');
    bytes += rectBytes(source, area);
    appendByte(bytes, kind.type | disabled);
    appendPascal(bytes, readArgument(source, kind.argument));
    if (bytes.size() % 2)
        bytes += '\0';
    source.endStatement();
}

}  // namespace

std::string itemListBytes(Cursor &source)
{
    std::string items;
    std::uint32_t count = 0;
    source.block([&] {
        appendItem(source, items);
        ++count;
    });
    if (count > INT16_MAX)
        source.wrongBefore("more items than a list can number");
    std::string bytes;
    appendWord(bytes, count - 1);
    return bytes + items;
}

}  // namespace rescomp
