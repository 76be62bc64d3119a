// Any bytes as a number that a user types: one that is tidied stays the same number, and one that passes is in
// range.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz/plugin_session.h"
#include "make/menu_match.h"
#include "source/ktAnnoDlg.h"
#include "source/ktFreqDlg.h"
#include "source/strings.h"

namespace {

void expectInRange(const Str255 text, double least, double most)
{
    double value = 0;
    if (PStrToDouble(text, &value) > kWholeNumber || !(value >= least && value <= most))
        abort();
}

void tidy(StringPtr text)
{
    double before = 0, after = 0;
    if (PStrToDouble(text, &before) > kWholeNumber)
        return;
    RemoveLeadingZeros(text);
    RemoveTrailingZeros(text);
    AddLeadingZero(text);
    if (text[0] > 0 && (PStrToDouble(text, &after) > kWholeNumber || after != before))
        abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static PluginSession session;
    const std::string bytes(reinterpret_cast<const char *>(data), std::min<size_t>(size, 15));
    Str255 text;
    toolbox::setPascal(text, bytes, 254);
    const struct {
        int16_t kind;
        double least, most;
    } kinds[] = {{5, 1, 999}, {6, 0, 360}, {7, 0.2, 200}};
    for (const auto &kind : kinds)
        if (DoFreqStrCheck(text, kind.kind, false))
            expectInRange(text, kind.least, kind.most);
    if (DoSizeStrCheck(text, false))
        expectInRange(text, 4, 30);
    if (toolbox::pascalView(text) != bytes)
        abort();
    tidy(text);
    const std::vector<std::string> items = {"Printer's own", "45 lpi", "0", bytes, "Other..."};
    for (const int item : {riders::make::itemWithValue(items, bytes), riders::make::itemWithName(items, bytes)})
        if (item < 0 || item > 5)
            abort();
    return 0;
}
