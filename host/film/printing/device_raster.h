// What a printer without a driver says of the raster that it takes.
#pragma once

#include "film/printing/print_server.h"
#include "film/printing/queue_resolution.h"

namespace riders::printing {

// Its resolutions. Throws Refusal where it cannot be asked, and where it takes no black and white raster.
std::vector<QueueResolution> askDevice(const PrintServer &server, const std::string &queue);

}  // namespace riders::printing
