// Films as PDF, a page for each plate.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "film/forms/one_file_form.h"

namespace riders::film {

// PDF 1.4. A page is a plate's film in its exact size: an image of one bit a pixel, at the film's resolution,
// compressed with CCITT group 4. Each plate has a bookmark, and its page says which ink it is and which pages are
// of the same page of the job.
class PdfForm : public OneFileForm {
public:
    PdfForm(const std::filesystem::path &file, const std::filesystem::path &work);

private:
    struct Plate {
        PlateSheet sheet;
        double width, height;                 // points
        int image, contents, page, bookmark;  // the numbers of its objects
    };

    std::unique_ptr<PlateWriter> spool(const PlateSheet &sheet) override;
    void add(const PlateSheet &sheet) override;
    void addEnd() override;

    void write(std::string_view bytes);
    int newNumber();
    void beginObject(int number);
    void addObject(int number, std::string_view content);
    void addImage(const Plate &plate);
    void addContents(const Plate &plate);
    void addPage(const Plate &plate);
    void addBookmark(std::size_t index);
    void addTable();

    std::vector<Plate> plates_;
    std::vector<std::uint64_t> offsets_;  // of the objects, from number 1; 0 for those that are not yet written
    std::uint64_t written_ = 0;
};

}  // namespace riders::film
