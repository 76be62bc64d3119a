#include "film/dot_shapes.h"

#include <strings.h>

#include <optional>

#include "io/refusal.h"
#include "meter/spots.h"
#include "screens/shapes.h"
#include "tables/screen_tables.h"

namespace riders::film {
namespace {

const meter::NamedSpot *builtIn(const std::string &name)
{
    for (const auto *spots : {&meter::namedSpots(), &meter::rarerSpots()})
        for (const meter::NamedSpot &spot : *spots)
            if (strcasecmp(spot.name, name.c_str()) == 0)
                return &spot;
    return nullptr;
}

}  // namespace

DotShape dotShapeNamed(const std::string &nameOrFile)
{
    if (const meter::NamedSpot *const spot = builtIn(nameOrFile))
        return {spot->name, {}};
    const std::optional<screens::Shape> shape = screens::shapeNamed(nameOrFile);
    if (!shape)
        throw io::Refusal("there is no dot shape and no file \"" + nameOrFile +
                          "\"; riders shapes lists the shapes");
    return {shape->name, shape->body};
}

screening::Thresholds thresholdsOf(const DotShape &shape, const screening::Screen &screen,
                                   const screening::Resolution &resolution)
{
    if (shape.body.empty())
        return {findTile(screen, resolution), builtIn(shape.name)->value};
    return tables::thresholdsOf({shape.name, shape.body, {}}, screen, resolution);
}

}  // namespace riders::film
