#include "toolbox/host/appledouble.h"

#include <algorithm>

#include "toolbox/host/big_bytes.h"

namespace toolbox::files {
namespace {

constexpr std::uint32_t magic = 0x00051607;
constexpr std::uint32_t version = 0x00020000;
constexpr std::size_t headerBytes = 26;
constexpr std::size_t tableEntryBytes = 12;
constexpr std::size_t fillerAt = 8;
constexpr std::size_t countAt = 24;

struct Extent {
    std::uint64_t start;
    std::uint64_t end;
};

bool overlapping(std::vector<Extent> extents)
{
    std::sort(extents.begin(), extents.end(), [](auto &a, auto &b) { return a.start < b.start; });
    for (std::size_t i = 1; i < extents.size(); ++i)
        if (extents[i].start < extents[i - 1].end)
            return true;
    return false;
}

struct TableEntry {
    std::uint32_t id;
    std::uint32_t offset;
    std::uint32_t length;
};

std::vector<TableEntry> tableOf(std::string_view bytes, std::size_t count)
{
    std::vector<TableEntry> table;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t at = headerBytes + tableEntryBytes * i;
        table.push_back({longAt(bytes, at), longAt(bytes, at + 4), longAt(bytes, at + 8)});
    }
    return table;
}

bool anyTwice(std::vector<std::uint32_t> ids)
{
    std::sort(ids.begin(), ids.end());
    return std::adjacent_find(ids.begin(), ids.end()) != ids.end();
}

// Whether no two entries share an id or a place, and all lie within the file.
bool isSound(const std::vector<TableEntry> &table, std::size_t fileBytes)
{
    std::vector<Extent> extents{{0, headerBytes + tableEntryBytes * table.size()}};
    std::vector<std::uint32_t> ids;
    for (const TableEntry &entry : table) {
        std::uint64_t end = std::uint64_t{entry.offset} + entry.length;
        if (entry.id == 0 || end > fileBytes)
            return false;
        ids.push_back(entry.id);
        if (entry.length > 0)
            extents.push_back({entry.offset, end});
    }
    return !anyTwice(ids) && !overlapping(extents);
}

std::size_t bytesBeforeEntries(const AppleDouble &file)
{
    return headerBytes + tableEntryBytes * file.entries.size();
}

// Whether every entry but the fork can stay where it was.
bool canStay(const AppleDouble &file)
{
    std::vector<Extent> extents{{0, bytesBeforeEntries(file)}};
    for (const AppleDouble::Entry &entry : file.entries) {
        if (entry.id == resourceForkEntry || entry.bytes.empty())
            continue;
        if (entry.offset == 0)
            return false;
        extents.push_back({entry.offset, entry.offset + entry.bytes.size()});
    }
    return !overlapping(extents);
}

std::vector<std::uint32_t> laidOut(const AppleDouble &file)
{
    bool stay = canStay(file);
    std::vector<std::uint32_t> offsets(file.entries.size());
    std::uint64_t end = bytesBeforeEntries(file);
    for (std::size_t i = 0; i < file.entries.size(); ++i) {
        const AppleDouble::Entry &entry = file.entries[i];
        if (entry.id == resourceForkEntry)
            continue;
        bool moves = !stay || entry.offset == 0;
        offsets[i] = moves ? static_cast<std::uint32_t>(end) : entry.offset;
        end = std::max<std::uint64_t>(end, offsets[i] + entry.bytes.size());
    }
    for (std::size_t i = 0; i < file.entries.size(); ++i) {
        const AppleDouble::Entry &entry = file.entries[i];
        if (entry.id == resourceForkEntry)
            offsets[i] = stay && entry.offset >= end ? entry.offset : static_cast<std::uint32_t>(end);
    }
    return offsets;
}

}  // namespace

const AppleDouble::Entry *AppleDouble::find(std::uint32_t id) const
{
    for (const Entry &entry : entries)
        if (entry.id == id)
            return &entry;
    return nullptr;
}

std::string_view AppleDouble::bytes(std::uint32_t id) const
{
    const Entry *entry = find(id);
    return entry ? std::string_view(entry->bytes) : std::string_view();
}

void AppleDouble::set(std::uint32_t id, std::string_view bytes)
{
    for (Entry &entry : entries) {
        if (entry.id == id) {
            entry.bytes = bytes;
            return;
        }
    }
    entries.push_back({id, std::string(bytes)});
}

std::string AppleDouble::finderInfo() const
{
    std::string info(bytes(finderInfoEntry).substr(0, finderInfoBytes));
    info.resize(finderInfoBytes, '\0');
    return info;
}

void AppleDouble::setFinderInfo(std::string_view info)
{
    std::string_view before = bytes(finderInfoEntry);
    std::string after(info.substr(0, finderInfoBytes));
    after.resize(finderInfoBytes, '\0');
    if (before.size() > finderInfoBytes)
        after += before.substr(finderInfoBytes);
    set(finderInfoEntry, after);
}

AppleDouble newAppleDouble()
{
    AppleDouble file;
    file.set(finderInfoEntry, std::string(finderInfoBytes, '\0'));
    file.set(resourceForkEntry, {});
    return file;
}

std::optional<AppleDouble> parseAppleDouble(std::string_view bytes)
{
    if (bytes.size() < headerBytes || longAt(bytes, 0) != magic || longAt(bytes, 4) != version)
        return std::nullopt;
    std::size_t count = wordAt(bytes, countAt);
    if (bytes.size() < headerBytes + tableEntryBytes * count)
        return std::nullopt;
    std::vector<TableEntry> table = tableOf(bytes, count);
    if (!isSound(table, bytes.size()))
        return std::nullopt;

    // Bytes are copied only now: without overlaps there cannot be more than the file has.
    AppleDouble file;
    file.filler = bytes.substr(fillerAt, countAt - fillerAt);
    for (const TableEntry &entry : table)
        file.entries.push_back({entry.id, std::string(bytes.substr(entry.offset, entry.length)), entry.offset});
    return file;
}

std::string composeAppleDouble(const AppleDouble &file)
{
    std::vector<std::uint32_t> offsets = laidOut(file);
    std::string bytes;
    appendLong(bytes, magic);
    appendLong(bytes, version);
    std::string filler = file.filler;
    filler.resize(countAt - fillerAt, '\0');
    bytes += filler;
    appendWord(bytes, static_cast<std::uint32_t>(file.entries.size()));
    std::size_t end = bytesBeforeEntries(file);
    for (std::size_t i = 0; i < file.entries.size(); ++i) {
        appendLong(bytes, file.entries[i].id);
        appendLong(bytes, offsets[i]);
        appendLong(bytes, static_cast<std::uint32_t>(file.entries[i].bytes.size()));
        end = std::max(end, offsets[i] + file.entries[i].bytes.size());
    }
    bytes.resize(end, '\0');
    for (std::size_t i = 0; i < file.entries.size(); ++i)
        bytes.replace(offsets[i], file.entries[i].bytes.size(), file.entries[i].bytes);
    return bytes;
}

}  // namespace toolbox::files
