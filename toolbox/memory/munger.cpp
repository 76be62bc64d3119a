#include <algorithm>
#include <cstring>
#include <string_view>

#include "toolbox/memory.h"

namespace {

constexpr int32_t notFound = -1;

// Puts replacement where length bytes at offset were; returns the offset
// after it.
int32_t substitute(Handle text, int32_t offset, int32_t length, const void *replacement, int32_t replacementLength)
{
    Size size = GetHandleSize(text);
    int32_t tail = size - offset - length;
    if (replacementLength > length) {
        if (replacementLength - length > INT32_MAX - size)
            return notFound;
        SetHandleSize(text, size + replacementLength - length);
        if (MemError() != noErr)
            return notFound;
    }
    BlockMove(*text + offset + length, *text + offset + replacementLength, tail);
    BlockMove(replacement, *text + offset, replacementLength);
    if (replacementLength < length)
        SetHandleSize(text, size + replacementLength - length);
    return offset + replacementLength;
}

int32_t search(Handle text, int32_t offset, const void *target, int32_t targetLength)
{
    std::string_view bytes(*text, static_cast<size_t>(GetHandleSize(text)));
    std::string_view wanted(static_cast<const char *>(target), static_cast<size_t>(targetLength));
    size_t place = bytes.find(wanted, static_cast<size_t>(offset));
    return place == std::string_view::npos ? notFound : static_cast<int32_t>(place);
}

}  // namespace

int32_t Munger(Handle text, int32_t offset, const void *target, int32_t targetLength, const void *replacement,
               int32_t replacementLength)
{
    Size size = GetHandleSize(text);
    if (MemError() != noErr || offset < 0 || offset > size || replacementLength < 0)
        return notFound;
    if (!target) {
        int32_t rest = size - offset;
        int32_t length = targetLength < 0 ? rest : std::min(targetLength, rest);
        return replacement ? substitute(text, offset, length, replacement, replacementLength) : offset;
    }
    if (targetLength < 0)
        return notFound;
    int32_t place = search(text, offset, target, targetLength);
    if (place < 0 || !replacement)
        return place;
    return substitute(text, place, targetLength, replacement, replacementLength);
}
