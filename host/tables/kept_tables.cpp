#include "tables/kept_tables.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"

namespace riders::tables {
namespace {

namespace fs = std::filesystem;
using screening::Thresholds;
using screening::Tile;

static_assert(std::is_trivially_copyable_v<Tile>);

// Changes with the form of the files, and whenever other thresholds are made from the same key.
constexpr std::string_view kVersion = "riders screen table 1\n";

// Nothing where the user has no such folder.
fs::path cacheFolder()
{
    const char *const cache = std::getenv("XDG_CACHE_HOME"), *const home = std::getenv("HOME");
    if (cache != nullptr && *cache == '/')
        return fs::path(cache) / "riders" / "screens";
    return home != nullptr && *home == '/' ? fs::path(home) / ".cache" / "riders" / "screens" : fs::path();
}

std::uint64_t sumOf(std::string_view bytes)
{
    std::uint64_t sum = 0x243F6A8885A308D3;
    while (!bytes.empty()) {
        std::uint64_t part = bytes.size();
        std::memcpy(&part, bytes.data(), std::min(sizeof part, bytes.size()));
        sum = (sum ^ part) * 0x9E3779B97F4A7C15;
        sum ^= sum >> 29;
        bytes.remove_prefix(std::min(sizeof part, bytes.size()));
    }
    return sum;
}

std::string nameOf(const std::string &key)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string name;
    for (std::uint64_t sum = sumOf(std::string(kVersion) + key); name.size() < 16; sum >>= 4)
        name += kDigits[sum & 15];
    return name + ".table";
}

template <typename Value>
void put(std::string &bytes, const Value &value)
{
    bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
}

// The version, the key's length and the key, the tile, its thresholds, and a sum of all that.
std::string beginningFor(const std::string &key)
{
    std::string bytes(kVersion);
    put(bytes, std::uint64_t(key.size()));
    return bytes + key;
}

std::optional<Thresholds> read(const std::string &key, std::string_view bytes)
{
    const std::string beginning = beginningFor(key);
    const std::size_t fixed = beginning.size() + sizeof(Tile) + sizeof(std::uint64_t);
    if (bytes.size() < fixed || !bytes.starts_with(beginning))
        return {};
    std::uint64_t sum = 0;
    std::memcpy(&sum, bytes.data() + bytes.size() - sizeof sum, sizeof sum);
    bytes.remove_suffix(sizeof sum);
    if (sumOf(bytes) != sum)
        return {};
    Tile tile;
    std::memcpy(&tile, bytes.data() + beginning.size(), sizeof tile);
    bytes.remove_prefix(beginning.size() + sizeof tile);
    if (tile.width < 1 || tile.height < 1 || tile.shift < 0 || tile.shift >= tile.width ||
        tile.pixels != std::int64_t(bytes.size()) || tile.pixels / tile.width != tile.height ||
        tile.pixels % tile.width != 0)
        return {};
    return Thresholds(tile, std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

void removeOldest(const fs::path &folder)
{
    struct Kept {
        fs::file_time_type time;
        std::uintmax_t size;
        fs::path path;
    };
    std::vector<Kept> files;
    std::uintmax_t all = 0;
    std::error_code ignored;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder, ignored)) {
        if (entry.path().extension() != ".table")
            continue;
        const std::uintmax_t size = entry.file_size(ignored);
        if (ignored)
            continue;  // removed meanwhile
        files.push_back({entry.last_write_time(ignored), size, entry.path()});
        all += size;
    }
    std::sort(files.begin(), files.end(), [](const Kept &a, const Kept &b) { return a.time < b.time; });
    for (const Kept &file : files) {
        if (all <= kMostKept)
            break;
        fs::remove(file.path, ignored);
        all -= file.size;
    }
}

}  // namespace

std::optional<Thresholds> keptTable(const std::string &key)
{
    const fs::path folder = cacheFolder();
    std::error_code ignored;
    if (folder.empty() || !fs::is_regular_file(folder / nameOf(key), ignored))
        return {};
    try {
        std::optional<Thresholds> table = read(key, io::contentsOf(folder / nameOf(key)));
        if (table)
            fs::last_write_time(folder / nameOf(key), fs::file_time_type::clock::now(), ignored);
        return table;
    } catch (const io::Refusal &) {
        return {};
    }
}

void keepTable(const std::string &key, const Thresholds &thresholds)
{
    const fs::path folder = cacheFolder();
    std::error_code failed;
    if (!folder.empty())
        fs::create_directories(folder, failed);
    if (folder.empty() || failed)
        return;
    const Tile &tile = thresholds.tile();
    std::string bytes = beginningFor(key);
    put(bytes, tile);
    for (std::int64_t y = 0; y < tile.height; ++y)
        bytes.append(reinterpret_cast<const char *>(thresholds.rowOf(y)), static_cast<std::size_t>(tile.width));
    put(bytes, sumOf(bytes));
    try {
        io::writeFile(folder / nameOf(key), bytes);
        removeOldest(folder);
    } catch (const io::Refusal &) {
        // It will be computed again.
    } catch (const fs::filesystem_error &) {
    }
}

}  // namespace riders::tables
