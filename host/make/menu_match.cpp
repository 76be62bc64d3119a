#include "make/menu_match.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <functional>

namespace riders::make {
namespace {

// The number that a text begins with, if what follows it is allowed.
bool leadingNumber(const std::string &text, bool unitAllowed, double &value)
{
    const char *end = text.data() + text.size();
    auto [rest, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    return error == std::errc() && (unitAllowed || rest == end);
}

int firstItem(const std::vector<std::string> &items, const std::function<bool(const std::string &)> &matches)
{
    auto found = std::find_if(items.begin(), items.end(), matches);
    return found == items.end() ? 0 : static_cast<int>(found - items.begin()) + 1;
}

std::string withoutTrailingBlanks(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

}  // namespace

int itemWithValue(const std::vector<std::string> &items, const std::string &value)
{
    double wanted = 0;
    if (!leadingNumber(value, false, wanted))
        return 0;
    return firstItem(items, [&](const std::string &item) {
        double offered = 0;
        return leadingNumber(item, true, offered) && offered == wanted;
    });
}

bool isValue(const std::string &item)
{
    return item != "-" && item.find("...") == std::string::npos;
}

int itemWithName(const std::vector<std::string> &items, const std::string &name)
{
    return firstItem(items, [&](const std::string &item) {
        return isValue(item) && strcasecmp(withoutTrailingBlanks(item).c_str(), name.c_str()) == 0;
    });
}

}  // namespace riders::make
