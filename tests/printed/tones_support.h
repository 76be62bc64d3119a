// For the tests of pages in continuous tone: what is streamed, and what the interpreter's own device for
// separations makes of the same job.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "plates/files/plate.h"
#include "plates/tones/tones.h"
#include "support/toolbox_test.h"

// A page as it was streamed, or the plates of one in files.
struct TonesOfPage {
    riders::plates::TonePage page;
    std::map<std::string, riders::plates::TintPlate> plates;
    bool whole = false;
};

// Keeps all pages, and looks at the order of the calls.
class KeepingReader : public riders::plates::ToneReader {
public:
    void beginPage(const riders::plates::TonePage &page) override;
    void row(std::size_t y, const std::vector<const std::uint8_t *> &tones) override;
    void endPage() override;

    std::vector<TonesOfPage> pages;

private:
    std::size_t next_ = 0;
};

struct TonesAsked {
    double across = 150, down = 150;
    int rotation = 0;
    std::vector<int> pages = {};  // empty for all
    bool interpreterTone = false;
    riders::plates::InterpreterLimits limits = {};
    int plainInks = 10;  // for which tiffsep has room if it is not told
};

struct SurveyedJob {
    riders::plates::PreparedJob job;
    riders::plates::Survey survey;
};

class TonesTest : public ::testing::Test {
protected:
    // Surveys and streams the job; expects that nothing is left in its folder for temporary files. What the run
    // throws goes into `refused`, after "refused: " where it is a Refusal.
    std::vector<TonesOfPage> streamed(const std::filesystem::path &job, const TonesAsked &asked = {});
    // Streams it as surveyed when it was another job.
    std::vector<TonesOfPage> streamed(const std::filesystem::path &job, const std::filesystem::path &surveyed,
                                      const TonesAsked &asked);
    // Surveys each job once, as long as its bytes and the pages asked for are the same.
    const SurveyedJob &surveyed(const std::filesystem::path &job, const TonesAsked &asked = {});
    riders::plates::TonesRun runOf(const riders::plates::PreparedJob &job, const riders::plates::Survey &survey,
                                   const TonesAsked &asked) const;
    // What tiffsep makes of it, all pages.
    std::vector<TonesOfPage> plain(const std::filesystem::path &job, const TonesAsked &asked = {});
    // Expects pages, plates and tones to be alike.
    void expectPlain(const std::filesystem::path &job, const TonesAsked &asked = {});

    TemporaryFolder folder;
    std::string refused;
    const std::filesystem::path work = folder / "work";

private:
    std::map<std::pair<std::string, std::vector<int>>, SurveyedJob> surveyed_;
};

void expectAlike(const std::vector<TonesOfPage> &streamed, const std::vector<TonesOfPage> &plain);
