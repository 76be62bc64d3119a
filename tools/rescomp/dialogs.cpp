#include <array>
#include <set>
#include <utility>

#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

namespace {

constexpr std::pair<std::string_view, std::uint32_t> kinds[] = {
    {"document", 0}, {"dBox", 1}, {"plain", 2}, {"alt", 3}, {"noGrow", 4}, {"movable", 5},
};

struct Window {
    Area area;
    std::uint32_t kind = 1;
    bool visible = true;
    bool closeBox = false;
    std::uint32_t refCon = 0;
    std::int16_t items = 0;
    std::string title;
    std::uint32_t stages = 0x5555;
};

std::uint32_t readKind(Cursor &source)
{
    for (const auto &[name, number] : kinds)
        if (source.accept(name))
            return number;
    source.wrong("expected dBox, plain, alt, document, noGrow or movable");
}

// What dialogs and alerts have in common; false for another word.
bool readPlace(Cursor &source, const std::string &word, Window &window)
{
    if (word == "size")
        readSize(source, window.area, 1);
    else if (word == "at")
        readCorner(source, window.area);
    else if (word == "items")
        window.items = source.id();
    else
        return false;
    return true;
}

bool readDialogField(Cursor &source, const std::string &word, Window &window)
{
    if (word == "kind")
        window.kind = readKind(source);
    else if (word == "hidden" || word == "visible")
        window.visible = word == "visible";
    else if (word == "closebox")
        window.closeBox = true;
    else if (word == "title")
        window.title = source.text("a title");
    else if (word == "refcon")
        window.refCon = static_cast<std::uint32_t>(source.number(INT32_MIN, UINT32_MAX, "a reference value"));
    else
        return false;
    return true;
}

bool readAlertField(Cursor &source, const std::string &word, Window &window)
{
    if (word != "stages")
        return false;
    window.stages = static_cast<std::uint32_t>(source.number(0, 0xFFFF, "the stages"));
    return true;
}

using ReadField = bool (*)(Cursor &, const std::string &, Window &);

Window readWindow(Cursor &source, std::int16_t id, ReadField readField, const std::string &fields)
{
    Window window;
    window.items = id;
    std::set<std::string> seen;
    source.block([&] {
        Place place = source.place();
        std::string word = source.word("one of " + fields);
        if (!seen.insert(word).second)
            throw SourceError(place, word + " stands here twice");
        if (!readPlace(source, word, window) && !readField(source, word, window))
            throw SourceError(place, "expected one of " + fields + ", not " + word);
        source.endStatement();
    });
    if (!seen.contains("size"))
        source.wrongBefore("the size is missing");
    return window;
}

}  // namespace

std::string dialogBytes(Cursor &source, std::int16_t id)
{
    Window window = readWindow(source, id, readDialogField,
                               "size, at, kind, hidden, visible, title, items, refcon, closebox");
    std::string bytes = rectBytes(source, window.area);
    appendWord(bytes, window.kind);
    appendWord(bytes, window.visible ? 0x0100 : 0);
    appendWord(bytes, window.closeBox ? 0x0100 : 0);
    appendLong(bytes, window.refCon);
    appendWord(bytes, static_cast<std::uint16_t>(window.items));
    appendPascal(bytes, window.title);
    return bytes;
}

std::string alertBytes(Cursor &source, std::int16_t id)
{
    Window window = readWindow(source, id, readAlertField, "size, at, items, stages");
    std::string bytes = rectBytes(source, window.area);
    appendWord(bytes, static_cast<std::uint16_t>(window.items));
    appendWord(bytes, window.stages);
    return bytes;
}

}  // namespace rescomp
