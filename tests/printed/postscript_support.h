// For the tests of what a riders file does in an interpreter: riders files put
// together from the pieces, Ghostscript, and the page that it made.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/riders_pieces.h"
#include "support/toolbox_test.h"

struct RidersChoice {
    std::optional<std::string> frequency = {}, angle = {}, spotBody = {}, flatness = {}, annotation = {};
    std::string font = "Times-Roman", size = "12";
    bool errorHandler = false;
};
std::string composeRiders(const RidersChoice &choice);

// The built-in spot functions: TEXT number, name, and the same function in C++.
struct SpotShape {
    int id;
    const char *name;
    double (*value)(double x, double y);
};
extern const std::vector<SpotShape> kSpotShapes;

struct GhostscriptResult {
    int exitCode = -1;
    std::string output, errors;  // standard output and error
};
// Runs a job with file protection; what it paints goes to `page` ("%d" for the page's number).
GhostscriptResult runGhostscript(const TemporaryFolder &folder, const std::string &job, const std::string &page,
                                 const std::string &options = "-sDEVICE=pbmraw -r600 -g1200x1200");

// A 1-bit page; true is ink. Row 0 is the top.
struct Bitmap {
    int width = 0, height = 0;
    std::vector<bool> ink;
    bool at(int x, int y) const { return ink[static_cast<size_t>(y) * width + x]; }
    // Share of ink in a rectangle.
    double share(int left, int top, int right, int bottom) const;
};
Bitmap readBitmap(const std::filesystem::path &file);

struct MeasuredScreen {
    double frequency = 0;  // lines per inch
    double angle = 0;      // degrees from 0 to 180, clockwise on the sheet, of the strongest wave
};
// Looks at a square of 512 pixels in the middle of a flat tint.
MeasuredScreen measureScreen(const Bitmap &page, double dpi);

// A job for a played older interpreter: what it lacks is hidden from the riders file, which looks into a
// dictionary without it, and meets a trap if it uses it nevertheless. `changed` is run before.
std::string onInterpreterWithout(std::string riders, const std::vector<std::string> &names,
                                 const std::string &changed);
extern const std::vector<std::string> kGhostscriptOnly, kLevel3Only, kLevel2Only;
