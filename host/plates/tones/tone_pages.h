// Pages handed to a ToneReader, once they are seen to be those that the survey has found.
#pragma once

#include <string>
#include <vector>

#include "plates/tones/ink_file_head.h"
#include "plates/tones/tones.h"

namespace riders::plates {

class TonePages {
public:
    // Both must outlive it.
    TonePages(const TonesRun &run, const PageBoxes &boxes, ToneReader &reader);

    // A page of that many pixels: its plates are the process plates and then one for each of the inks, by the
    // bytes of their names. Throws Refusal where the survey has found other inks or another size.
    void begin(int number, const InkFileHead &head);
    // The next row, in the same order of plates.
    void row(const std::vector<const std::uint8_t *> &tones);
    // After the last row.
    void end();

    // Whether the run is still wanted; see TonesRun.
    void check() const { run_.check(); }
    // The first page that is not whole yet; 0 where all are.
    int next() const { return ended_ < run_.pages.size() ? run_.pages[ended_] : 0; }
    // Throws a Refusal that names the page.
    [[noreturn]] void refuse(int number, const std::string &text) const;

private:
    const SurveyedPage &surveyed(int number) const;
    void checkSize(const SurveyedPage &surveyed, const TonePage &page) const;
    void arrange(const SurveyedPage &surveyed, TonePage &page, const std::vector<std::string> &inks);

    const TonesRun &run_;
    const PageBoxes &boxes_;
    ToneReader &reader_;
    std::size_t ended_ = 0, row_ = 0;
    std::vector<std::size_t> order_;  // where each plate's tones are among those that come
    std::vector<const std::uint8_t *> tones_;
};

}  // namespace riders::plates
