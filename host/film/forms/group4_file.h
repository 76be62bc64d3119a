// A plate compressed with CCITT group 4, to be put into a file of another form.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "film/forms/plate_writer.h"
#include "film/forms/tiff_form.h"

namespace riders::film {

// Writes the plate to sheet.file, as a TIFF in one strip.
class Group4Files {
public:
    std::unique_ptr<PlateWriter> plate(const PlateSheet &sheet) { return tiffs_.plate(sheet); }

private:
    TiffForm tiffs_{Compression::group4};
};

// Where in such a file the compressed bytes are: 0 is white, and an end-of-block code ends them. Throws Refusal.
struct Group4Bytes {
    std::uint64_t offset = 0, count = 0;
};
Group4Bytes group4Bytes(const std::filesystem::path &file);

}  // namespace riders::film
