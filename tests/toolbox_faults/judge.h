// Whether what a run with a fault left is what is promised.
#pragma once

#include "toolbox_faults/run.h"

namespace toolbox_faults {

// What there was before a scenario, and what is there after a run without a fault.
struct Usual {
    Files filesBefore, settingsBefore;
    Outcome after;
};

// What is wrong, in sentences; nothing if all is right.
std::vector<std::string> wrongIn(const Outcome &is, const Usual &usual, const Scenario &scenario,
                                 const Fault &fault);

}  // namespace toolbox_faults
