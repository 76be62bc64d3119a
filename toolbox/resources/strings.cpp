#include "toolbox/host/big_bytes.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace {

std::string_view bytesOf(Handle resource)
{
    return {*resource, static_cast<size_t>(GetHandleSize(resource))};
}

// A string whose length byte claims more than there is would make its readers
// run past the block.
bool holdsString(std::string_view bytes, size_t offset = 0)
{
    return offset < bytes.size() && static_cast<unsigned char>(bytes[offset]) < bytes.size() - offset;
}

// The string at that index of a list, empty where there is none.
std::string_view stringIn(std::string_view list, int index)
{
    if (list.size() < 2 || index < 1 || index > toolbox::wordAt(list, 0))
        return {};
    size_t offset = 2;
    while (holdsString(list, offset)) {
        size_t length = static_cast<unsigned char>(list[offset]);
        if (--index == 0)
            return list.substr(offset + 1, length);
        offset += 1 + length;
    }
    return {};
}

}  // namespace

StringHandle GetString(int16_t id)
{
    Handle resource = GetResource('STR ', id);
    if (resource && !holdsString(bytesOf(resource)))
        resource = nullptr;
    toolbox::trace::line("string %d%s", id, resource ? "" : " missing");
    return reinterpret_cast<StringHandle>(resource);
}

void GetIndString(Str255 text, int16_t id, int16_t index)
{
    Handle resource = GetResource('STR#', id);
    toolbox::setPascal(text, resource ? stringIn(bytesOf(resource), index) : std::string_view());
}
