// Numbers as text, and C strings as Pascal strings.
#include "toolbox/system.h"

#include <string.h>

#include <string>

#include "toolbox/host/text.h"

extern "C" {

void NumToString(int32_t number, Str255 text)
{
    toolbox::setPascal(text, std::to_string(number));
}

void StringToNum(ConstStr255Param text, int32_t *number)
{
    std::string_view digits = toolbox::pascalView(text);
    bool negative = !digits.empty() && digits.front() == '-';
    if (negative || (!digits.empty() && digits.front() == '+'))
        digits.remove_prefix(1);
    uint32_t value = 0;
    for (char digit : digits) {
        if (digit < '0' || digit > '9')
            break;
        value = value * 10 + static_cast<uint32_t>(digit - '0');
    }
    *number = static_cast<int32_t>(negative ? 0 - value : value);
}

StringPtr ql_quorum_passtr(const char *text)
{
    // Callers pass several of them to one call; eight are enough for any.
    static Str255 ring[8];
    static unsigned next = 0;
    StringPtr pascalString = ring[next++ % 8];
    toolbox::setPascal(pascalString, text);
    return pascalString;
}

char *P2CStr(StringPtr text)
{
    size_t length = text[0];
    char *characters = reinterpret_cast<char *>(text);
    memmove(characters, characters + 1, length);
    characters[length] = 0;
    return characters;
}

StringPtr C2PStr(char *text)
{
    size_t length = strnlen(text, 255);
    memmove(text + 1, text, length);
    text[0] = static_cast<char>(length);
    return reinterpret_cast<StringPtr>(text);
}

}  // extern "C"
