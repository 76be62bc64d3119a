// The run of the interpreter that streams the pages; see tones.h.
#include "plates/tones/tones.h"

#include "plates/tones/ink_files.h"
#include "plates/tones/page_boxes.h"
#include "plates/tones/tone_pages.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

// A folder for one run of the interpreter, empty at first; gone at the end.
class RunFolder {
public:
    explicit RunFolder(fs::path path) : path_(std::move(path))
    {
        fs::remove_all(path_);
        fs::create_directories(path_);
    }
    ~RunFolder()
    {
        std::error_code gone;
        fs::remove_all(path_, gone);
    }
    RunFolder(const RunFolder &) = delete;
    RunFolder &operator=(const RunFolder &) = delete;

    const fs::path &path() const { return path_; }

private:
    const fs::path path_;
};

}  // namespace

InterpreterReport streamTones(const TonesRun &run, ToneReader &reader)
{
    const PageBoxes boxes = boxesOf(run, RunFolder(run.work / "boxes").path());
    TonePages pages(run, boxes, reader);
    const RunFolder folder(run.work / "tones");
    InkFiles files(folder.path(), run.pages, pages);
    InterpreterReport report = interpret({.job = run.job,
                                          .device = PlateDevice::allTones,
                                          .dpi = run.dpiAcross,
                                          .pages = run.pages,
                                          .folder = folder.path(),
                                          .limits = run.limits,
                                          .dpiDown = run.dpiDown,
                                          .rotation = run.rotation,
                                          .interpreterTone = run.interpreterTone,
                                          .spotInks = static_cast<int>(run.survey.inksKnown()),
                                          .beside = &files});
    // The interpreter has finished the job, and so all pages should be there.
    if (pages.next() != 0)
        pages.refuse(pages.next(), "the interpreter has not written all of it");
    return report;
}

}  // namespace riders::plates
