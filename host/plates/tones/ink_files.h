// The files in which the interpreter writes the plates of pages, read while it writes them.
#pragma once

#include <filesystem>
#include <vector>

#include "io/beside.h"
#include "io/bytes.h"
#include "plates/tones/ink_file_head.h"
#include "plates/tones/tone_pages.h"

namespace riders::plates {

// Reads what PlateDevice::allTones writes. The file of a page holds one plate after the other, but is written row
// by row, each on all plates: as far as the last plate has grown, the rows of all are there. What has been read is
// taken out of the file, which so needs little room however large the page is.
class InkFiles : public io::Beside {
public:
    InkFiles(std::filesystem::path folder, std::vector<int> numbers, TonePages &pages);

    int descriptor() const override { return clock_.descriptor(); }
    bool take() override;
    bool isFarBehind() const override;
    void ended() override;

private:
    std::filesystem::path fileOf(std::size_t page) const;
    bool takeSome();
    bool begin();
    std::uint64_t rowsThere() const;
    void takeRows(std::uint64_t count);
    void readRows(std::size_t plate, std::uint64_t count);
    void makeHole(std::uint64_t from, std::uint64_t to) const;
    void endPage();
    std::uint64_t plateAt(std::size_t plate) const;
    std::size_t plates() const;

    const std::filesystem::path folder_;
    const std::vector<int> numbers_;
    TonePages &pages_;
    io::OpenFile clock_, file_;
    std::size_t page_ = 0;  // in numbers_
    bool begun_ = false;    // head_ is the page's
    InkFileHead head_;
    std::uint64_t row_ = 0, there_ = 0;  // of the page: the next to be read, and how many had been written
    std::vector<std::uint8_t> bytes_;
    std::vector<const std::uint8_t *> tones_;
};

}  // namespace riders::plates
