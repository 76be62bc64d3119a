// A plate's row in the table of its page.
#pragma once

#include <string>

#include "proof/facts/page_facts.h"

namespace riders::proof {

// HTML. `dpi` is that of the films.
std::string plateRow(const PlateFacts &plate, double dpi);

}  // namespace riders::proof
