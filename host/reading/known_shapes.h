// Dot shapes by their PostScript.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "reading/choices.h"
#include "screens/shapes.h"

namespace riders::reading {

class KnownShapes {
public:
    // The shape of the menu, or else the installed one, that has this body; else one of the user's own, without a
    // name. The installed ones are read when they are wanted first. Throws what
    // screens::installedShapes does.
    ChosenShape called(const std::string &body);

private:
    const std::vector<screens::Shape> &installed();

    std::optional<std::vector<screens::Shape>> installed_;
};

}  // namespace riders::reading
