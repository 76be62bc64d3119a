// The run of the interpreter that streams the pages; see tones.h.
#include "plates/tones/tones.h"

#include "plates/tones/ink_files.h"
#include "plates/tones/run_folder.h"
#include "plates/tones/tone_pages.h"

namespace riders::plates {
InterpreterReport streamTones(const TonesRun &run, const PageBoxes &boxes, ToneReader &reader)
{
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
                                          .threads = run.threads,
                                          .beside = &files});
    // The interpreter has finished the job, and so all pages should be there.
    if (pages.next() != 0)
        pages.refuse(pages.next(), "the interpreter has not written all of it");
    return report;
}

}  // namespace riders::plates
