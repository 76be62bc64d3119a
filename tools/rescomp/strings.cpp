#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

std::string stringBytes(Cursor &source)
{
    std::string bytes;
    appendPascal(bytes, source.text("a text", true));
    return bytes;
}

std::string stringListBytes(Cursor &source)
{
    std::string texts;
    std::uint32_t count = 0;
    source.block([&] {
        appendPascal(texts, source.singleText());
        ++count;
    });
    if (count > INT16_MAX)
        source.wrongBefore("more texts than a list can number");
    std::string bytes;
    appendWord(bytes, count);
    return bytes + texts;
}

std::string versionBytes(Cursor &source)
{
    std::string number(4, '\0'), shortText, longText;
    std::uint32_t region = 0;
    source.block([&] {
        if (source.accept("number"))
            for (char &part : number)
                part = static_cast<char>(source.number(0, 255, "a part of the number"));
        else if (source.accept("region"))
            region = static_cast<std::uint32_t>(source.number(0, INT16_MAX, "a region"));
        else if (source.accept("short"))
            shortText = source.text("a text");
        else if (source.accept("long"))
            longText = source.text("a text", true);
        else
            source.wrong("expected number, region, short or long");
        source.endStatement();
    });
    std::string bytes = number;
    appendWord(bytes, region);
    appendPascal(bytes, shortText);
    appendPascal(bytes, longText);
    return bytes;
}

}  // namespace rescomp
