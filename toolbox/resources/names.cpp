#include "resources/names.h"

#include <algorithm>

namespace toolbox::resources {
namespace {

// The accented capitals of Mac OS Roman, and their small letters in the same
// places.
constexpr std::string_view capitals = "\x80\x81\x82\x83\x84\x85\x86\xE7\xCB\xE5\xCC\xE9\xE6\xE8\xEA"
                                      "\xED\xEB\xEC\xEE\xF1\xEF\xCD\xF2\xF4\xF3\xAE\xAF\xCE\xD9";
constexpr std::string_view smalls = "\x8A\x8C\x8D\x8E\x96\x9A\x9F\x87\x88\x89\x8B\x8F\x90\x91\x92"
                                    "\x93\x94\x95\x97\x98\x99\x9B\x9C\x9D\x9E\xBE\xBF\xCF\xD8";
static_assert(capitals.size() == smalls.size());

char folded(char letter)
{
    if (letter >= 'A' && letter <= 'Z')
        return static_cast<char>(letter - 'A' + 'a');
    std::size_t place = capitals.find(letter);
    return place == std::string_view::npos ? letter : smalls[place];
}

}  // namespace

bool sameName(std::string_view one, std::string_view other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return folded(a) == folded(b); });
}

}  // namespace toolbox::resources
