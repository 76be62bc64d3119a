#include "plates/page_list.h"

#include <algorithm>
#include <charconv>

#include "io/refusal.h"

namespace riders::plates {
namespace {

std::string_view withoutBlanks(std::string_view text)
{
    const size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    const size_t last = text.find_last_not_of(" \t");
    return text.substr(first, last == std::string_view::npos ? 0 : last + 1 - first);
}

int pageNumber(std::string_view text, const std::string &list)
{
    text = withoutBlanks(text);
    int page = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), page);
    const bool number = error == std::errc() && end == text.data() + text.size() && text[0] != '-';
    if ((error == std::errc::result_out_of_range && text[0] != '-') || (number && (page < 1 || page > kMostPages)))
        throw io::Refusal("there is no page " + std::string(text) + "; pages go from 1 to " +
                          std::to_string(kMostPages));
    if (!number)
        throw io::Refusal("\"" + list + "\" is not a list of pages such as 1,3-5");
    return page;
}

void addRange(std::vector<int> &pages, std::string_view range, const std::string &list)
{
    const size_t dash = range.find('-', 1);
    const int first = pageNumber(range.substr(0, dash), list);
    const int last = dash == std::string_view::npos ? first : pageNumber(range.substr(dash + 1), list);
    if (last < first)
        throw io::Refusal("the pages " + std::string(withoutBlanks(range)) + " run backwards");
    for (int page = first; page <= last; ++page)
        pages.push_back(page);
}

}  // namespace

std::vector<int> pagesFromText(const std::string &text)
{
    std::vector<int> pages;
    for (size_t at = 0; !text.empty() && at <= text.size();) {
        const size_t comma = std::min(text.find(',', at), text.size());
        addRange(pages, std::string_view(text).substr(at, comma - at), text);
        at = comma + 1;
        if (pages.size() > std::size_t{10} * kMostPages)
            throw io::Refusal("\"" + text.substr(0, 40) + "...\" names too many pages");
    }
    std::sort(pages.begin(), pages.end());
    pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
    return pages;
}

std::string textFromPages(const std::vector<int> &pages)
{
    std::string text;
    for (size_t i = 0; i < pages.size();) {
        size_t end = i + 1;
        while (end < pages.size() && pages[end] == pages[end - 1] + 1)
            ++end;
        text += (text.empty() ? "" : ",") + std::to_string(pages[i]);
        if (end > i + 1)
            text += "-" + std::to_string(pages[end - 1]);
        i = end;
    }
    return text;
}

}  // namespace riders::plates
