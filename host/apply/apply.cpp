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

namespace riders::apply {

namespace {

// The first bytes of an input. The unused part of the buffer is never touched
// and takes no memory.
class Head {
public:
    Head(const io::OpenFile &in, size_t most)
        : bytes_(std::make_unique_for_overwrite<char[]>(most)), size_(io::readFully(in, bytes_.get(), most))
    {
    }

    std::string_view bytes() const { return {bytes_.get(), size_}; }
    JobHead asJob(const std::string &name) const
    {
        return {bytes().substr(0, kJobHeadSize), size_ <= kJobHeadSize, name};
    }

private:
    std::unique_ptr<char[]> bytes_;
    size_t size_;
};

bool isJobInstead(std::string_view bytes)
{
    return bytes.starts_with("%!") || bytes.starts_with("%PDF-");
}

Head readRiders(const std::filesystem::path &path)
{
    const io::OpenFile in = io::openInput(path);
    Head riders(in, kLongestRiders + 1);
    if (!isRidersFile(riders.bytes()))
        throw io::Refusal(
            in.name() + ": is not a riders file (it does not begin with " + std::string(kRidersMagic) + ")" +
            (isJobInstead(riders.bytes()) ? "; it is a job, to which a riders file is added: riders make makes one"
                                          : ""));
    if (riders.bytes().size() > kLongestRiders)
        throw io::Refusal(in.name() + ": is longer than 1 MiB, which no riders file is");
    if (!isWholeRiders(riders.bytes()))
        throw io::Refusal(in.name() + ": is cut off (it does not end in " + std::string(kRidersLastLine) +
                          "); make it again");
    return riders;
}

// Of the job's, and longer than any riders file: nothing of one is missing.
void refuseRidersAsJob(const Head &job, const std::string &name)
{
    if (isRidersAlone(job.bytes()))
        throw io::Refusal(name + ": is a riders file, not a job; name the job to which it is to be added, or from "
                                 "which one is to be taken");
}

void refuseSameFile(const io::OpenFile &in, const io::Output &out)
{
    if (io::sameFile(in.descriptor(), out.file().descriptor()))
        throw io::Refusal(in.name() + ": is the job and where it is to be written; name the output with -o");
}

std::string markedFragment(const Place &place, std::string_view fragment, bool landscape)
{
    const Marker marker{fragment.size(), place.needsLineEnd, !fragment.ends_with('\n'), landscape};
    std::string text = marker.lineEndBefore ? "\n" : "";
    text += openingLine(marker);
    if (landscape)
        text += kLandscapeLine;
    text += fragment;
    if (marker.lineEndAfter)
        text += '\n';
    text += kClosingLine;
    return text;
}

std::size_t lineAt(std::string_view job, std::size_t offset)
{
    return 1 + static_cast<std::size_t>(
                   std::count(job.begin(), job.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

struct Cut {
    size_t from = 0, to = 0;
};

// The part of the head that is not the job's own: the marker lines and all between.
Cut cutOf(const JobHead &job, std::string_view bytes)
{
    const auto opening = findFragment(job);
    if (!opening)
        throw io::Refusal(job.name + ": has no riders file in it");
    const auto damaged = [&job] {
        return io::Refusal(job.name + ": the riders file in it is damaged; nothing was taken out");
    };
    std::string_view rest = bytes.substr(*opening);
    size_t before = rest.substr(0, kLongestOpening).find('\n') + 1;
    const auto marker = parseOpening(rest.substr(0, before));
    if (!marker || marker->length > kLongestRiders)
        throw damaged();
    if (marker->landscape) {
        if (!rest.substr(before).starts_with(kLandscapeLine))
            throw damaged();
        before += kLandscapeLine.size();
    }
    if (marker->lineEndBefore && (*opening == 0 || bytes[*opening - 1] != '\n'))
        throw damaged();
    const size_t length = before + marker->length + marker->lineEndAfter;
    if (rest.size() < length || !rest.substr(length).starts_with(kClosingLine) ||
        (marker->lineEndAfter && rest[length - 1] != '\n') || !isRidersFile(rest.substr(before, marker->length)))
        throw damaged();
    return {*opening - marker->lineEndBefore, *opening + length + kClosingLine.size()};
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
    const Head riders = readRiders(request.riders);
    if (!request.out.empty() && !request.riders.empty() && isSameOrdinaryFile(request.out, request.riders))
        throw io::Refusal(request.out.string() + ": is the riders file itself; name another output");
    const io::OpenFile job = io::openInput(request.job);
    const Head head(job, kJobHeadSize + 1);
    refuseRidersAsJob(head, job.name());
    const Place place = findPlace(head.asJob(job.name()));
    const bool landscape = isLandscape(head.asJob(job.name()));

    if (!request.force)
        refuseUnlessJob(request.out);
    io::Output out(request.out);
    refuseSameFile(job, out);
    io::writeAll(out.file(), head.bytes().substr(0, place.offset));
    const std::string fragment = markedFragment(place, riders.bytes(), landscape);
    io::writeAll(out.file(), fragment);
    io::writeAll(out.file(), head.bytes().substr(place.offset));
    io::copyRest(job, out.file());
    out.finish();
    return {place.offset, fragment.size(), lineAt(head.bytes(), place.offset) + place.needsLineEnd};
}

Fragment stripRiders(const StripRequest &request)
{
    const io::OpenFile job = io::openInput(request.job);
    const Head head(job, kJobHeadSize + kLongestRiders + 2 * kLongestOpening + kLandscapeLine.size());
    refuseRidersAsJob(head, job.name());
    const Cut cut = cutOf(head.asJob(job.name()), head.bytes());

    if (!request.force)
        refuseUnlessJob(request.out);
    io::Output out(request.out);
    refuseSameFile(job, out);
    io::writeAll(out.file(), head.bytes().substr(0, cut.from));
    io::writeAll(out.file(), head.bytes().substr(cut.to));
    io::copyRest(job, out.file());
    out.finish();
    return {cut.from, cut.to - cut.from, lineAt(head.bytes(), cut.from)};
}

}  // namespace riders::apply
