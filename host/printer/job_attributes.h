// What a job of PAPPL's says of itself.
#pragma once

#include <pappl/pappl.h>

#include <string>

#include "printer/jobs/job_record.h"

namespace riders::printer {

JobKey keyOf(pappl_job_t *job);

// What is kept of it. Choices that it cannot make are left out, and said in the record's message. The caller may
// hold no lock of PAPPL's.
JobRecord recordOf(pappl_job_t *job);

// The same text, for as long as the process lives: PAPPL keeps the pointer.
const char *keptText(const std::string &text);

}  // namespace riders::printer
