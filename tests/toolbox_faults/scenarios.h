// The commands of the program and the sessions in examples/sessions that are run with faults.
#pragma once

#include "toolbox_faults/run.h"

namespace toolbox_faults {

std::vector<Scenario> everyScenario();
// What the folder holds before each of them: files of the user's, among them a riders file and a job.
Files filesBefore();
// After any of them, whatever happened: a make that saves settings, and a session that makes a file anew and then
// replaces it.
std::vector<Scenario> nextRuns();

}  // namespace toolbox_faults
