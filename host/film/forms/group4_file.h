// A plate compressed with CCITT group 4, in a file of its own until it is put into one of another form.
#pragma once

#include <memory>

#include "film/forms/plate_writer.h"

namespace riders::film {

// Makes sheet.file, which must not be there; it has nothing but the compressed bytes, in which 0 is white. Throws
// Refusal.
std::unique_ptr<PlateWriter> group4File(const PlateSheet &sheet);

}  // namespace riders::film
