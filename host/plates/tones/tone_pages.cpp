#include "plates/tones/tone_pages.h"

#include <algorithm>
#include <cmath>

#include "io/plain_text.h"
#include "io/refusal.h"
#include "plates/files/plate.h"
#include "plates/files/plate_names.h"

namespace riders::plates {

TonePages::TonePages(const TonesRun &run, const PageBoxes &boxes, ToneReader &reader)
    : run_(run), boxes_(boxes), reader_(reader)
{
}

void TonePages::refuse(int number, const std::string &text) const
{
    throw io::Refusal(run_.job.name.string() + ": page " + std::to_string(number) + ": " + text);
}

const SurveyedPage &TonePages::surveyed(int number) const
{
    for (const SurveyedPage &page : run_.survey.pages)
        if (page.number == number)
            return page;
    refuse(number, "is not one of the pages asked for");
}

void TonePages::checkSize(const SurveyedPage &surveyed, const TonePage &page) const
{
    const bool upright = run_.rotation % 180 == 0;
    const double width = upright ? surveyed.width : surveyed.height;
    const double height = upright ? surveyed.height : surveyed.width;
    const double surveyPixel = 1 / run_.survey.dpi;
    if (std::abs(page.width - width) > 2 * surveyPixel + 2 / run_.dpiAcross ||
        std::abs(page.height - height) > 2 * surveyPixel + 2 / run_.dpiDown)
        refuse(page.number, "has another size each time it is rendered");
}

// The survey's inks come first, in its order; others it has not met, or seen nothing of.
void TonePages::arrange(const SurveyedPage &surveyed, TonePage &page, const std::vector<std::string> &inks)
{
    constexpr std::size_t kProcess = std::size(kProcessPlates);
    page.plates.assign(std::begin(kProcessPlates), std::end(kProcessPlates));
    order_ = {0, 1, 2, 3};
    page.ink.assign(kProcess, false);
    for (const SurveyedPlate &plate : surveyed.plates) {
        if (isProcessPlate(plate.plate)) {
            const auto at = std::find(page.plates.begin(), page.plates.end(), plate.plate) - page.plates.begin();
            page.ink[static_cast<std::size_t>(at)] = plate.ink;
            continue;
        }
        const std::size_t known = run_.survey.inksKnown();
        auto ink = std::find(inks.begin(), inks.end(), inkBytesFrom(plate.plate, known));
        if (ink == inks.end())
            ink = std::find(inks.begin(), inks.end(), plate.plate);  // the number is the job's own, as in CYAN1
        if (ink == inks.end())
            refuse(page.number, "has other plates each time it is rendered");
        order_.push_back(kProcess + static_cast<std::size_t>(ink - inks.begin()));
        page.plates.push_back(plateNameFrom(plate.plate, known));
        page.ink.push_back(plate.ink);
    }
    for (std::size_t i = 0; i < inks.size(); ++i)
        if (std::find(order_.begin(), order_.end(), kProcess + i) == order_.end()) {
            order_.push_back(kProcess + i);
            page.plates.push_back(io::plainText(inks[i]));
            page.ink.push_back(false);
        }
}

void TonePages::begin(int number, const InkFileHead &head)
{
    TonePage page;
    page.number = number;
    page.columns = static_cast<std::size_t>(head.columns);
    page.rows = static_cast<std::size_t>(head.rows);
    page.width = head.columns / run_.dpiAcross;
    page.height = head.rows / run_.dpiDown;
    const SurveyedPage &surveyed = this->surveyed(number);
    checkSize(surveyed, page);
    arrange(surveyed, page, head.inks);
    for (std::size_t i = 0; i < head.colours.size(); ++i)
        page.spotInks[head.inks[i]] = head.colours[i];
    if (const auto boxes = boxes_.find(number); boxes != boxes_.end()) {
        page.trim = boxes->second.trim;
        page.bleed = boxes->second.bleed;
    }
    tones_.resize(order_.size());
    row_ = 0;
    reader_.beginPage(page);
}

void TonePages::row(const std::vector<const std::uint8_t *> &tones)
{
    for (std::size_t i = 0; i < order_.size(); ++i)
        tones_[i] = tones[order_[i]];
    reader_.row(row_++, tones_);
}

void TonePages::end()
{
    reader_.endPage();
    ++ended_;
}

}  // namespace riders::plates
