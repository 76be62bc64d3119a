// Any text as a plate's screen: refused, or the same again when written and read.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "io/refusal.h"
#include "screens/plate_spelling.h"

namespace {

using riders::screens::PlateScreen;

bool alike(std::optional<double> one, std::optional<double> other)
{
    return one ? other && std::abs(*one - *other) < 1e-4 : !other;
}

PlateScreen readAgain(const PlateScreen &screen)
{
    try {
        return riders::screens::plateFromText(textFromPlate(screen));
    } catch (const riders::io::Refusal &) {
        abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    PlateScreen screen;
    try {
        screen = riders::screens::plateFromText(std::string(reinterpret_cast<const char *>(data), size));
    } catch (const riders::io::Refusal &) {
        return 0;
    }
    const PlateScreen again = readAgain(screen);
    if (again.plate != screen.plate || again.shape != screen.shape || !alike(again.frequency, screen.frequency) ||
        !alike(again.angle, screen.angle) || plateInWords(screen).empty())
        abort();
    return 0;
}
