#include <cctype>

#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

std::string wholeFile(Cursor &source)
{
    Place place = source.place();
    if (!source.accept("files"))
        return fileBytes(source.file(), place);
    std::string bytes;
    source.block([&] {
        Place named = source.place();
        bytes += fileBytes(source.besideSource(source.text("a file's name")), named);
    });
    return bytes;
}

std::string hexBytes(Cursor &source)
{
    std::string bytes;
    source.block([&] {
        std::string digits = source.word("hexadecimal digits");
        if (digits.size() % 2 || digits.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos)
            source.wrongBefore("expected pairs of hexadecimal digits, not " + digits);
        for (std::size_t i = 0; i < digits.size(); i += 2)
            appendByte(bytes, static_cast<std::uint32_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    });
    return bytes;
}

std::string colorTableBytes(Cursor &source)
{
    std::string colors;
    std::uint32_t count = 0;
    source.block([&] {
        if (!source.accept("part"))
            source.wrong("expected part");
        appendWord(colors, static_cast<std::uint32_t>(source.number(0, INT16_MAX, "a part's number")));
        for (const char *what : {"red", "green", "blue"})
            appendWord(colors, static_cast<std::uint32_t>(source.number(0, 0xFFFF, what)));
        source.endStatement();
        ++count;
    });
    std::string bytes;
    appendLong(bytes, 0);
    appendWord(bytes, 0);
    appendWord(bytes, count - 1);
    return bytes + colors;
}

}  // namespace rescomp
