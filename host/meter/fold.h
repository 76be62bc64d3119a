// Laying a window's pixels over one cell, and turning and stretching the cell
// until they agree.
#pragma once

#include <vector>

#include "meter/lattice.h"

namespace riders::meter {

// One cell in columns by rows of bins: pixels that fell into each, and inked
// ones among them.
struct FoldedCell {
    static constexpr int kSide = 32;  // bins along a wave; 1 along a missing one

    int columns = 0, rows = 0;
    std::vector<float> pixels, inked;

    std::size_t bins() const { return pixels.size(); }
    double ink() const;
    // Share of ink of each bin, blurred by a bell curve of `spread` bins; empty
    // bins take their neighbours'. A spread of 0 leaves filled bins as they are.
    std::vector<float> shares(double spread) const;
    // Share of the variation that the bins explain, less what chance would explain.
    double evenness() const;
};

class Folding {
public:
    // The window lies on the page. About as many of its pixels as `pixels` says
    // are looked at, evenly spread.
    Folding(const BitPage &page, const PageWindow &window, int pixels);

    void lay(const Lattice &lattice);
    const FoldedCell &cell() const { return cell_; }
    // The correction to the lattice last laid down that makes the pixels agree
    // better. Bins are compared with a cell blurred by the spread: a wide one
    // helps from far away, 0 is exact.
    Lattice correction(double spread, double slopeSpread) const;
    // By how many periods a correction moves the window's corners.
    double effect(const Lattice &correction) const;

private:
    struct Block {
        int left, top, width, height;
        double x, y;  // its middle, relative to the window's
        FoldedCell cell;
    };
    void layBlock(Block &block, const Lattice &lattice);

    const BitPage &page_;
    PageWindow window_;
    std::vector<Block> blocks_;
    FoldedCell cell_;
    bool lines_ = false;
};

// Finds out where in a window the pixels agree with its average cell.
class CellFit {
public:
    // All must outlive it.
    CellFit(const BitPage &page, const PageWindow &window, const Lattice &lattice);
    // Share of the pixels in a part of the window that are not what the cell predicts.
    double disagreement(const PageWindow &part) const;

private:
    const BitPage &page_;
    Lattice lattice_;
    double middleX_, middleY_;
    int columns_;
    std::vector<float> shares_;
};

// Pixels that this thread has laid over cells so far: what a reading costs.
std::uint64_t pixelsLaid();

}  // namespace riders::meter
