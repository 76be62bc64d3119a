#include "reading/known_shapes.h"

#include <string_view>

namespace riders::reading {

extern const std::string_view kMenuRound, kMenuEllipse, kMenuLine, kMenuSquare, kMenuDiamond, kMenuCross,
    kMenuEuclidean;

namespace {

// As the menu of the plug-in calls it; empty where it has no such shape.
std::string nameInMenu(std::string_view body)
{
    const std::pair<const char *, std::string_view> menu[] = {
        {"Round", kMenuRound},        {"Ellipse", kMenuEllipse}, {"Line", kMenuLine},
        {"Square", kMenuSquare},      {"Diamond", kMenuDiamond}, {"Cross", kMenuCross},
        {"Euclidean", kMenuEuclidean}};
    for (const auto &[name, shape] : menu)
        if (body == shape)
            return name;
    return {};
}

}  // namespace

const std::vector<screens::Shape> &KnownShapes::installed()
{
    if (!installed_)
        installed_ = screens::installedShapes();
    return *installed_;
}

ChosenShape KnownShapes::called(const std::string &body)
{
    const std::string about = screens::aboutShape({{}, body, {}});
    if (std::string name = nameInMenu(body); !name.empty())
        return {std::move(name), ChosenShape::menu, about, body};
    for (const screens::Shape &shape : installed())
        if (shape.body == body)
            return {screens::namesOf(shape).back(), ChosenShape::installed, about, body};
    return {{}, ChosenShape::own, about, body};
}

}  // namespace riders::reading
