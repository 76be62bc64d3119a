// The process plates of pages, read while the interpreter writes them.
#pragma once

#include <filesystem>
#include <vector>

#include "io/beside.h"
#include "io/bytes.h"
#include "plates/tones/tone_pages.h"

namespace riders::plates {

// Thrown where a page comes whose size the interpreter has not said: the job has replaced the procedure that says
// it.
struct UnknownSize {};

// Reads what PlateDevice::processTones writes. Each page comes through a pipe with a name, in the interpreter's
// folder: there it ends where the pipe does, whatever the job has said of its size, and it takes no room on the
// disk.
class ProcessStream : public io::Beside {
public:
    // `numbers` are the pages; `announced` the sizes of those that the job has ended so far, filled in from
    // outside, `everyPage` whether there is one for each page of the job, or only for each of `numbers`.
    ProcessStream(std::filesystem::path folder, std::vector<int> numbers, bool everyPage,
                  const std::vector<PixelSize> &announced, TonePages &pages);

    int descriptor() const override { return pipe_.descriptor(); }
    bool take() override;
    void ended() override;

private:
    std::filesystem::path pipeOf(std::size_t page) const;
    void makePipe(std::size_t page) const;
    void openPipe();
    void begin();
    void takeRows();
    bool endPage();
    int number() const { return numbers_[page_]; }

    const std::filesystem::path folder_;
    const std::vector<int> numbers_;
    const bool everyPage_;
    const std::vector<PixelSize> &announced_;
    TonePages &pages_;
    io::OpenFile pipe_;
    std::size_t page_ = 0;  // in numbers_
    PixelSize size_;        // 0 before the page begins
    int rows_ = 0;          // of the page, taken so far
    // A page was not whole: the rest is read without being used, so that the interpreter can end and say why.
    bool cut_ = false;
    std::vector<std::uint8_t> pixels_, planes_;
    std::vector<const std::uint8_t *> tones_;
    std::size_t filled_ = 0;  // bytes in pixels_
};

}  // namespace riders::plates
