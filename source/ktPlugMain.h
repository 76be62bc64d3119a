// The entry: decodes the host's message and runs what it asks for.
//
// Every call with work to do allocates its records, fills them, does the work, saves
// the settings and frees the records. main_entry itself is declared in
// riders/plugin.h, with what each selector means.
#pragma once

#include "riders/plugin.h"
