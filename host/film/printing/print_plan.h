// What is to be sent to a queue, and how, so that each dot arrives.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "film/printing/queue.h"

namespace riders::printing {

struct PrintRequest {
    std::string queue;
    std::vector<JobOption> options;
    std::optional<screening::Resolution> resolution;  // a sensible one of the printer's where it is missing
    std::string media;                                // the queue's name of a sheet; empty to have one chosen
    int copies = 1;
    bool dryRun = false;  // send nothing
};

struct PrintPlan {
    Queue queue;
    QueueResolution resolution;
    std::string format;              // MIME type
    std::vector<JobOption> options;  // without the sheet
    std::string media;
    int copies = 1;
    bool dryRun = false;
    std::vector<std::string> doubts;  // sentences without full stop; what cannot be known of the queue
};

// Throws Refusal where dots could not be kept.
PrintPlan planPrinting(const PrintRequest &request);

}  // namespace riders::printing
