// The dot shapes of films: those that are built in, and spot functions run once in the interpreter.
#pragma once

#include <map>
#include <mutex>
#include <string>

#include "screening/thresholds.h"

namespace riders::film {

struct DotShape {
    std::string name;  // for people; of a file its path
    std::string body;  // of its spot function; empty for one that is built in
};

// The shape that `riders make --spot` means by that name or file. Throws Refusal where there is none.
DotShape dotShapeNamed(const std::string &nameOrFile);

// From any thread.
class DotShapes {
public:
    // A body is run in the interpreter, with limits, once for each. The function returned may be called from any
    // thread and at any time. Throws Refusal where the body is no dot shape.
    screening::SpotFunction spotOf(const DotShape &shape);

private:
    std::mutex mutex_;
    std::map<std::string, screening::SpotFunction> tabulated_;  // by their bodies
};

}  // namespace riders::film
