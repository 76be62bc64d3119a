// A queue as PAPPL knows printers: what it can do and takes.
#pragma once

#include <pappl/pappl.h>

#include "printer/queues/queue.h"

namespace riders::printer {

// Says what the system's printers can do, and which formats of documents they take.
void setDriver(pappl_system_t *system);

// Makes a queue a printer of the system: nobody else can make one, since it would have no choices and no folder.
// Others on the network are told of it where that is wanted. Throws io::Refusal.
void servePrinter(pappl_system_t *system, const Queue &queue, bool announced);

}  // namespace riders::printer
