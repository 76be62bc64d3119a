#include "film/film_names.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>

namespace riders::film {
namespace {

constexpr std::size_t kLongestPlate = 60, kLongestJob = 160;  // bytes, well below 255 together

bool isPlain(char c)
{
    constexpr std::string_view others = "_+.-";
    return (static_cast<unsigned char>(c) < 0x80 && std::isalnum(static_cast<unsigned char>(c))) ||
           others.find(c) != others.npos;
}

// What may make trouble in a file's name becomes one hyphen.
std::string safeName(const std::string &plate)
{
    std::string name;
    for (const char c : plate)
        if (isPlain(c))
            name += c;
        else if (!name.empty() && name.back() != '-')
            name += '-';
    name.resize(std::min(name.size(), kLongestPlate));
    name.erase(name.find_last_not_of('-') + 1);
    return name.empty() ? "ink" : name;
}

std::string inLowerCase(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

std::string freeName(const std::string &name, std::set<std::string> &taken)
{
    std::string free = name;
    for (int number = 2; !taken.insert(inLowerCase(free)).second; ++number)
        free = name + "-" + std::to_string(number);
    return free;
}

std::string digitsOf(int page, int lastPage)
{
    const std::size_t count = std::max<std::size_t>(2, std::to_string(lastPage).size());
    const std::string digits = std::to_string(page);
    return std::string(count - std::min(count, digits.size()), '0') + digits;
}

// Not in the middle of a character of UTF-8.
std::string cutOff(std::string name, std::size_t bytes)
{
    if (name.size() <= bytes)
        return name;
    while (bytes > 0 && (static_cast<unsigned char>(name[bytes]) & 0xC0) == 0x80)
        --bytes;
    return name.substr(0, bytes);
}

}  // namespace

std::string jobTitle(const std::filesystem::path &job)
{
    const std::string stem = job.stem();
    return stem.empty() ? "job" : stem;
}

std::vector<std::string> filmNames(const std::filesystem::path &job, int page, int lastPage,
                                   const std::vector<std::string> &plates, const std::string &extension)
{
    const std::string start = cutOff(jobTitle(job), kLongestJob) + "_p" + digitsOf(page, lastPage) + "_";
    std::vector<std::string> names;
    std::set<std::string> taken;
    for (const std::string &plate : plates)
        names.push_back(start + freeName(safeName(plate), taken) + extension);
    return names;
}

}  // namespace riders::film
