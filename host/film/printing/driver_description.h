// The description of a queue's driver (PPD).
#pragma once

#include "film/printing/print_server.h"
#include "film/printing/queue.h"

namespace riders::printing {

// Fills in all that it says. Throws Refusal where there is none, or where nothing that keeps dots can be sent.
void readDescription(const PrintServer &server, Queue &queue);

}  // namespace riders::printing
