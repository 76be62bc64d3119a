// `riders proof`: the plates of a job as an imagesetter would make them, what
// is measured on them, and a page to look at.
#pragma once

#include "proof/request.h"

namespace riders::proof {

// Where its folder goes.
std::filesystem::path placeOf(const ProofRequest &request);

// Writes the proof folder and returns the path of its page. The folder appears
// when all is done; an earlier proof there is then replaced as a whole. Throws
// Refusal when the job, the riders file, the pages or the folder cannot be used,
// and when the interpreter fails, naming the page and what the interpreter said. Where only some pages took too
// long to render, the folder is made without their dots, and the Refusal says so. Whatever happens, nothing else
// is left on the disk, except when the process is killed outright. SIGINT, SIGTERM and SIGHUP end the work, throw
// Interrupted, and are for the caller to act on. Only one call at a time.
std::filesystem::path proof(const ProofRequest &request);

}  // namespace riders::proof
