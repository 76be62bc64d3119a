// Text in dots.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "film/drawing/drawing.h"
#include "screening/tile.h"

namespace riders::film {

struct TextStyle {
    double size = 8;  // points
    bool bold = false;
    double width = 0;  // points at most: what is longer loses its middle to three dots; 0 for any
};

// A line of text, black on nothing, as wide and high as its letters.
struct LetteredLine {
    BitPicture picture;
    std::int64_t left = 0, top = 0;  // of the picture, in pixels from where the line begins on its baseline
    std::int64_t advance = 0;        // how far the line goes to the right, in pixels
};

// Shapes and draws text of any script with Pango and the fonts that are installed. Pango is loaded when the first
// of these is made: it would double the time in which the program starts. One thread at a time.
class Lettering {
public:
    // Throws Refusal where Pango is not installed.
    explicit Lettering(const screening::Resolution &resolution);
    ~Lettering();
    Lettering(const Lettering &) = delete;
    Lettering &operator=(const Lettering &) = delete;

    // UTF-8 without control characters. The line begins at the left whatever its script.
    LetteredLine line(const std::string &text, const TextStyle &style) const;

private:
    struct Pango;
    std::unique_ptr<Pango> pango_;
};

// A name within a line: what is written from right to left in it turns nothing round it.
std::string nameInLine(const std::string &name);

}  // namespace riders::film
