#include "plates/tones/tones.h"

#include <algorithm>

#include "plates/tones/ink_files.h"
#include "plates/tones/page_boxes.h"
#include "plates/tones/process_stream.h"
#include "plates/tones/tone_pages.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

using Numbers = std::vector<int>;

// One run of the interpreter.
class PagesRun {
public:
    PagesRun(const TonesRun &run, const char *name) : run_(run), folder_(run.work / name)
    {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    ~PagesRun()
    {
        std::error_code gone;
        fs::remove_all(folder_, gone);
    }
    PagesRun(const PagesRun &) = delete;
    PagesRun &operator=(const PagesRun &) = delete;

    InterpreterReport processPlates(const Numbers &numbers, TonePages &pages)
    {
        std::vector<PixelSize> announced;
        ProcessStream stream(folder_, numbers, run_.job.kind != JobKind::pdf, announced, pages);
        InterpreterRun run = common(PlateDevice::processTones, numbers, stream);
        run.pageEnded = [&announced](PixelSize size) { announced.push_back(size); };
        return whole(interpret(run), pages, numbers);
    }

    InterpreterReport allPlates(const Numbers &numbers, TonePages &pages)
    {
        InkFiles files(folder_, numbers, pages);
        InterpreterRun run = common(PlateDevice::allTones, numbers, files);
        run.spotInks = static_cast<int>(run_.survey.inksKnown());
        return whole(interpret(run), pages, numbers);
    }

    const fs::path &folder() const { return folder_; }

private:
    InterpreterRun common(PlateDevice device, const Numbers &numbers, io::Beside &beside) const
    {
        InterpreterRun run{.job = run_.job,
                           .device = device,
                           .dpi = run_.dpiAcross,
                           .pages = numbers,
                           .folder = folder_,
                           .limits = run_.limits};
        run.dpiDown = run_.dpiDown;
        run.rotation = run_.rotation;
        run.interpreterTone = run_.interpreterTone;
        run.beside = &beside;
        return run;
    }

    // The interpreter has finished the job, and so all pages are there.
    static InterpreterReport whole(InterpreterReport report, const TonePages &pages, const Numbers &numbers)
    {
        if (const int next = pages.next(); next != 0 && next <= numbers.back())
            pages.refuse(next, "the interpreter has not written all of it");
        return report;
    }

    const TonesRun &run_;
    const fs::path folder_;
};

// The interpreter knows an ink from where it meets it to the end of the job, and makes plates of all that it
// knows.
bool isWithoutInks(const Survey &survey, int number)
{
    return std::any_of(survey.pages.begin(), survey.pages.end(), [number](const SurveyedPage &page) {
        return page.number == number && page.inksKnown == 0 && false;
    });
}

void add(InterpreterReport &report, InterpreterReport more, JobKind kind)
{
    if (report.pages.empty()) {
        report = std::move(more);
        return;
    }
    // For PostScript each run reports all pages.
    if (kind == JobKind::pdf)
        report.pages.insert(report.pages.end(), more.pages.begin(), more.pages.end());
    report.inks.insert(more.inks.begin(), more.inks.end());
    report.inksMixed |= more.inksMixed;
}

}  // namespace

InterpreterReport streamTones(const TonesRun &run, ToneReader &reader)
{
    const PageBoxes boxes = boxesOf(run, PagesRun(run, "boxes").folder());
    TonePages pages(run, boxes, reader);
    InterpreterReport report;
    const auto inks = std::find_if(run.pages.begin(), run.pages.end(),
                                   [&run](int number) { return !isWithoutInks(run.survey, number); });
    if (inks != run.pages.begin())
        try {
            add(report, PagesRun(run, "process-plates").processPlates({run.pages.begin(), inks}, pages),
                run.job.kind);
        } catch (const UnknownSize &) {
            // The files of the slower device say how large their pages are.
        }
    const auto rest = std::find(run.pages.begin(), run.pages.end(), pages.next());
    if (rest != run.pages.end())
        add(report, PagesRun(run, "all-plates").allPlates({rest, run.pages.end()}, pages), run.job.kind);
    return report;
}

}  // namespace riders::plates
