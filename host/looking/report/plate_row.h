// A plate's row in the table of its page.
#pragma once

#include <string>

#include "looking/facts/page_facts.h"

namespace riders::looking {

// HTML. `dpi` is that of the dots.
std::string plateRow(const PlateFacts &plate, double dpi);

}  // namespace riders::looking
