// Any text as an option of a print job, a resolution of a driver's or a sheet's size: understood within its
// limits, or not at all.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "film/printing/film_on_sheet.h"
#include "film/printing/job_option.h"
#include "film/printing/queue_resolution.h"

namespace {

void check(bool holds)
{
    if (!holds)
        std::abort();
}

void checkResolution(const std::optional<riders::screening::Resolution> &dpi)
{
    check(!dpi || (dpi->across >= 1 && dpi->across <= 20000 && dpi->down >= 1 && dpi->down <= 20000));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    using namespace riders::printing;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    if (const auto option = jobOptionFromText(text))
        check(!option->name.empty() && option->name.find(' ') == option->name.npos &&
              text.find('\n') == text.npos);
    checkResolution(resolutionFromCode(text));
    checkResolution(resolutionFromName(text));
    if (const auto sheet = sheetFromText(text))
        check(sheet->width >= 1 && sheet->width <= 100000 && sheet->height >= 1 && sheet->height <= 100000);
    return 0;
}
