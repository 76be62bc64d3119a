// Films that go to a print queue.
#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "film/forms/plate_writer.h"
#include "film/printing/film_on_sheet.h"
#include "film/printing/print_plan.h"
#include "film/printing/sent_jobs.h"

namespace riders::printing {

struct JobSent {
    int number = 0;  // the print server's; 0 where nothing was sent
    std::string title;
    int page = 0;  // of the job whose films these are
    std::vector<std::string> plates;
    FilmOnSheet on;
};

// A print job for each page, with a page for each of its plates. They are kept in `work` until all are made, so
// that nothing is sent of a run that fails.
class PrintForm : public film::Form {
public:
    PrintForm(const PrintPlan &plan, std::filesystem::path work, std::vector<JobSent> &sent);

    std::unique_ptr<film::PlateWriter> plate(const film::PlateSheet &sheet) override;
    // Sends them, if this is no dry run. `sent` is filled in, and empty where this throws.
    void finish() override;

private:
    struct Plate {
        film::PlateSheet sheet;
        FilmExtent extent;
        bool whole = false;
    };
    using Page = std::vector<const Plate *>;
    class Spooled;

    std::vector<Page> pages() const;
    void send(SentJobs &jobs, const Page &page, JobSent &job) const;
    void sendPages(SentJobs &jobs, const Page &page, const FilmOnSheet &on,
                   const std::vector<JobOption> &options) const;
    void sendPostScript(SentJobs &jobs, const Page &page, const FilmOnSheet &on) const;

    const PrintPlan &plan_;
    const std::filesystem::path work_;
    std::vector<JobSent> &sent_;
    std::deque<Plate> plates_;  // which stay where they are in memory
};

}  // namespace riders::printing
