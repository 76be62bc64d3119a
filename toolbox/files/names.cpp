#include "files/names.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

#include "text/letters.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

struct FolderAliases {
    std::map<std::string, std::string> byLinuxName;
    std::map<std::string, std::string> byAlias;
};
std::map<fs::path, FolderAliases> aliases;

bool isThere(const fs::path &path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

fs::path keyOf(const fs::path &folder)
{
    std::error_code failed;
    fs::path key = fs::canonical(folder, failed);
    return failed ? folder : key;
}

FolderAliases *aliasesIn(const fs::path &folder)
{
    if (aliases.empty())
        return nullptr;
    auto found = aliases.find(keyOf(folder));
    return found == aliases.end() ? nullptr : &found->second;
}

std::optional<std::string> aliasedName(const fs::path &folder, std::string_view macName)
{
    if (FolderAliases *known = aliasesIn(folder)) {
        auto found = known->byAlias.find(std::string(macName));
        if (found != known->byAlias.end())
            return found->second;
    }
    return std::nullopt;
}

// The Mac form of a Linux name by conversion alone.
std::optional<std::string> converted(std::string linuxName)
{
    std::replace(linuxName.begin(), linuxName.end(), ':', '/');
    auto roman = romanFromUtf8(linuxName);
    if (!roman || roman->size() > longestName || roman->empty() || roman->starts_with("._"))
        return std::nullopt;
    return roman;
}

bool startsLikeCompanion(const std::string &name)
{
    return name.starts_with("._");
}

// Most names need no conversion.
bool isSameInBoth(const std::string &linuxName)
{
    return !linuxName.empty() && linuxName.size() <= longestName && linuxName[0] != '.' &&
           std::all_of(linuxName.begin(), linuxName.end(),
                       [](char c) { return c >= ' ' && c <= '~' && c != ':'; });
}

// The number distinguishes names that were cut to the same letters.
std::string aliasNumbered(const std::string &linuxName, int number)
{
    std::string roman = linuxName;
    std::replace(roman.begin(), roman.end(), ':', '/');
    roman = romanFromUtf8Lossy(roman);
    if (startsLikeCompanion(roman))
        roman[0] = '_';
    std::size_t dot = roman.rfind('.');
    bool hasExtension = dot != std::string::npos && dot > 0 && roman.size() - dot <= 8;
    std::string ending = "#" + std::to_string(number) + (hasExtension ? roman.substr(dot) : "");
    std::string stem = hasExtension ? roman.substr(0, dot) : roman;
    return stem.substr(0, longestName - ending.size()) + ending;
}

std::string newAlias(const fs::path &folder, const FolderAliases &known, const std::string &linuxName)
{
    for (int number = 1;; ++number) {
        std::string alias = aliasNumbered(linuxName, number);
        std::string taken;
        if (!known.byAlias.contains(alias) && linuxNameOf(alias, taken) == noErr && !isThere(folder / taken))
            return alias;
    }
}

// The first file, in the order of names, for which the test is true.
template <typename Test>
std::optional<std::string> firstWhere(const fs::path &folder, Test test)
{
    std::optional<std::string> first;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
        std::string linuxName = entry->path().filename().string();
        if (startsLikeCompanion(linuxName) || (first && *first <= linuxName))
            continue;
        auto macName = converted(linuxName);
        if (macName && test(*macName))
            first = linuxName;
    }
    return first;
}

std::optional<std::string> similarFile(const fs::path &folder, std::string_view macName, Match match)
{
    auto found = firstWhere(folder, [&](const std::string &candidate) { return candidate == macName; });
    if (found || match != Match::anyCase)
        return found;
    std::string folded = foldedCase(macName);
    return firstWhere(folder, [&](const std::string &candidate) { return foldedCase(candidate) == folded; });
}

// The plain letter by which an accented one is sorted.
unsigned char plainLetter(char c)
{
    static constexpr char at0x87[] = "aaaaaaceeeeiiiinooooouuuu";
    auto byte = static_cast<unsigned char>(smallLetter(c));
    if (byte >= 0x87 && byte <= 0x9F)
        return static_cast<unsigned char>(at0x87[byte - 0x87]);
    switch (byte) {
    case 0xBE:
        return 'a';
    case 0xBF:
    case 0xCF:
        return 'o';
    case 0xD8:
        return 'y';
    case 0xF5:
        return 'i';
    case 0xA7:
        return 's';
    }
    return byte;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Takes the digits off the front and returns them without leading zeros.
std::string_view takeNumber(std::string_view &text)
{
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length]))
        ++length;
    std::string_view digits = text.substr(0, length);
    text.remove_prefix(length);
    while (digits.size() > 1 && digits.front() == '0')
        digits.remove_prefix(1);
    return digits;
}

}  // namespace

OSErr linuxNameOf(std::string_view macName, std::string &linuxName)
{
    constexpr std::string_view forbidden("\0:", 2);
    if (macName.empty() || macName.size() > longestName || macName.find_first_of(forbidden) != macName.npos)
        return bdNamErr;
    linuxName = utf8FromRoman(macName);
    std::replace(linuxName.begin(), linuxName.end(), '/', ':');
    if (startsLikeCompanion(linuxName) || linuxName == "." || linuxName == "..")
        return bdNamErr;
    return noErr;
}

// A number is its length and its digits: the longer one is larger.
std::string sortingKey(std::string_view macName)
{
    std::string key;
    while (!macName.empty()) {
        if (isDigit(macName.front())) {
            const std::string_view number = takeNumber(macName);
            key += '0';
            key += static_cast<char>(std::min<std::size_t>(number.size(), 255));
            key += number;
        } else {
            key += static_cast<char>(plainLetter(macName.front()));
            macName.remove_prefix(1);
        }
    }
    return key;
}

int compareNames(std::string_view macName, std::string_view other)
{
    if (const int order = sortingKey(macName).compare(sortingKey(other)))
        return order;
    const int folded = foldedCase(macName).compare(foldedCase(other));
    return folded ? folded : macName.compare(other);
}

OSErr pathFor(const fs::path &folder, std::string_view macName, Match match, fs::path &path)
{
    if (auto linuxName = aliasedName(folder, macName)) {
        path = folder / *linuxName;
        return noErr;
    }
    std::string linuxName;
    if (OSErr error = linuxNameOf(macName, linuxName))
        return error;
    path = folder / linuxName;
    if (match != Match::literal && !isThere(path))
        if (auto similar = similarFile(folder, macName, match))
            path = folder / *similar;
    return noErr;
}

std::string macNameFor(const fs::path &folder, const std::string &linuxName)
{
    if (aliases.empty() && isSameInBoth(linuxName))
        return linuxName;
    if (FolderAliases *known = aliasesIn(folder)) {
        auto found = known->byLinuxName.find(linuxName);
        if (found != known->byLinuxName.end())
            return found->second;
    }
    if (auto macName = converted(linuxName)) {
        // Two spellings of one name, or a file that is named like an alias:
        // only one of the two can have the name.
        std::string plain;
        if (aliases.empty() && linuxNameOf(*macName, plain) == noErr && plain == linuxName)
            return *macName;
        fs::path literal;
        pathFor(folder, *macName, Match::literal, literal);
        if (literal.filename() == linuxName || (!isThere(literal) && !aliasedName(folder, *macName)))
            return *macName;
    }
    FolderAliases &known = aliases[keyOf(folder)];
    std::string alias = newAlias(folder, known, linuxName);
    known.byLinuxName[linuxName] = alias;
    known.byAlias[alias] = linuxName;
    return alias;
}

void forgetAliases()
{
    aliases.clear();
}

}  // namespace toolbox::files
