#include "film/dot_shapes.h"

#include <strings.h>

#include <optional>

#include "io/refusal.h"
#include "film/tabulated_spot.h"
#include "meter/spots.h"
#include "screens/shapes.h"
#include "shapes/try_shapes.h"

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

screening::SpotFunction tabulated(const DotShape &shape)
{
    const shapes::ShapeTrial trial = shapes::tryShapes({{shape.name, shape.body, {}}}).at(0);
    if (!trial.problem.empty())
        throw io::Refusal("the dot shape " + shape.name + ": " + trial.problem);
    return tabulatedSpot(trial.values, shapes::kSide);
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

screening::SpotFunction DotShapes::spotOf(const DotShape &shape)
{
    if (shape.body.empty())
        return builtIn(shape.name)->value;
    const std::lock_guard lock(mutex_);
    screening::SpotFunction &spot = tabulated_[shape.body];
    if (!spot)
        spot = tabulated(shape);
    return spot;
}

}  // namespace riders::film
