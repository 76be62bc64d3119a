// The printer's own pages, beside those of PAPPL.
#pragma once

#include "printer/job_line.h"

namespace riders::printer {

// Before the system runs; the line must live as long.
void addPages(pappl_system_t *system, JobLine &line);

}  // namespace riders::printer
