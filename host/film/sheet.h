// Where a page lies on its film, how large the film is, and what is drawn alike on all its plates.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "film/drawing/drawing.h"
#include "film/drawing/lettering.h"
#include "film/sheet_size.h"
#include "plates/tones/tones.h"
#include "screening/tile.h"

namespace riders::film {

struct MarksAsked {
    bool label = false, registerMarks = false, cropMarks = false, wedge = false;
    std::optional<SheetSize> sheet;  // else the film is as large as page and marks together

    bool any() const { return label || registerMarks || cropMarks || wedge; }
};

// A step of the wedge.
struct WedgeStep {
    int percent = 0;
    PixelBox box;
};

// One for a page: all its plates have the same marks in the same place, to the pixel. Marks lie outside the page's
// trim; all but crop marks lie outside all of the page, since a job may draw there what it likes.
class Sheet {
public:
    // Throws Refusal where the film that is asked for is too small, where a film would have more than
    // plates::kLongestPlateSide pixels on a side, and where what draws text is not installed.
    Sheet(const plates::TonePage &page, const screening::Resolution &resolution, const MarksAsked &asked);

    // Of the film, in pixels.
    std::size_t columns() const { return columns_; }
    std::size_t rows() const { return rows_; }
    // Where the page's first pixel lies.
    std::size_t left() const { return left_; }
    std::size_t top() const { return top_; }

    const screening::Resolution &resolution() const { return resolution_; }
    // Lines, and the wedge's numbers.
    const Drawing &drawing() const { return drawing_; }
    const std::vector<WedgeStep> &wedge() const { return wedge_; }
    // Room for the label; empty where none is asked for.
    const std::optional<PixelBox> &labelBox() const { return labelBox_; }
    // Of the film's resolution; null where no text is asked for.
    const Lettering *lettering() const { return lettering_.get(); }

private:
    void drawBesidePage(const plates::TonePage &page, const MarksAsked &asked);
    void drawWedge(const PixelBox &box);
    void cutTo(const PixelBox &needed, const plates::TonePage &page, const MarksAsked &asked);

    screening::Resolution resolution_;
    std::size_t columns_ = 0, rows_ = 0, left_ = 0, top_ = 0;
    std::unique_ptr<Lettering> lettering_;
    Drawing drawing_;
    std::vector<WedgeStep> wedge_;
    std::optional<PixelBox> labelBox_;
};

}  // namespace riders::film
