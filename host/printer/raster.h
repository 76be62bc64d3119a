// Pages that come as pixels: PWG raster while it is received, and pictures that PAPPL decodes.
#pragma once

#include <pappl/pappl.h>

namespace riders::printer {

// Sets the functions that PAPPL calls for such pages.
void takeRaster(pappl_pr_driver_data_t &data);

}  // namespace riders::printer
