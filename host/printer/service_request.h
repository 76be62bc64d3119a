// What a user asks of `riders printer`.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "printer/filming/film_job.h"
#include "printer/queues/queue.h"

namespace riders::printer {

inline constexpr int kUsualPort = 8631;

enum class Sandboxes { whereTheyWork, always, never };

struct ServiceRequest {
    int port = kUsualPort;
    std::string listen = {};                  // an address besides this machine's own; * for all
    std::filesystem::path passwordFile = {};  // its first line is asked of other machines
    std::string accounts = {};                // or the name of a service of PAM
    std::filesystem::path state = {}, films = {};
    std::vector<Queue> queues = {};
    Sandboxes sandboxes = Sandboxes::whereTheyWork;
    FilmingLimits limits = {};
    int atOnce = 0;            // jobs of different queues in work; 0: as many as there are cores
    int mostMegabytes = 1024;  // of a document
    int mostKept = 500;        // jobs that have ended are kept to be printed again
    bool verbose = false;
};

}  // namespace riders::printer
