#include "toolbox/host/big_bytes.h"
#include "toolbox/host/resource_fork.h"

namespace toolbox::resources {
namespace {

constexpr std::uint64_t headerLength = 16;
constexpr std::uint64_t mapFixedLength = 28;
constexpr std::uint64_t typeLength = 8;
constexpr std::uint64_t referenceLength = 12;
constexpr std::uint16_t noName = 0xFFFF;

// The parts of a fork. Offsets are 64-bit: no sum of the numbers in a fork
// overflows them.
struct Fork {
    std::string_view data;
    std::string_view map;
    std::uint64_t typeList = 0;
    std::uint64_t nameList = 0;
    std::uint64_t referencesSeen = 0;
};

bool has(std::string_view bytes, std::uint64_t offset, std::uint64_t length)
{
    return offset <= bytes.size() && length <= bytes.size() - offset;
}

std::optional<std::string_view> part(std::string_view bytes, std::uint64_t offset, std::uint64_t length)
{
    if (!has(bytes, offset, length))
        return std::nullopt;
    return bytes.substr(offset, length);
}

bool findParts(std::string_view bytes, Fork &fork)
{
    if (bytes.size() < headerLength)
        return false;
    auto data = part(bytes, longAt(bytes, 0), longAt(bytes, 8));
    auto map = part(bytes, longAt(bytes, 4), longAt(bytes, 12));
    if (!data || !map || map->size() < mapFixedLength)
        return false;
    fork.data = *data;
    fork.map = *map;
    fork.typeList = wordAt(*map, 24);
    fork.nameList = wordAt(*map, 26);
    return has(*map, fork.typeList, 2);
}

bool readName(const Fork &fork, std::uint16_t offset, ForkEntry &entry)
{
    if (offset == noName)
        return true;
    std::uint64_t place = fork.nameList + offset;
    if (!has(fork.map, place, 1))
        return false;
    entry.name = part(fork.map, place + 1, static_cast<unsigned char>(fork.map[place]));
    return entry.name.has_value();
}

bool readData(const Fork &fork, std::uint64_t offset, ForkEntry &entry)
{
    if (!has(fork.data, offset, 4))
        return false;
    auto data = part(fork.data, offset + 4, longAt(fork.data, offset));
    if (data)
        entry.data = *data;
    return data.has_value();
}

bool readReference(const Fork &fork, std::uint64_t place, ForkEntry entry, std::vector<ForkEntry> &entries)
{
    entry.id = static_cast<std::int16_t>(wordAt(fork.map, place));
    entry.attributes = static_cast<std::uint8_t>(fork.map[place + 4]);
    if (!readName(fork, wordAt(fork.map, place + 2), entry) ||
        !readData(fork, bytesAt(fork.map, place + 5, 3), entry))
        return false;
    entries.push_back(entry);
    return true;
}

bool readType(Fork &fork, std::uint64_t place, std::vector<ForkEntry> &entries)
{
    ForkEntry entry;
    entry.type = longAt(fork.map, place);
    std::uint64_t count = wordAt(fork.map, place + 4) + std::uint64_t{1};
    std::uint64_t list = fork.typeList + wordAt(fork.map, place + 6);
    // Overlapping lists would let a small fork claim more resources than it has
    // room for.
    fork.referencesSeen += count;
    if (!has(fork.map, list, count * referenceLength) || fork.referencesSeen * referenceLength > fork.map.size())
        return false;
    for (std::uint64_t i = 0; i < count; ++i)
        if (!readReference(fork, list + i * referenceLength, entry, entries))
            return false;
    return true;
}

bool readTypes(Fork &fork, std::vector<ForkEntry> &entries)
{
    // The count is one less than the number of types; none at all is 0xFFFF.
    std::uint64_t types = static_cast<std::uint16_t>(wordAt(fork.map, fork.typeList) + 1);
    if (!has(fork.map, fork.typeList + 2, types * typeLength))
        return false;
    for (std::uint64_t i = 0; i < types; ++i)
        if (!readType(fork, fork.typeList + 2 + i * typeLength, entries))
            return false;
    return true;
}

}  // namespace

OSErr parseFork(std::string_view bytes, std::vector<ForkEntry> &entries)
{
    entries.clear();
    if (bytes.empty())
        return eofErr;
    Fork fork;
    if (findParts(bytes, fork) && readTypes(fork, entries))
        return noErr;
    entries.clear();
    return mapReadErr;
}

}  // namespace toolbox::resources
