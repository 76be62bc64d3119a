// Halftone screens drawn large enough to see their dots.
#pragma once

#include <functional>

#include "toolbox/host/picture.h"

namespace art {

// From -1 to 1 in both directions of a cell; the highest values are inked first.
using Spot = std::function<double(double x, double y)>;
double roundSpot(double x, double y);
double ellipseSpot(double x, double y);
double lineSpot(double x, double y);
double diamondSpot(double x, double y);
double crossSpot(double x, double y);

struct Screen {
    double period;   // of a cell, in pixels
    double angle;    // degrees
    Spot spot;
    // Whether a screen under that tint, 0 to 1, inks the point.
    bool inks(double h, double v, double tint) const;
};

// How much of a pixel is inked, from 0 to 1.
using Coverage = std::function<bool(double h, double v)>;
double covered(const Coverage &ink, int h, int v);

// Darkens a pixel by an ink (its colour on paper) that covers that share of it.
std::uint32_t printed(std::uint32_t paper, std::uint32_t ink, double coverage);

// Every pixel as the procedure says.
toolbox::Picture drawn(int width, int height, const std::function<std::uint32_t(int h, int v)> &pixel);

}  // namespace art
