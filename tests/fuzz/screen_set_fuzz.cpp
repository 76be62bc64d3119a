// Any bytes as a set of screens: refused in words that name the file, or a set whose figures are within their
// limits.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "io/refusal.h"
#include "screens/screen_limits.h"
#include "screens/set_file.h"

namespace {

namespace screens = riders::screens;

void judge(const std::vector<screens::PlateScreen> &plates)
{
    if (plates.empty() || plates.size() > screens::kMostSetPlates)
        abort();
    for (const screens::PlateScreen &plate : plates) {
        if (!screens::wrongPlateName(plate.plate).empty() || screens::hasControlCharacters(plate.shape))
            abort();
        if (plate.frequency && !screens::wrongFrequency(*plate.frequency).empty())
            abort();
        if (plate.angle && !screens::wrongAngle(*plate.angle).empty())
            abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    try {
        const screens::ScreenSet set = screens::setFromText(text, "set");
        if (set.name.empty())
            abort();
        judge(screensOf(set));
        judge(screensOf(set, 133.5));
    } catch (const riders::io::Refusal &refusal) {
        if (!refusal.message.starts_with("set:") && !refusal.message.starts_with("the set "))
            abort();
    }
    return 0;
}
