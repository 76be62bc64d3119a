// Any text as a list of pages: refused, or pages in ascending order that are the
// same again when written and read.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "io/refusal.h"
#include "plates/page_list.h"

namespace {

// Lists of many thousand pages are right, but take long.
bool isShort(const std::string &text)
{
    size_t digits = 0;
    for (const char letter : text) {
        if (!isdigit(static_cast<unsigned char>(letter)))
            digits = 0;
        else if (digits > 0 || letter != '0')
            ++digits;
        if (digits > 3)
            return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), std::min<size_t>(size, 200));
    if (!isShort(text))
        return 0;
    try {
        const std::vector<int> pages = riders::plates::pagesFromText(text);
        if (!pages.empty() && (pages.front() < 1 || pages.back() > riders::plates::kMostPages))
            abort();
        if (std::adjacent_find(pages.begin(), pages.end(), std::greater_equal<>()) != pages.end())
            abort();
        if (riders::plates::pagesFromText(riders::plates::textFromPages(pages)) != pages)
            abort();
    } catch (const riders::io::Refusal &) {
    }
    return 0;
}
