// A print queue, asked what it is.
#pragma once

#include <string>
#include <vector>

#include "film/printing/print_server.h"
#include "film/printing/queue.h"

namespace riders::printing {

// Throws Refusal where there is no such queue, with those that there are, and where it is none that keeps dots.
Queue askQueue(const PrintServer &server, const std::string &name);

struct QueueName {
    std::string name, model;
};

// The queues that there are, without classes of them.
std::vector<QueueName> queueNames(const PrintServer &server);

}  // namespace riders::printing
