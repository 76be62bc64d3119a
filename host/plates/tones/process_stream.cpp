#include "plates/tones/process_stream.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "io/refusal.h"
#include "plates/files/plate.h"
#include "plates/tones/deal_row.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr std::size_t kAtOnce = 1 << 20;
constexpr int kPipeBytes = 1 << 20;  // what every user may have
constexpr std::size_t kPlates = std::size(kProcessPlates);

}  // namespace

ProcessStream::ProcessStream(fs::path folder, std::vector<int> numbers, bool everyPage,
                             const std::vector<PixelSize> &announced, TonePages &pages)
    : folder_(std::move(folder)), numbers_(std::move(numbers)), everyPage_(everyPage), announced_(announced),
      pages_(pages)
{
    makePipe(0);
    openPipe();
}

fs::path ProcessStream::pipeOf(std::size_t page) const
{
    return folder_ / (std::to_string(page + 1) + ".cmyk");
}

void ProcessStream::makePipe(std::size_t page) const
{
    const fs::path path = pipeOf(page);
    if (page < numbers_.size() && mkfifo(path.c_str(), 0600) != 0)
        io::refuseErrno(path, errno);
}

// The pipe of the page, and makes that of the next: the interpreter goes on to it as soon as this page is written,
// and waits there until it is opened.
void ProcessStream::openPipe()
{
    const fs::path path = pipeOf(page_);
    io::OpenFile pipe(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW), path);
    if (pipe.descriptor() < 0)
        io::refuseErrno(path, errno);
    // A smaller one only takes longer.
    fcntl(pipe.descriptor(), F_SETPIPE_SZ, kPipeBytes);
    makePipe(page_ + 1);
    pipe_ = std::move(pipe);
}

void ProcessStream::begin()
{
    const std::size_t page = everyPage_ ? static_cast<std::size_t>(number()) - 1 : page_;
    if (page >= announced_.size() || announced_[page].columns == 0)
        throw UnknownSize{};
    const PixelSize size = announced_[page];
    pages_.begin(number(), size, {});
    size_ = size;
    rows_ = 0;
    const auto columns = static_cast<std::size_t>(size.columns);
    planes_.resize(kPlates * columns);
    tones_.clear();
    for (std::size_t plate = 0; plate < kPlates; ++plate)
        tones_.push_back(planes_.data() + plate * columns);
    pixels_.resize(std::max(kAtOnce, kPlates * columns));
}

void ProcessStream::takeRows()
{
    const auto columns = static_cast<std::size_t>(size_.columns);
    std::uint8_t *const planes[kPlates] = {planes_.data(), planes_.data() + columns, planes_.data() + 2 * columns,
                                           planes_.data() + 3 * columns};
    std::size_t at = 0;
    for (; rows_ < size_.rows && filled_ - at >= kPlates * columns; at += kPlates * columns, ++rows_) {
        dealRow(pixels_.data() + at, columns, planes);
        pages_.row(tones_);
    }
    filled_ -= at;
    std::memmove(pixels_.data(), pixels_.data() + at, filled_);
    if (rows_ == size_.rows && filled_ > 0)
        pages_.refuse(number(), "the interpreter wrote more than the page has");
}

bool ProcessStream::take()
{
    pixels_.resize(std::max(kAtOnce, pixels_.size()));
    const ssize_t got = read(pipe_.descriptor(), pixels_.data() + filled_, pixels_.size() - filled_);
    if (got < 0 && errno != EAGAIN && errno != EINTR)
        io::refuseErrno(pipe_.name(), errno);
    if (got == 0)
        return endPage();
    if (got > 0 && !cut_) {
        if (size_.columns == 0)
            begin();
        filled_ += static_cast<std::size_t>(got);
        takeRows();
    }
    return false;
}

// Nothing writes to the pipe any more.
bool ProcessStream::endPage()
{
    cut_ |= size_.columns == 0 || rows_ < size_.rows;
    pipe_ = {};
    fs::remove(pipeOf(page_));
    if (!cut_)
        pages_.end();
    size_ = {};
    filled_ = 0;
    if (++page_ < numbers_.size())
        openPipe();
    return true;
}

void ProcessStream::ended()
{
    while (pipe_.descriptor() >= 0 && !cut_)
        take();
}

}  // namespace riders::plates
