// The contents of a 'PICT', read into steps. Private to QuickDraw.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "toolbox/host/machine.h"
#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// The pen and colours that a step is drawn with.
struct PictureStyle {
    Point penSize{1, 1};
    int16_t penMode = patCopy;
    Pattern penPattern{{255, 255, 255, 255, 255, 255, 255, 255}};
    Pattern fillPattern{{255, 255, 255, 255, 255, 255, 255, 255}};
    Pattern backPattern{};
    std::int32_t fore = blackColor;   // as ForeColor takes it, or a directColor
    std::int32_t back = whiteColor;
};

struct PictureStep {
    enum class Kind { clip, frame, paint, erase, invert, fill, line, image };
    Kind kind;
    // In the picture's coordinates: the shape, or where the image goes.
    Rect rect{};
    Point from{}, to{};       // of a line
    PictureStyle style{};
    Picture image{};          // the part that is drawn, stretched to rect
    bool whiteIsClear = false;
};

struct PictureContents {
    Rect frame{};
    std::vector<PictureStep> steps;
};

// Versions 1 and 2. Text, round shapes, polygons and regions are skipped, and a
// clip region that is not a rectangle is replaced by its bounds. Nothing for
// bytes that end early, have no frame, use pixel patterns or opcodes whose
// length is not known, or hold more than 16 million pixels or 65535 steps.
std::optional<PictureContents> readPicture(std::string_view bytes);

}  // namespace toolbox::quickdraw
