#include "viewing/enough_resolution.h"

#include <poll.h>

#include <algorithm>
#include <cmath>

#include "explain/explain.h"

namespace riders::viewing {
namespace {

constexpr double kOff = 0.02;  // of the frequency
constexpr int kUsual[] = {600, 720, 1200, 1270, 1440, 2400, 2540, 3600};

bool isWanted(const io::Beside &unwanted)
{
    pollfd alarm{unwanted.descriptor(), POLLIN, 0};
    return poll(&alarm, 1, 0) == 0;
}

bool isReached(const explain::ReachedScreen &screen)
{
    return std::abs(screen.frequency / screen.askedFrequency - 1) <= kOff;
}

}  // namespace

bool frequencyMissed(const Dots &dots)
{
    return dots.measured.found && dots.asked.frequency &&
           std::abs(dots.measured.frequency / *dots.asked.frequency - 1) > kOff;
}

int enoughResolution(const std::filesystem::path &riders, double dpi, const io::Beside &unwanted)
{
    for (const int usual : kUsual) {
        if (usual <= dpi)
            continue;
        if (!isWanted(unwanted))
            return 0;
        const auto screens = explain::explain(riders, usual);
        if (!screens.empty() && std::all_of(screens.begin(), screens.end(), isReached))
            return usual;
    }
    return 0;
}

}  // namespace riders::viewing
