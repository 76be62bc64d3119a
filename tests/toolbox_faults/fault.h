// A fault of the Toolbox that a run of the program is to meet.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "toolbox/host/faults.h"

namespace toolbox_faults {

struct Fault {
    std::optional<toolbox::FileCall> call;  // nothing: an allocation
    OSErr error = memFullErr;
    bool halfway = false;
    bool onward = false;
};

// Every kind of call with each code that the plug-in has words for and one that it has none for, reads and writes
// also halfway, and allocations; each once and for good.
std::vector<Fault> everyFault();

// Plans that the nth call meets it.
void plan(const Fault &fault, int nth);
// How many calls of each kind there have been, allocations last, and the place of those that can meet the fault.
std::vector<int> callsOfEachKind();
std::size_t kindOf(const Fault &fault);
// "write 3 -> -34, halfway, for good"
std::string described(const Fault &fault, int nth);

}  // namespace toolbox_faults
