// A queue as PAPPL knows printers: what it can do and takes.
#pragma once

#include <pappl/pappl.h>

#include "printer/service_request.h"

namespace riders::printer {

inline constexpr const char *kDriver = "riders-films";

// What PAPPL asks for each printer; the data is the request.
bool describeQueue(pappl_system_t *system, const char *driver, const char *uri, const char *id,
                   pappl_pr_driver_data_t *data, ipp_t **attributes, void *request);

// The formats of documents that are made into films.
void takeFormats(pappl_system_t *system);

}  // namespace riders::printer
