#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

namespace {

// Items after this one have no enable bit of their own.
constexpr int lastWithBit = 31;

struct MenuItem {
    std::string text;
    char key = 0;
    std::int64_t mark = 0;
    bool disabled = false;
};

char readKey(Cursor &source)
{
    std::string key = source.text("a key");
    if (key.size() != 1)
        source.wrongBefore("a key is one character");
    return key[0];
}

MenuItem readItem(Cursor &source)
{
    MenuItem item;
    if (source.accept("divider")) {
        item.text = "-";
        item.disabled = true;
        return item;
    }
    item.text = source.text("an item's text");
    if (item.text.empty())
        source.wrongBefore("an item without text would end the menu");
    for (;;) {
        if (source.accept("key"))
            item.key = readKey(source);
        else if (source.accept("mark"))
            item.mark = source.number(0, 255, "a mark");
        else if (source.accept("disabled"))
            item.disabled = true;
        else
            return item;
    }
}

void appendItem(std::string &bytes, const MenuItem &item)
{
    appendPascal(bytes, item.text);
    appendByte(bytes, 0);   // icon
    bytes += item.key;
    appendByte(bytes, static_cast<std::uint32_t>(item.mark));
    appendByte(bytes, 0);   // style
}

}  // namespace

std::string menuBytes(Cursor &source, std::int16_t id)
{
    std::string title = source.text("the menu's title");
    std::string items;
    std::uint32_t enabled = 0xFFFFFFFF;
    int number = 0;
    source.block([&] {
        MenuItem item = readItem(source);
        ++number;
        if (item.disabled && number <= lastWithBit)
            enabled &= ~(std::uint32_t{1} << number);
        else if (item.disabled && item.text != "-")
            source.wrongBefore("only the first 31 items can be disabled");
        appendItem(items, item);
        source.endStatement();
    });
    std::string bytes;
    appendWord(bytes, static_cast<std::uint16_t>(id));
    bytes.append(8, '\0');   // width, height, the standard kind of menu
    appendLong(bytes, enabled);
    appendPascal(bytes, title);
    return bytes + items + '\0';
}

}  // namespace rescomp
