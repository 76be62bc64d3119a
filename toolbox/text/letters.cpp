#include "text/letters.h"

#include <algorithm>

namespace toolbox {
namespace {

// The accented capitals, and their small letters in the same places.
constexpr std::string_view capitals = "\x80\x81\x82\x83\x84\x85\x86\xE7\xCB\xE5\xCC\xE9\xE6\xE8\xEA"
                                      "\xED\xEB\xEC\xEE\xF1\xEF\xCD\xF2\xF4\xF3\xAE\xAF\xCE\xD9";
constexpr std::string_view smalls = "\x8A\x8C\x8D\x8E\x96\x9A\x9F\x87\x88\x89\x8B\x8F\x90\x91\x92"
                                    "\x93\x94\x95\x97\x98\x99\x9B\x9C\x9D\x9E\xBE\xBF\xCF\xD8";
static_assert(capitals.size() == smalls.size());

}  // namespace

char smallLetter(char roman)
{
    if (roman >= 'A' && roman <= 'Z')
        return static_cast<char>(roman - 'A' + 'a');
    std::size_t place = capitals.find(roman);
    return place == std::string_view::npos ? roman : smalls[place];
}

std::string foldedCase(std::string_view roman)
{
    std::string folded(roman);
    std::transform(folded.begin(), folded.end(), folded.begin(), smallLetter);
    return folded;
}

}  // namespace toolbox
