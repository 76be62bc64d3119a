#include "plates/tones/ink_files.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "io/refusal.h"
#include "plates/files/plate.h"
#include "plates/files/plate_files.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr long kBetweenLooks = 4'000'000;            // nanoseconds
constexpr std::size_t kLongestHead = 1 << 20;        // bytes
constexpr std::uint64_t kAtOnce = 4 << 20;           // bytes read
constexpr std::uint64_t kMostUnread = 256ULL << 20;  // before the interpreter has to wait
constexpr std::uint64_t kBlock = 4096;

io::OpenFile ticking()
{
    io::OpenFile clock(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC), "a timer");
    const itimerspec often = {{0, kBetweenLooks}, {0, kBetweenLooks}};
    if (clock.descriptor() < 0 || timerfd_settime(clock.descriptor(), 0, &often, nullptr) != 0)
        io::refuseErrno(clock.name(), errno);
    return clock;
}

std::uint64_t sizeOf(const io::OpenFile &file)
{
    struct stat state = {};
    if (fstat(file.descriptor(), &state) != 0)
        io::refuseErrno(file.name(), errno);
    return static_cast<std::uint64_t>(state.st_size);
}

// False where the file ends before.
bool readAt(const io::OpenFile &file, void *to, std::uint64_t count, std::uint64_t from)
{
    for (char *at = static_cast<char *>(to); count > 0;) {
        const ssize_t got = pread(file.descriptor(), at, count, static_cast<off_t>(from));
        if (got < 0 && errno != EINTR)
            io::refuseErrno(file.name(), errno);
        if (got == 0)
            return false;
        const auto some = static_cast<std::uint64_t>(std::max<ssize_t>(got, 0));
        at += some;
        from += some;
        count -= some;
    }
    return true;
}

// What is 255 for no ink and 0 for all becomes the opposite.
void invert(std::uint8_t *tones, std::uint64_t count)
{
    std::uint64_t i = 0;
    for (std::uint64_t eight; i + sizeof eight <= count; i += sizeof eight) {
        std::memcpy(&eight, tones + i, sizeof eight);
        eight = ~eight;
        std::memcpy(tones + i, &eight, sizeof eight);
    }
    for (; i < count; ++i)
        tones[i] = static_cast<std::uint8_t>(~tones[i]);
}

}  // namespace

InkFiles::InkFiles(fs::path folder, std::vector<int> numbers, TonePages &pages)
    : folder_(std::move(folder)), numbers_(std::move(numbers)), pages_(pages), clock_(ticking())
{
}

fs::path InkFiles::fileOf(std::size_t page) const
{
    return folder_ / (std::to_string(page + 1) + ".psd");
}

std::size_t InkFiles::plates() const
{
    return std::size(kProcessPlates) + head_.inks.size();
}

std::uint64_t InkFiles::plateAt(std::size_t plate) const
{
    return head_.tones +
           static_cast<std::uint64_t>(plate) * static_cast<std::uint64_t>(head_.columns) * head_.rows;
}

// False as long as the file's beginning is not there.
bool InkFiles::begin()
{
    if (file_.descriptor() < 0) {
        const fs::path path = fileOf(page_);
        file_ = io::OpenFile(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK), path);
        if (file_.descriptor() < 0 && errno != ENOENT)
            io::refuseErrno(path, errno);
        if (file_.descriptor() < 0)
            return false;
    }
    std::string bytes(std::min<std::uint64_t>(sizeOf(file_), kLongestHead), '\0');
    if (!readAt(file_, bytes.data(), bytes.size(), 0))
        return false;
    const std::optional<InkFileHead> head = inkFileHead(bytes, file_.name());
    if (!head && bytes.size() == kLongestHead)
        refusePicture(file_.name());
    if (!head)
        return false;
    pages_.begin(numbers_[page_], *head);
    head_ = *head;
    row_ = there_ = 0;
    return begun_ = true;
}

std::uint64_t InkFiles::rowsThere() const
{
    const std::uint64_t size = sizeOf(file_), last = plateAt(plates() - 1);
    const std::uint64_t rows = size < last ? 0 : (size - last) / static_cast<std::uint64_t>(head_.columns);
    return std::min(rows, static_cast<std::uint64_t>(head_.rows));
}

// What is left of the blocks at both ends is taken with the rows that share them, or with the file.
void InkFiles::makeHole(std::uint64_t from, std::uint64_t to) const
{
    from = from / kBlock * kBlock;
    to = to / kBlock * kBlock;
    // Where the file system cannot, the file takes more room.
    if (from < to)
        fallocate(file_.descriptor(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, static_cast<off_t>(from),
                  static_cast<off_t>(to - from));
}

void InkFiles::readRows(std::size_t plate, std::uint64_t count)
{
    const auto columns = static_cast<std::uint64_t>(head_.columns);
    const std::uint64_t from = plateAt(plate) + row_ * columns;
    std::uint8_t *to = bytes_.data() + plate * count * columns;
    if (!readAt(file_, to, count * columns, from))
        refusePicture(file_.name());
    invert(to, count * columns);
}

void InkFiles::takeRows(std::uint64_t count)
{
    const auto columns = static_cast<std::uint64_t>(head_.columns);
    bytes_.resize(plates() * count * columns);
    tones_.resize(plates());
    for (std::size_t plate = 0; plate < plates(); ++plate)
        readRows(plate, count);
    for (std::size_t plate = 0; plate < plates(); ++plate) {
        // The block that the rows before have begun goes with these; but the plate's first block holds rows of the
        // plate before, which may be there and not yet read.
        const std::uint64_t firstWhole = (plateAt(plate) + kBlock - 1) / kBlock * kBlock;
        const std::uint64_t from = plateAt(plate) + row_ * columns;
        makeHole(std::max(from, firstWhole), from + count * columns);
    }
    for (std::uint64_t y = 0; y < count; ++y) {
        for (std::size_t plate = 0; plate < plates(); ++plate)
            tones_[plate] = bytes_.data() + (plate * count + y) * columns;
        pages_.row(tones_);
    }
    row_ += count;
}

void InkFiles::endPage()
{
    file_ = {};
    fs::remove(fileOf(page_));
    begun_ = false;
    row_ = there_ = 0;
    ++page_;
    pages_.end();
}

// False where there is nothing.
bool InkFiles::takeSome()
{
    if (page_ == numbers_.size() || (!begun_ && !begin()))
        return false;
    there_ = std::max(there_, rowsThere());
    const std::uint64_t row = plates() * static_cast<std::uint64_t>(head_.columns);
    const std::uint64_t count = std::min(there_ - row_, std::max<std::uint64_t>(1, kAtOnce / row));
    if (count == 0)
        return false;
    takeRows(count);
    if (row_ == static_cast<std::uint64_t>(head_.rows))
        endPage();
    return true;
}

bool InkFiles::take()
{
    pages_.check();
    std::uint64_t ticks;
    [[maybe_unused]] const ssize_t got = read(clock_.descriptor(), &ticks, sizeof ticks);
    const std::size_t before = page_;
    for (std::uint64_t taken = 0; taken < 8 * kAtOnce && page_ == before && takeSome(); taken += kAtOnce)
        ;
    return page_ != before;
}

bool InkFiles::isFarBehind() const
{
    return begun_ &&
           (rowsThere() - std::min(rowsThere(), row_)) * plates() * static_cast<std::uint64_t>(head_.columns) >
               kMostUnread;
}

void InkFiles::ended()
{
    while (takeSome())
        ;
}

}  // namespace riders::plates
