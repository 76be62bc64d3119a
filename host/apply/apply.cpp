#include "apply/apply.h"

#include <algorithm>
#include <memory>

#include "apply/earlier_file.h"
#include "apply/job_structure.h"
#include "apply/markers.h"
#include "apply/riders_file.h"
#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"
#include "io/sharing.h"

namespace riders::apply {

namespace {

// The first bytes of an input, read as far as they are wanted. The unused part of the buffer is never touched
// and takes no memory.
class Head {
public:
    Head(const io::OpenFile &in, size_t most)
        : in_(in), most_(most), bytes_(std::make_unique_for_overwrite<char[]>(most))
    {
    }

    std::string_view bytes() const { return {bytes_.get(), size_}; }
    // Reads until there are as many bytes, or all that there can be.
    void readUpTo(size_t size)
    {
        size = std::min(size, most_);
        if (ended_ || size <= size_)
            return;
        size_ += io::readFully(in_, bytes_.get() + size_, size - size_);
        ended_ = size_ < size;
    }
    // What the search finds, in no more bytes than it needs.
    template <typename Search>
    auto find(Search search)
    {
        constexpr size_t kFirst = 64 << 10;
        for (size_t size = kFirst;; size *= 8) {
            readUpTo(size);
            try {
                return search(asJob());
            } catch (const HeadTooShort &) {
                continue;
            }
        }
    }

private:
    JobHead asJob() const
    {
        const bool more = size_ > kJobHeadSize;
        return {bytes().substr(0, kJobHeadSize), ended_ && !more, in_.name(), !ended_ && !more};
    }

    const io::OpenFile &in_;
    size_t most_;
    std::unique_ptr<char[]> bytes_;
    size_t size_ = 0;
    bool ended_ = false;
};

bool isJobInstead(std::string_view bytes)
{
    return bytes.starts_with("%!") || bytes.starts_with("%PDF-");
}

std::string readRiders(const std::filesystem::path &path)
{
    const io::OpenFile in = io::openInput(path);
    Head head(in, kLongestRiders + 1);
    head.readUpTo(kLongestRiders + 1);
    const std::string_view riders = head.bytes();
    if (!isRidersFile(riders))
        throw io::Refusal(
            in.name() + ": is not a riders file (it does not begin with " + std::string(kRidersMagic) + ")" +
            (isJobInstead(riders) ? "; it is a job, to which a riders file is added: riders make makes one" : ""));
    if (riders.size() > kLongestRiders)
        throw io::Refusal(in.name() + ": is longer than 1 MiB, which no riders file is");
    if (!isWholeRiders(riders))
        throw io::Refusal(in.name() + ": is cut off (it does not end in " + std::string(kRidersLastLine) +
                          "); make it again");
    return std::string(riders);
}

void refuseRidersAsJob(Head &job, const std::string &name)
{
    job.readUpTo(kMagicWithin);
    if (!isRidersFile(job.bytes()))
        return;
    job.readUpTo(kLongestRiders + 1);  // nothing of one is missing
    if (isRidersAlone(job.bytes()))
        throw io::Refusal(name + ": is a riders file, not a job; name the job to which it is to be added, or from "
                                 "which one is to be taken");
}

void refuseSameFile(const io::OpenFile &in, const io::Output &out)
{
    if (io::sameFile(in.descriptor(), out.file().descriptor()))
        throw io::Refusal(in.name() + ": is the job and where it is to be written; name the output with -o");
}

// A riders file as it stands in a job.
struct Added {
    std::string_view riders;
    Marker marker;

    std::string text() const
    {
        std::string text = marker.lineEndBefore ? "\n" : "";
        text += openingLine(marker);
        if (marker.landscape)
            text += kLandscapeLine;
        text += riders;
        if (marker.lineEndAfter)
            text += '\n';
        text += paddingLines(marker.padding);
        text += kClosingLine;
        return text;
    }
    // Makes it as long as whole blocks. The opening line says how long the padding is, and that takes place, too.
    void pad(size_t block)
    {
        marker.padding = 1;
        for (int turn = 0; text().size() % block != 0; ++turn) {
            const size_t rest = text().size() % block;
            // Less is enough, unless the number then gets shorter, and so again too short.
            marker.padding += rest < marker.padding && turn < 4 ? -rest : block - rest;
        }
    }
};

std::size_t lineAt(std::string_view job, std::size_t offset)
{
    return 1 + static_cast<std::size_t>(
                   std::count(job.begin(), job.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

// The part of a job that is replaced.
struct Cut {
    size_t from = 0, to = 0;
    size_t length() const { return to - from; }
};

// The part of the head that is not the job's own: the marker lines and all between.
Cut cutOf(Head &head, const std::string &name)
{
    const auto opening = head.find(findFragment);
    if (!opening)
        throw io::Refusal(name + ": has no riders file in it");
    const auto damaged = [&name] {
        return io::Refusal(name + ": the riders file in it is damaged; nothing was taken out");
    };
    head.readUpTo(*opening + kLongestOpening);
    size_t before = head.bytes().substr(*opening, kLongestOpening).find('\n') + 1;
    const auto marker = parseOpening(head.bytes().substr(*opening, before));
    if (!marker || marker->length > kLongestRiders || marker->padding > kMostPadding)
        throw damaged();
    const Added added{{}, *marker};
    const size_t all = added.text().size() - marker->lineEndBefore + marker->length;
    head.readUpTo(*opening + all);
    const std::string_view rest = head.bytes().substr(*opening);
    if (rest.size() < all || (marker->lineEndBefore && (*opening == 0 || head.bytes()[*opening - 1] != '\n')))
        throw damaged();
    before += marker->landscape ? kLandscapeLine.size() : 0;
    const Added found{rest.substr(before, marker->length), *marker};
    if (!isRidersFile(found.riders) ||
        rest.substr(0, all) != std::string_view(found.text()).substr(marker->lineEndBefore))
        throw damaged();
    return {*opening - marker->lineEndBefore, *opening + all};
}

// Whether the rest of a job that is this far away after a cut can be shared.
bool isWholeBlocks(const Cut &cut, size_t added, size_t block)
{
    return block > 0 && added % block == cut.length() % block;
}

// Writes the job with the text in the place of the cut, its rest shared with the job's file; false where that is
// not possible, and nothing is then written.
bool writeSharing(const io::OpenFile &job, Head &head, const Cut &cut, std::string_view text,
                  const io::Output &out, size_t block)
{
    if (!isWholeBlocks(cut, text.size(), block))
        return false;
    const size_t rest = (cut.to + block - 1) / block * block;
    if (!io::shareRest(job, rest, out.file(), rest - cut.length() + text.size()))
        return false;
    head.readUpTo(rest);
    io::writeAll(out.file(), head.bytes().substr(0, cut.from));
    io::writeAll(out.file(), text);
    io::writeAll(out.file(), head.bytes().substr(cut.to, rest - cut.to));
    io::passRest(job, out.file());
    return true;
}

void writeCopying(const io::OpenFile &job, const Head &head, const Cut &cut, std::string_view text,
                  const io::Output &out)
{
    io::writeAll(out.file(), head.bytes().substr(0, cut.from));
    io::writeAll(out.file(), text);
    io::writeAll(out.file(), head.bytes().substr(cut.to));
    io::copyRest(job, out.file(), out.isSynced());
}

bool isSameOrdinaryFile(const std::filesystem::path &out, const std::filesystem::path &riders)
{
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(out, failed);
    if (status.type() == std::filesystem::file_type::none)
        io::refuseErrno(out, failed.value());
    return std::filesystem::is_regular_file(status) && std::filesystem::equivalent(out, riders);
}

}  // namespace

Fragment applyRiders(const ApplyRequest &request)
{
    const std::string riders = readRiders(request.riders);
    if (!request.out.empty() && !request.riders.empty() && isSameOrdinaryFile(request.out, request.riders))
        throw io::Refusal(request.out.string() + ": is the riders file itself; name another output");
    const io::OpenFile job = io::openInput(request.job);
    Head head(job, kJobHeadSize + io::kMostBlock);
    refuseRidersAsJob(head, job.name());
    const Place place = head.find(findPlace);
    Added added{riders, {riders.size(), place.needsLineEnd, !riders.ends_with('\n'), head.find(isLandscape)}};

    if (!request.force)
        refuseUnlessJob(request.out);
    io::Output out(request.out);
    refuseSameFile(job, out);
    const Cut cut{place.offset, place.offset};
    const std::string plain = added.text();
    size_t length = plain.size();
    const size_t block = io::sharedBlock(job, head.bytes().size(), cut.to, out.file());
    if (block > 0)
        added.pad(block);
    if (const std::string padded = added.text(); writeSharing(job, head, cut, padded, out, block))
        length = padded.size();
    else
        writeCopying(job, head, cut, plain, out);
    out.finish();
    return {place.offset, length, lineAt(head.bytes(), place.offset) + place.needsLineEnd};
}

Fragment stripRiders(const StripRequest &request)
{
    const io::OpenFile job = io::openInput(request.job);
    Head head(job, kJobHeadSize + kLongestRiders + kMostPadding + 2 * kLongestOpening + kLandscapeLine.size() +
                       io::kMostBlock);
    refuseRidersAsJob(head, job.name());
    const Cut cut = cutOf(head, job.name());

    if (!request.force)
        refuseUnlessJob(request.out);
    io::Output out(request.out);
    refuseSameFile(job, out);
    const size_t block = io::sharedBlock(job, head.bytes().size(), cut.to, out.file());
    if (!writeSharing(job, head, cut, {}, out, block))
        writeCopying(job, head, cut, {}, out);
    out.finish();
    return {cut.from, cut.to - cut.from, lineAt(head.bytes(), cut.from)};
}

}  // namespace riders::apply
