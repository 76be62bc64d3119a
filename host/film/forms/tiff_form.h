// Films as TIFF, a file for each plate.
#pragma once

#include <filesystem>

#include "film/forms/plate_writer.h"

namespace riders::film {

enum class Compression { group4, none };

// One bit a pixel, white is 0; a strip is the whole plate, as film recorders like it. A file gets its name when
// its plate ends, and replaces what had the name.
class TiffForm : public Form {
public:
    explicit TiffForm(Compression compression);
    TiffForm(const TiffForm &) = delete;
    TiffForm &operator=(const TiffForm &) = delete;
    ~TiffForm() override;

    std::unique_ptr<PlateWriter> plate(const PlateSheet &sheet) override;
    void finish() override {}

private:
    const Compression compression_;
    void (*const oldPipeHandler_)(int);
};

// Whether the file is a TIFF that says that this program made it; false for one that cannot be read.
bool isOwnTiff(const std::filesystem::path &file);

}  // namespace riders::film
