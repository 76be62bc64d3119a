#include <array>
#include <numeric>

#include "shapes/growth.h"

namespace riders::shapes {
namespace {

constexpr int kSamples = kSide * kSide;

// How many cells on something is.
struct Cells {
    int x = 0, y = 0;
};

Cells operator+(Cells a, Cells b)
{
    return {a.x + b.x, a.y + b.y};
}
Cells operator-(Cells a, Cells b)
{
    return {a.x - b.x, a.y - b.y};
}

// Inked samples that touch each other are one set. The cell repeats, so each sample also knows in which cell it
// is, seen from the one that stands for its set: a set that meets itself in another cell is a row, a column or a
// net.
class Sets {
public:
    Sets() : parent_(kSamples), offset_(kSamples) { std::iota(parent_.begin(), parent_.end(), 0); }

    // The second lies `on` cells on from where the first sees it. Returns in how many cells on they meet
    // themselves.
    Cells join(int one, int other, Cells on)
    {
        const auto [rootOne, fromOne] = find(one);
        const auto [rootOther, fromOther] = find(other);
        if (rootOne == rootOther)
            return fromOne + on - fromOther;
        parent_[static_cast<std::size_t>(rootOther)] = rootOne;
        offset_[static_cast<std::size_t>(rootOther)] = fromOne + on - fromOther;
        return {};
    }

private:
    std::pair<int, Cells> find(int sample)
    {
        Cells offset;
        while (parent_[static_cast<std::size_t>(sample)] != sample) {
            const auto index = static_cast<std::size_t>(sample);
            // The way becomes shorter each time it is gone.
            const auto parent = static_cast<std::size_t>(parent_[index]);
            offset_[index] = offset_[index] + offset_[parent];
            parent_[index] = parent_[parent];
            offset = offset + offset_[index];
            sample = parent_[index];
        }
        return {sample, offset};
    }

    std::vector<int> parent_;
    std::vector<Cells> offset_;
};

std::string directionOf(Cells on)
{
    if (on.y == 0)
        return "to rows";
    return on.x == 0 ? "to columns" : "aslant";
}

std::vector<int> samplesByTint(const Growth &growth)
{
    std::vector<int> order(kSamples);
    for (int sample = 0; sample < kSamples; ++sample) {
        const auto inked = static_cast<int>(growth[static_cast<std::size_t>(sample)] * kSamples + 0.5F) - 1;
        order[static_cast<std::size_t>(inked)] = sample;
    }
    return order;
}

// The neighbour of a sample, and whether it lies in the next cell.
std::pair<int, Cells> neighbour(int sample, int dx, int dy)
{
    const int x = sample % kSide + dx, y = sample / kSide + dy;
    const auto cell = [](int i) { return i < 0 ? -1 : i / kSide; };
    const Cells on{cell(x), cell(y)};
    return {(y - on.y * kSide) * kSide + x - on.x * kSide, on};
}

}  // namespace

Joining joiningOf(const Growth &growth)
{
    constexpr std::array<std::pair<int, int>, 4> kSides = {{{1, 0}, {-1, 0}, {0, 1}, {0, -1}}};
    Sets sets;
    std::vector<char> inked(kSamples, 0);
    Cells first;
    Joining joining;
    for (const int sample : samplesByTint(growth)) {
        inked[static_cast<std::size_t>(sample)] = 1;
        for (const auto &[dx, dy] : kSides) {
            const auto [other, on] = neighbour(sample, dx, dy);
            if (!inked[static_cast<std::size_t>(other)])
                continue;
            const Cells round = sets.join(sample, other, on);
            const double tint = growth[static_cast<std::size_t>(sample)];
            if (joining.direction.empty() && (round.x || round.y)) {
                first = round;
                joining.first = tint;
                joining.direction = directionOf(round);
            } else if (first.x * round.y != first.y * round.x) {
                joining.all = tint;
                return joining;
            }
        }
    }
    return joining;
}

}  // namespace riders::shapes
