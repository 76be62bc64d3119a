// What a print queue is, as the print server and its driver's description have it.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "film/printing/job_option.h"
#include "film/printing/queue_resolution.h"
#include "libcups/libcups.h"

namespace riders::printing {

// A size of paper or film, in points. What can be printed on is given from its lower left corner.
struct QueueSheet {
    std::string name;
    double width = 0, height = 0;
    double left = 0, bottom = 0, right = 0, top = 0;
};

// Sheets of any size between two: `least` and `most` are without margins.
struct AnySheets {
    QueueSheet least, most;
    double left = 0, bottom = 0, right = 0, top = 0;  // the margins
};

enum class QueueKind {
    rasterDriver,  // a driver that is given CUPS raster
    pwg,           // a printer that takes PWG raster
    postScript,
};

// An option of the driver: what it is now, and what it can be.
struct QueueOption {
    std::string chosen;
    std::vector<std::string> choices;
};

struct Queue {
    std::string name, model;
    QueueKind kind = QueueKind::postScript;
    std::string driver;  // of a raster driver: the program
    std::vector<QueueResolution> resolutions;
    std::string resolutionOption;  // of the driver, or empty
    std::vector<QueueSheet> sheets;
    std::string usualSheet;
    std::optional<AnySheets> anySheets;
    std::map<std::string, QueueOption> options;
    std::vector<JobOption> saved;             // what the user has chosen for this queue, as by lpoptions
    std::shared_ptr<ppd_file_t> description;  // the driver's

    bool isGutenprint() const { return driver.find("rastertogutenprint") != driver.npos; }
};

}  // namespace riders::printing
