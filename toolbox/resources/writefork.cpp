#include <algorithm>
#include <map>

#include "toolbox/host/big_bytes.h"
#include "toolbox/host/resource_fork.h"

namespace toolbox::resources {
namespace {

constexpr std::uint32_t dataPlace = 0x100;
constexpr std::uint32_t headerBytes = 16;
constexpr std::uint32_t typeListPlace = 28;
constexpr std::size_t firstUnreachable = 1 << 24;
// The original readers treated the map's offsets as signed numbers.
constexpr std::size_t longestMapOffset = 0x7FFF;
constexpr std::uint8_t onlyInMemory = 0x82;   // resSysRef and resChanged

using Group = std::vector<const ForkEntry *>;

std::vector<Group> byType(const std::vector<ForkEntry> &entries)
{
    std::vector<Group> groups;
    std::map<ResType, std::size_t> places;
    for (const ForkEntry &entry : entries) {
        auto [place, isNew] = places.try_emplace(entry.type, groups.size());
        if (isNew)
            groups.emplace_back();
        groups[place->second].push_back(&entry);
    }
    return groups;
}

// The parts of a fork while they grow.
struct Parts {
    std::string data, types, references, names;
};

bool addReference(const ForkEntry &entry, Parts &parts)
{
    if (parts.data.size() >= firstUnreachable || parts.names.size() > longestMapOffset)
        return false;
    appendWord(parts.references, static_cast<std::uint16_t>(entry.id));
    appendWord(parts.references, entry.name ? static_cast<std::uint32_t>(parts.names.size()) : 0xFFFF);
    appendLong(parts.references, static_cast<std::uint32_t>(entry.attributes & ~onlyInMemory) << 24 |
                                     static_cast<std::uint32_t>(parts.data.size()));
    appendLong(parts.references, 0);
    if (entry.name)
        appendPascal(parts.names, *entry.name);
    appendLong(parts.data, static_cast<std::uint32_t>(entry.data.size()));
    parts.data += entry.data;
    return true;
}

bool addGroup(const Group &group, std::size_t listsPlace, Parts &parts)
{
    std::size_t place = listsPlace + parts.references.size();
    if (place > longestMapOffset)
        return false;
    appendLong(parts.types, group.front()->type);
    appendWord(parts.types, static_cast<std::uint32_t>(group.size() - 1));
    appendWord(parts.types, static_cast<std::uint32_t>(place));
    return std::all_of(group.begin(), group.end(),
                       [&](const ForkEntry *entry) { return addReference(*entry, parts); });
}

std::string header(const Parts &parts, std::size_t mapLength)
{
    std::string bytes;
    auto dataLength = static_cast<std::uint32_t>(parts.data.size());
    appendLong(bytes, dataPlace);
    appendLong(bytes, dataPlace + dataLength);
    appendLong(bytes, dataLength);
    appendLong(bytes, static_cast<std::uint32_t>(mapLength));
    return bytes;
}

std::optional<std::string> together(const Parts &parts, std::size_t typeCount)
{
    std::size_t namesPlace = typeListPlace + 2 + parts.types.size() + parts.references.size();
    if (namesPlace > longestMapOffset || parts.data.size() > INT32_MAX)
        return std::nullopt;
    std::string head = header(parts, namesPlace + parts.names.size());
    std::string bytes = head;
    bytes.resize(dataPlace, '\0');
    bytes += parts.data;
    bytes += head;
    bytes.append(typeListPlace - 4 - headerBytes, '\0');
    appendWord(bytes, typeListPlace);
    appendWord(bytes, static_cast<std::uint32_t>(namesPlace));
    appendWord(bytes, static_cast<std::uint32_t>(typeCount) - 1);
    return bytes + parts.types + parts.references + parts.names;
}

}  // namespace

std::optional<std::string> forkBytes(const std::vector<ForkEntry> &entries)
{
    Parts parts;
    std::vector<Group> groups = byType(entries);
    for (const Group &group : groups)
        if (!addGroup(group, 2 + 8 * groups.size(), parts))
            return std::nullopt;
    return together(parts, groups.size());
}

}  // namespace toolbox::resources
