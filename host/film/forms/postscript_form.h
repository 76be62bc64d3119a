// Films as PostScript, a page for each plate.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "film/forms/one_file_form.h"

namespace riders::film {

// Level 2, with DSC comments, in 7-bit text. A page is a plate's film in its exact size: an image of one bit a
// pixel. It asks for the film's resolution; on a device that has it, pixels of the film are pixels of the device.
class PostscriptForm : public OneFileForm {
public:
    PostscriptForm(const std::filesystem::path &file, const std::filesystem::path &work);

private:
    std::unique_ptr<PlateWriter> spool(const PlateSheet &sheet) override;
    void add(const PlateSheet &sheet) override;
    void addEnd() override;

    void write(std::string_view text);

    int pages_ = 0;
    double width_ = 0, height_ = 0;  // of the largest page, in points
};

}  // namespace riders::film
