#include "film/forms/tiff_form.h"

#include <errno.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <string_view>

#include "io/output.h"
#include "io/refusal.h"
#include "libtiff/libtiff.h"
#include "plates/files/bit_tiff.h"
#include "plates/files/group4.h"

namespace fs = std::filesystem;

namespace riders::film {
namespace {

using tiff::libtiff;

constexpr const char *kSoftware = "riders";
constexpr std::size_t kBuffer = 1 << 20;            // of compressed bytes
constexpr std::uint64_t kMostClassic = 4000000000;  // bytes in a file whose offsets have 32 bits

// What libtiff writes, into an open file. It only says that something failed; why is kept here.
struct TiffTarget {
    int descriptor = -1;
    int error = 0;
};

TiffTarget &target(thandle_t handle)
{
    return *static_cast<TiffTarget *>(handle);
}

tmsize_t readNothing(thandle_t, void *, tmsize_t)
{
    return 0;
}

tmsize_t writeBytes(thandle_t handle, void *bytes, tmsize_t count)
{
    TiffTarget &to = target(handle);
    const char *from = static_cast<const char *>(bytes);
    for (tmsize_t left = count; left > 0;) {
        const ssize_t some = write(to.descriptor, from, static_cast<size_t>(left));
        if (some < 0 && errno == EINTR)
            continue;
        if (some <= 0) {
            to.error = some < 0 ? errno : EIO;
            return -1;
        }
        from += some, left -= some;
    }
    return count;
}

toff_t seek(thandle_t handle, toff_t offset, int whence)
{
    const off_t place = lseek(target(handle).descriptor, static_cast<off_t>(offset), whence);
    if (place < 0)
        target(handle).error = errno;
    return static_cast<toff_t>(place);
}

toff_t sizeOf(thandle_t handle)
{
    struct stat status = {};
    return fstat(target(handle).descriptor, &status) == 0 ? static_cast<toff_t>(status.st_size) : 0;
}

int closeNothing(thandle_t)
{
    return 0;
}

class TiffWriter : public PlateWriter {
public:
    TiffWriter(const PlateSheet &sheet, Compression compression)
        : output_(sheet.file), target_{output_.file().descriptor(), 0}
    {
        tiff_.reset(libtiff().clientOpen(sheet.file.c_str(), modeFor(sheet, compression), &target_, readNothing,
                                         writeBytes, seek, closeNothing, sizeOf, nullptr, nullptr));
        if (!tiff_)
            refuse();
        describe(sheet);
        libtiff().setField(tiff_.get(), TIFFTAG_COMPRESSION,
                           compression == Compression::group4 ? COMPRESSION_CCITTFAX4 : COMPRESSION_NONE);
        if (compression == Compression::group4)
            encoder_.emplace(sheet.columns);
        // Left to itself, libtiff takes as much memory as a whole plate.
        else if (!libtiff().writeBufferSetup(tiff_.get(), nullptr, kBuffer))
            refuse();
    }

    void row(const std::uint8_t *bits) override
    {
        if (encoder_) {
            encoder_->row(bits);
            if (encoder_->bytes().size() >= kBuffer)
                writeCompressed();
            return;
        }
        // libtiff does not change what it is to write, but says that it might.
        if (libtiff().writeScanline(tiff_.get(), const_cast<std::uint8_t *>(bits), y_++, 0) < 0)
            refuse();
    }

    void end() override
    {
        if (encoder_) {
            encoder_->end();
            writeCompressed();
        }
        if (!libtiff().flush(tiff_.get()) || target_.error != 0)
            refuse();
        tiff_.reset();
        if (target_.error != 0)
            refuse();
        output_.finish();
    }

private:
    static const char *modeFor(const PlateSheet &sheet, Compression compression)
    {
        const std::uint64_t bytes = static_cast<std::uint64_t>((sheet.columns + 7) / 8) * sheet.rows;
        // What is compressed may grow, too, but never by that much.
        return bytes > (compression == Compression::none ? kMostClassic : kMostClassic / 4) ? "w8" : "w";
    }

    // libtiff adds to the strip what is written to it once more.
    void writeCompressed()
    {
        const std::string_view bytes = encoder_->bytes();
        if (libtiff().writeRawStrip(tiff_.get(), 0, const_cast<char *>(bytes.data()),
                                    static_cast<tmsize_t>(bytes.size())) < 0)
            refuse();
        encoder_->taken();
    }

    void describe(const PlateSheet &sheet)
    {
        TIFF *out = tiff_.get();
        plates::describeBits(out, static_cast<std::uint32_t>(sheet.columns),
                             static_cast<std::uint32_t>(sheet.rows), sheet.resolution.across,
                             sheet.resolution.down);
        libtiff().setField(out, TIFFTAG_SOFTWARE, kSoftware);
        libtiff().setField(out, TIFFTAG_DOCUMENTNAME, sheet.job.c_str());
        const std::string name = "page " + std::to_string(sheet.page) + ", " + sheet.plate;
        libtiff().setField(out, TIFFTAG_PAGENAME, name.c_str());
        // Only the plate, for programs.
        libtiff().setField(out, TIFFTAG_IMAGEDESCRIPTION, sheet.plate.c_str());
    }

    [[noreturn]] void refuse() const
    {
        if (target_.error != 0)
            io::refuseErrno(output_.file().name(), target_.error);
        throw io::Refusal(output_.file().name() + ": cannot be written");
    }

    io::Output output_;
    TiffTarget target_;
    tiff::File tiff_;
    std::optional<plates::Group4Encoder> encoder_;
    std::uint32_t y_ = 0;
};

}  // namespace

// Each Output sets the handler and puts the earlier one back; here they are many at a time, and end in any order.
TiffForm::TiffForm(Compression compression) : compression_(compression), oldPipeHandler_(signal(SIGPIPE, SIG_IGN))
{
    libtiff().setWarningHandler(nullptr);
    libtiff().setErrorHandler(nullptr);
}

TiffForm::~TiffForm()
{
    signal(SIGPIPE, oldPipeHandler_);
}

std::unique_ptr<PlateWriter> TiffForm::plate(const PlateSheet &sheet)
{
    return std::make_unique<TiffWriter>(sheet, compression_);
}

bool isOwnTiff(const fs::path &file)
{
    libtiff().setWarningHandler(nullptr);
    libtiff().setErrorHandler(nullptr);
    const tiff::File tiff(libtiff().open(file.c_str(), "r"));
    const char *software = nullptr;
    return tiff && libtiff().getField(tiff.get(), TIFFTAG_SOFTWARE, &software) != 0 && software != nullptr &&
           std::string_view(software) == kSoftware;
}

}  // namespace riders::film
