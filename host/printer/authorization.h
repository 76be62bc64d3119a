// Who may use the printer from another machine.
#pragma once

#include <pappl/pappl.h>

#include <string>

#include "printer/service_request.h"

namespace riders::printer {

// Has PAPPL ask other machines for the password, where there is one, over an encrypted connection only. Throws
// io::Refusal where its file can be read by others than its owner, or has none.
void askForPassword(pappl_system_t *system, const ServiceRequest &request);

}  // namespace riders::printer
