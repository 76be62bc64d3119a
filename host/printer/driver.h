// A queue as PAPPL knows printers: what it can do and takes.
#pragma once

#include <pappl/pappl.h>

#include <string>

#include "printer/service.h"

namespace riders::printer {

inline constexpr const char *kDriver = "riders-films";

// What PAPPL asks for each printer; the data is the request.
bool describeQueue(pappl_system_t *system, const char *driver, const char *uri, const char *id,
                   pappl_pr_driver_data_t *data, ipp_t **attributes, void *request);

// The formats of documents that are made into films.
void takeFormats(pappl_system_t *system);
// Whether a document of that format is; PAPPL itself takes whatever comes. Pages of pixels are PostScript by then.
bool isTaken(const std::string &format);

}  // namespace riders::printer
