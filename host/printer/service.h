// The printer: an IPP server on which every program can print, and whose paper are films.
#pragma once

#include "printer/service_request.h"

namespace riders::printer {

// Serves until SIGINT or SIGTERM comes. What was accepted and is not made yet is made by the next run. Throws
// io::Refusal where it cannot begin.
void serve(const ServiceRequest &request);

}  // namespace riders::printer
