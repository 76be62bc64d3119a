// Any lines of an interpreter or a dot shape: a trial ends with all its values or with a problem, and its values
// can be looked at.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "shapes/growth.h"
#include "shapes/trial_words.h"

namespace {

constexpr size_t kShapes = 3, kAll = size_t{riders::shapes::kSide} * riders::shapes::kSide;

// Turns a line that begins with R, F or E into one that is known.
std::string spelledOut(const std::string &line)
{
    const std::string opening = "RidersShape ";
    switch (line.empty() ? 0 : line[0]) {
    case 'R':
        return opening + "row " + line.substr(1);
    case 'F':
        return opening + "fault " + line.substr(1);
    case 'E':
        return opening + "end";
    }
    return line;
}

void look(const riders::shapes::ShapeTrial &trial)
{
    if (trial.problem.empty() != (trial.values.size() == kAll))
        abort();
    for (const float value : trial.values)
        if (!std::isfinite(value))
            abort();
    if (!trial.values.empty())
        riders::shapes::notesOn(trial.values);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::istringstream in(std::string(reinterpret_cast<const char *>(data), size));
    riders::shapes::TrialWords words(kShapes);
    for (std::string line; std::getline(in, line);)
        words.take(spelledOut(line));
    for (size_t i = 0; i < kShapes; ++i) {
        const riders::shapes::ShapeTrial &trial = words.trials()[i];
        if (trial.ended != (i < words.current()) || trial.values.size() > kAll)
            abort();
        if (trial.ended)
            look(trial);
    }
    return 0;
}
