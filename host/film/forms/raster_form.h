// Films as CUPS raster or PWG raster, a page for each plate.
#pragma once

#include <filesystem>
#include <memory>

#include "film/forms/one_file_form.h"

namespace riders::film {

enum class RasterKind {
    cups,  // as CUPS's printer drivers take it: version 2, compressed
    pwg,   // as IPP printers take it
};

// Makes sheet.file, which must not be there, with that one page. Throws Refusal.
std::unique_ptr<PlateWriter> rasterFile(const PlateSheet &sheet, RasterKind kind);

// One bit a pixel, 1 is black; the size of the page is that of the film.
class RasterForm : public OneFileForm {
public:
    // libcups is loaded now. Throws Refusal where it is not installed.
    RasterForm(RasterKind kind, const std::filesystem::path &file, const std::filesystem::path &work);

private:
    std::unique_ptr<PlateWriter> spool(const PlateSheet &sheet) override;
    void add(const PlateSheet &sheet) override;
    void addEnd() override {}

    const RasterKind kind_;
    bool begun_ = false;
};

}  // namespace riders::film
