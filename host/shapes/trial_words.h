// Reads what trial.ps writes of the dot shapes that it tries.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace riders::shapes {

// Samples along a cell's side, as in trial.ps.
inline constexpr int kSide = 128;

struct ShapeTrial {
    bool ended = false;
    std::string problem;  // why it is no dot shape, as "it fails ..."; empty where it is one
    // Spot values where it is one: kSide * kSide, rows from y = -1 up, values from x = -1 up; those at 1 belong to
    // the next cell. Or those at the pixels that were asked for.
    std::vector<float> values;
};

class TrialWords {
public:
    // Of so many shapes, and as many values of each.
    explicit TrialWords(std::size_t count, std::size_t values = std::size_t{kSide} * kSide)
        : trials_(count), most_(values)
    {
    }

    // True for a line that trial.ps has written. Whatever the lines are, they take little memory.
    bool take(std::string_view line);
    // In their order. One that has not ended has neither a problem nor all values.
    const std::vector<ShapeTrial> &trials() const { return trials_; }
    // The shape that is being tried; as many as there are when all have ended.
    std::size_t current() const { return current_; }

private:
    void takeRow(std::string_view numbers);
    void takePixels(std::string_view numbers);
    void takeFault(std::string_view words);
    void end();

    std::vector<ShapeTrial> trials_;
    std::size_t most_, current_ = 0;
};

}  // namespace riders::shapes
