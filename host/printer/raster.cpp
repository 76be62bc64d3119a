#include "printer/raster.h"

#include <zlib.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "printer/job_attributes.h"
#include "printer/hooks.h"

namespace riders::printer {

// Paints a page whose width, height and so on are defined before it.
extern const std::string_view kRasterPage;

namespace {

struct Colours {
    const char *space, *decode;
};

// Nothing for those that the queue does not say it takes.
const Colours *coloursOf(const cups_page_header2_t &header)
{
    static constexpr Colours kInk = {"/DeviceGray", "[1 0]"}, kLight = {"/DeviceGray", "[0 1]"},
                             kThree = {"/DeviceRGB", "[0 1 0 1 0 1]"};
    switch (header.cupsColorSpace) {
    case CUPS_CSPACE_K:
        return header.cupsBitsPerPixel <= 8 ? &kInk : nullptr;
    case CUPS_CSPACE_W:
    case CUPS_CSPACE_SW:
        return header.cupsBitsPerPixel <= 8 ? &kLight : nullptr;
    case CUPS_CSPACE_RGB:
    case CUPS_CSPACE_SRGB:
    case CUPS_CSPACE_ADOBERGB:
        return header.cupsBitsPerPixel == 24 ? &kThree : nullptr;
    default:
        return nullptr;
    }
}

// A PostScript job of the pages.
class RasterJob {
public:
    explicit RasterJob(const std::filesystem::path &file) : path(file), out_(file, std::ios::binary)
    {
        out_ << "%!PS-Adobe-3.0\n%%Pages: (atend)\n%%EndComments\n";
    }
    ~RasterJob()
    {
        endPixels();
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    RasterJob(const RasterJob &) = delete;
    RasterJob &operator=(const RasterJob &) = delete;

    bool beginPage(const cups_page_header2_t &header)
    {
        const Colours *const colours = coloursOf(header);
        if (colours == nullptr || header.HWResolution[0] == 0 || header.HWResolution[1] == 0 ||
            deflateInit(&pixels_, 1) != Z_OK)
            return false;
        inPage_ = true;
        header_ = header;
        lines_ = 0;
        ++pages_;
        out_ << "%%Page: " << pages_ << ' ' << pages_ << "\n/RasterWidth " << header.cupsWidth
             << " def /RasterHeight " << header.cupsHeight << " def /RasterBits " << header.cupsBitsPerColor
             << " def\n/RasterAcross " << header.HWResolution[0] << " def /RasterDown " << header.HWResolution[1]
             << " def /RasterSpace " << colours->space << " def /RasterDecode " << colours->decode << " def\n"
             << kRasterPage;
        return out_.good();
    }

    bool line(const unsigned char *bytes)
    {
        ++lines_;
        return put(bytes, header_.cupsBytesPerLine, Z_NO_FLUSH);
    }

    // False where some of its lines did not come.
    bool endPage()
    {
        const bool whole = lines_ == header_.cupsHeight && put(nullptr, 0, Z_FINISH);
        endPixels();
        out_ << "\nshowpage\n";
        return whole && out_.good();
    }

    bool end()
    {
        out_ << "%%Trailer\n%%Pages: " << pages_ << "\n%%EOF\n" << std::flush;
        return out_.good() && pages_ > 0;
    }

    const std::filesystem::path path;

private:
    bool put(const unsigned char *bytes, std::size_t size, int flush)
    {
        pixels_.next_in = const_cast<unsigned char *>(bytes);
        pixels_.avail_in = static_cast<unsigned>(size);
        std::array<unsigned char, 65536> room;
        do {
            pixels_.next_out = room.data();
            pixels_.avail_out = room.size();
            deflate(&pixels_, flush);
            out_.write(reinterpret_cast<const char *>(room.data()),
                       static_cast<std::streamsize>(room.size() - pixels_.avail_out));
        } while (pixels_.avail_out == 0);
        return out_.good();
    }

    void endPixels()
    {
        if (inPage_)
            deflateEnd(&pixels_);
        inPage_ = false;
    }

    std::ofstream out_;
    z_stream pixels_ = {};
    cups_page_header2_t header_ = {};
    bool inPage_ = false;
    unsigned lines_ = 0;
    int pages_ = 0;
};

RasterJob *rasterOf(pappl_job_t *job)
{
    return static_cast<RasterJob *>(papplJobGetData(job));
}

bool beginJob(pappl_job_t *job, pappl_pr_options_t *, pappl_device_t *)
{
    if (gJobLine == nullptr)
        return false;
    const std::string name = "pixels-" + keyOf(job).text() + ".ps";
    papplJobSetData(job, std::make_unique<RasterJob>(gJobLine->request().state / "spool" / name).release());
    return true;
}

bool beginPage(pappl_job_t *job, pappl_pr_options_t *options, pappl_device_t *, unsigned)
{
    return rasterOf(job)->beginPage(options->header);
}

bool takeLine(pappl_job_t *job, pappl_pr_options_t *, pappl_device_t *, unsigned, const unsigned char *line)
{
    return rasterOf(job)->line(line);
}

bool endPage(pappl_job_t *job, pappl_pr_options_t *, pappl_device_t *, unsigned)
{
    return rasterOf(job)->endPage();
}

// Also called where a page failed or the job was canceled.
bool endJob(pappl_job_t *job, pappl_pr_options_t *, pappl_device_t *)
{
    const std::unique_ptr<RasterJob> raster(rasterOf(job));
    papplJobSetData(job, nullptr);
    if (papplJobIsCanceled(job) || papplJobGetState(job) == IPP_JSTATE_ABORTED || !raster->end())
        return false;
    return gJobLine->make(job, raster->path);
}

}  // namespace

void takeRaster(pappl_pr_driver_data_t &data)
{
    data.rstartjob_cb = beginJob;
    data.rstartpage_cb = beginPage;
    data.rwriteline_cb = takeLine;
    data.rendpage_cb = endPage;
    data.rendjob_cb = endJob;
    data.raster_types =
        PAPPL_PWG_RASTER_TYPE_BLACK_8 | PAPPL_PWG_RASTER_TYPE_SGRAY_8 | PAPPL_PWG_RASTER_TYPE_SRGB_8;
}

}  // namespace riders::printer
