// A page as the interpreter writes it in colour: a PPM file, three bytes a pixel.
#pragma once

#include <filesystem>

#include "io/bytes.h"
#include "toolbox/host/machine.h"

namespace riders::viewing {

class ColourFile {
public:
    // Throws Refusal for a file that is none.
    explicit ColourFile(const std::filesystem::path &file);

    int columns() const { return columns_; }
    int rows() const { return rows_; }
    // All of it in so many columns and rows, at most its own: each pixel is the mean of those that it stands for.
    // Reads the file, a row at a time; once.
    toolbox::Picture picture(int columns, int rows);

private:
    int number();

    io::OpenFile in_;
    int columns_ = 0, rows_ = 0;
};

}  // namespace riders::viewing
