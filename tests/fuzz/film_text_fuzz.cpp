// What films read of texts: resolutions, the dot shapes in a riders file, plates' names for files.
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

#include "film/film_names.h"
#include "film/request.h"
#include "film/resolution_text.h"
#include "film/riders_shapes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    if (const auto resolution = riders::film::resolutionFromText(text))
        for (const double dpi : {resolution->across, resolution->down})
            if (!(dpi >= riders::film::kLeastFilmDpi && dpi <= riders::film::kMostFilmDpi))
                std::abort();
    for (const auto &[plate, body] : riders::film::shapesInRiders(text))
        if (text.find(body) == text.npos)
            std::abort();
    const std::size_t half = size / 2;
    const std::vector<std::string> plates = {text.substr(0, half), text.substr(half), text};
    std::set<std::string> names;
    for (const std::string &name : riders::film::filmNames(text, 1, 1, plates, ".tif"))
        if (name.size() > 255 || name.find('/') != name.npos || !names.insert(name).second)
            std::abort();
    return 0;
}
