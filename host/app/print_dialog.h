// Asking on which printer, and how often.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace riders::app {

struct PrintChoice {
    std::string queue;
    int copies = 1;
};

// Nothing when the person thinks better of it. `queues` is not empty.
std::optional<PrintChoice> askHowToPrint(const std::vector<std::string> &queues);

}  // namespace riders::app
