#include "film/dot_shapes.h"

#include <optional>

#include "io/refusal.h"
#include "screens/shapes.h"
#include "tables/formulas.h"
#include "tables/screen_tables.h"

namespace riders::film {
DotShape dotShapeNamed(const std::string &nameOrFile)
{
    if (const std::optional<std::string> name = tables::builtInShape(nameOrFile))
        return {*name, {}};
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
        return tables::thresholdsOf(shape.name, screen, resolution);
    return tables::thresholdsOf({shape.name, shape.body, {}}, screen, resolution);
}

}  // namespace riders::film
