// Any text as a number of threads or lines: refused, or a mesh of which something can be said.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "screens/mesh.h"

namespace {

namespace screens = riders::screens;

void saySomething(double threads, double angle)
{
    const screens::OnMesh mesh = screens::onMesh({45, angle}, threads);
    if (screens::adviceFor(mesh).empty() || (mesh.coarsest && !(mesh.coarsest->millimetres() > 0)))
        abort();
    for (const std::string &doubt : screens::doubtsOf({45, angle}, threads))
        if (doubt.empty())
            abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    const std::optional<double> threads = screens::perInchFromText(text);
    if (!threads)
        return 0;
    if (!(*threads > 0) || !std::isfinite(*threads))
        abort();
    if (*threads >= screens::kLeastThreads && *threads <= screens::kMostThreads)
        saySomething(*threads, static_cast<double>(size));
    return 0;
}
