// The marks of one plate: those that all plates of the page have, and its label.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "film/drawing/drawing.h"
#include "film/sheet.h"

namespace riders::film {

// What the label says. Texts are for people: UTF-8 without control characters.
struct Label {
    std::string plate, job;
    int page = 1;
    std::string date;  // as it is shown
    // The plate's screen: as asked for, and as near as the film's pixels let it come.
    double askedFrequency = 0, askedAngle = 0;  // lines per inch, degrees; a frequency of 0: no screen is shown
    std::string shape;                          // may be empty
    double reachedFrequency = 0, reachedAngle = 0;
};

// Rows are those of the whole film and may come in any order, from several threads at once.
class PlateMarks {
public:
    // The sheet must outlast it. The label is drawn where the sheet has room for one. Throws Refusal.
    PlateMarks(const Sheet &sheet, const Label &label);

    // Puts the wedge's steps into a row of tones, sheet.columns() bytes.
    void tones(std::size_t y, std::uint8_t *row) const;
    // Adds lines and text to a row of dots, (sheet.columns() + 7) / 8 bytes.
    void draw(std::size_t y, std::uint8_t *bits) const;

private:
    void drawLabel(const PixelBox &box, const Label &label);

    const Sheet &sheet_;
    Drawing label_;
};

}  // namespace riders::film
