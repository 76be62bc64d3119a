#include "film/printing/print_form.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "film/forms/postscript_form.h"
#include "film/forms/raster_form.h"
#include "film/forms/read_file.h"
#include "film/printing/driver_page.h"
#include "film/printing/placed_row.h"
#include "io/bytes.h"
#include "io/interruption.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::printing {
namespace {

using cups::libcups;
using Raster = std::unique_ptr<cups_raster_t, decltype(&::cupsRasterClose)>;

// Calls take with each of the sheet's rows, on which the plate's lie from y on.
void eachRow(const film::PlateSheet &plate, std::size_t columns, std::size_t rows, long x, long y,
             const std::function<void(const std::vector<std::uint8_t> &)> &take)
{
    const io::OpenFile file = io::openOrdinaryFile(plate.file);
    const Raster raster(libcups().rasterOpen(file.descriptor(), CUPS_RASTER_READ), libcups().rasterClose);
    cups_page_header2_t header{};
    if (!raster || !libcups().rasterReadHeader(raster.get(), &header))
        throw io::Refusal(file.name() + ": cannot be read");
    std::vector<std::uint8_t> film((plate.columns + 7) / 8);
    PlacedRow placed(plate.columns, columns, x);
    const auto next = [&] {
        if (libcups().rasterReadPixels(raster.get(), film.data(), static_cast<unsigned>(film.size())) !=
            film.size())
            throw io::Refusal(file.name() + ": cannot be read");
    };
    const long filmRows = static_cast<long>(plate.rows);
    for (long skipped = 0; skipped < std::min(-y, filmRows); ++skipped)
        next();
    for (long row = 0; row < static_cast<long>(rows); ++row) {
        const bool onFilm = row >= y && row < y + filmRows;
        if (onFilm)
            next();
        take(placed.place(onFilm ? film.data() : nullptr));
    }
}

// What is written goes into a document of a job; what goes wrong is kept, since the library cannot pass it on.
struct Upload {
    SentJobs &jobs;
    std::exception_ptr failure;

    static ssize_t write(void *upload, unsigned char *bytes, size_t size)
    {
        auto &self = *static_cast<Upload *>(upload);
        try {
            self.jobs.write(bytes, size);
        } catch (...) {
            self.failure = std::current_exception();
            return -1;
        }
        return static_cast<ssize_t>(size);
    }

    void check() const
    {
        if (failure)
            std::rethrow_exception(failure);
    }
};

cups_page_header2_t pwgPage(const QueueSheet &sheet, const screening::Resolution &dpi)
{
    const auto hundredths = [](double points) { return static_cast<int>(std::lround(points * 2540 / 72)); };
    cups_page_header2_t header{};
    pwg_media_t *media = libcups().mediaForSize(hundredths(sheet.width), hundredths(sheet.height));
    if (!media || !libcups().rasterInitPwgHeader(&header, media, "black_1", static_cast<int>(dpi.across),
                                                 static_cast<int>(dpi.down), "one-sided", "normal"))
        throw io::Refusal("a sheet of this size and resolution cannot be PWG raster");
    return header;
}

}  // namespace

class PrintForm::Spooled : public film::PlateWriter {
public:
    Spooled(Plate &plate, std::unique_ptr<film::PlateWriter> writer) : plate_(plate), writer_(std::move(writer)) {}

    void row(const std::uint8_t *bits) override
    {
        FilmExtent &extent = plate_.extent;
        const auto inked = [&](std::size_t byte) { return bits[byte] != 0; };
        const std::size_t bytes = (plate_.sheet.columns + 7) / 8;
        std::size_t first = 0, last = bytes;
        while (first < bytes && !inked(first))
            ++first;
        if (first < bytes) {
            while (!inked(last - 1))
                --last;
            extent.add({.columns = extent.columns,
                        .rows = extent.rows,
                        .left = first * 8 + static_cast<std::size_t>(__builtin_clz(bits[first]) - 24),
                        .top = row_,
                        .right = last * 8 - static_cast<std::size_t>(__builtin_ctz(bits[last - 1])),
                        .bottom = row_ + 1});
        }
        ++row_;
        writer_->row(bits);
    }

    void end() override
    {
        writer_->end();
        plate_.whole = true;
    }

private:
    Plate &plate_;
    std::unique_ptr<film::PlateWriter> writer_;
    std::size_t row_ = 0;
};

PrintForm::PrintForm(const PrintPlan &plan, fs::path work, std::vector<JobSent> &sent)
    : plan_(plan), work_(std::move(work)), sent_(sent)
{
}

std::unique_ptr<film::PlateWriter> PrintForm::plate(const film::PlateSheet &sheet)
{
    Plate &plate = plates_.emplace_back();
    plate.sheet = sheet;
    plate.sheet.file = work_ / ("print-" + std::to_string(plates_.size()));
    plate.extent.columns = sheet.columns;
    plate.extent.rows = sheet.rows;
    return std::make_unique<Spooled>(plate, film::rasterFile(plate.sheet, film::RasterKind::cups));
}

std::vector<PrintForm::Page> PrintForm::pages() const
{
    std::vector<Page> pages;
    for (const Plate &plate : plates_) {
        if (!plate.whole)
            continue;
        if (pages.empty() || pages.back().front()->sheet.page != plate.sheet.page)
            pages.emplace_back();
        pages.back().push_back(&plate);
    }
    return pages;
}

void PrintForm::finish()
{
    std::vector<JobSent> jobs;
    const std::vector<Page> all = pages();
    for (const Page &page : all) {
        FilmExtent extent;
        JobSent &job = jobs.emplace_back();
        for (const Plate *plate : page) {
            extent.add(plate->extent);
            job.plates.push_back(plate->sheet.plate);
        }
        job.page = page.front()->sheet.page;
        job.title = page.front()->sheet.job + " film, page " + std::to_string(job.page);
        job.on = layFilm(plan_, extent);
    }
    if (!plan_.dryRun) {
        const PrintServer server;
        SentJobs sending(server, plan_.queue.name);
        for (std::size_t i = 0; i < all.size(); ++i)
            send(sending, all[i], jobs[i]);
        sending.release();
    }
    sent_ = std::move(jobs);
}

void PrintForm::send(SentJobs &jobs, const Page &page, JobSent &job) const
{
    std::vector<JobOption> options = plan_.options;
    options.push_back({"PageSize", job.on.choice});
    job.number = jobs.begin(job.title, options, plan_.format);
    if (plan_.queue.kind == QueueKind::postScript)
        sendPostScript(jobs, page, job.on);
    else
        sendPages(jobs, page, job.on, options);
    jobs.end();
}

void PrintForm::sendPages(SentJobs &jobs, const Page &page, const FilmOnSheet &on,
                          const std::vector<JobOption> &options) const
{
    const bool pwg = plan_.queue.kind == QueueKind::pwg;
    const screening::Resolution &dpi = plan_.resolution.dpi;
    cups_page_header2_t header = pwg ? pwgPage(on.sheet, dpi) : driverPage(plan_.queue, options, on.sheet, dpi);
    // A driver's raster begins where the printer can print.
    const long left = pwg ? 0 : static_cast<long>(on.sheet.left * dpi.across / 72),
               top = pwg ? 0 : static_cast<long>((on.sheet.height - on.sheet.top) * dpi.down / 72);
    Upload upload{jobs, nullptr};
    Raster raster(
        libcups().rasterOpenIO(Upload::write, &upload, pwg ? CUPS_RASTER_WRITE_PWG : CUPS_RASTER_WRITE_COMPRESSED),
        libcups().rasterClose);
    const auto sent = [&](bool well) {
        upload.check();
        if (!well)
            throw io::Refusal("a plate cannot be sent");
    };
    sent(raster != nullptr);
    std::vector<std::uint8_t> line(header.cupsBytesPerLine);
    for (int copy = 0; copy < plan_.copies; ++copy)
        for (const Plate *plate : page) {
            sent(libcups().rasterWriteHeader(raster.get(), &header));
            eachRow(plate->sheet, header.cupsWidth, header.cupsHeight, on.x - left, on.y - top,
                    [&](const std::vector<std::uint8_t> &bits) {
                        if (header.cupsBitsPerPixel == 8)
                            widen(bits, line);
                        else
                            std::copy(bits.begin(), bits.end(), line.begin());
                        if (!pwg && !blackIsSet(header))
                            for (std::uint8_t &byte : line)
                                byte = static_cast<std::uint8_t>(~byte);
                        sent(libcups().rasterWritePixels(raster.get(), line.data(), header.cupsBytesPerLine) ==
                             header.cupsBytesPerLine);
                    });
        }
}

void PrintForm::sendPostScript(SentJobs &jobs, const Page &page, const FilmOnSheet &on) const
{
    const screening::Resolution &dpi = plan_.resolution.dpi;
    const fs::path file = work_ / "print.ps";
    {
        film::PostscriptForm form(file, work_);
        for (int copy = 0; copy < plan_.copies; ++copy)
            for (const Plate *plate : page) {
                film::PlateSheet sheet = plate->sheet;
                sheet.columns = static_cast<std::size_t>(std::lround(on.sheet.width * dpi.across / 72));
                sheet.rows = static_cast<std::size_t>(std::lround(on.sheet.height * dpi.down / 72));
                const std::unique_ptr<film::PlateWriter> writer = form.plate(sheet);
                eachRow(plate->sheet, sheet.columns, sheet.rows, on.x, on.y,
                        [&](const std::vector<std::uint8_t> &bits) { writer->row(bits.data()); });
                writer->end();
            }
        form.finish();
    }
    film::readFrom(file, 0, [&](std::string_view piece) { jobs.write(piece.data(), piece.size()); });
    std::error_code ignored;
    fs::remove(file, ignored);
}

}  // namespace riders::printing
