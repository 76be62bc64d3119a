#include "apply/job_structure.h"

#include <algorithm>
#include <charconv>

#include "apply/comment_words.h"
#include "apply/markers.h"
#include "io/refusal.h"

namespace riders::apply {

namespace {

constexpr char kEndOfJob = 0x04;  // ^D, from serial lines and old drivers
constexpr std::string_view kUniversalExit = "\033%-12345X";

struct Line {
    size_t start = 0;
    size_t next = 0;        // where the following line starts
    std::string_view text;  // without its line end
    bool ended = false;     // false: the job ends without a line end
};

// Lines ending in LF, CR or CRLF. A line that the head cuts off is not returned,
// nor one whose CR is the head's last byte: an LF may follow.
class Lines {
public:
    Lines(const JobHead &head, size_t start)
        : bytes_(head.bytes), whole_(head.whole), canGrow_(head.canGrow), at_(start), lf_('\n', bytes_, start),
          cr_('\r', bytes_, start)
    {
    }

    bool next(Line &line)
    {
        if (at_ >= bytes_.size())
            return atEnd();
        const size_t end = std::min(lf_.from(at_), cr_.from(at_));
        line.ended = end != std::string_view::npos;
        if (!whole_ && (!line.ended || (bytes_[end] == '\r' && end + 1 == bytes_.size())))
            return atEnd();
        line.start = at_;
        line.text = bytes_.substr(at_, line.ended ? end - at_ : std::string_view::npos);
        line.next = line.ended ? end + 1 : bytes_.size();
        if (line.ended && bytes_.substr(end, 2) == "\r\n")
            ++line.next;
        at_ = line.next;
        return true;
    }

    void skipBytes(size_t count)
    {
        if (count > bytes_.size() - at_)
            atEnd();
        at_ += std::min(count, bytes_.size() - at_);
    }

private:
    // Where the next of one kind of line end is. It is looked for again only when it has been passed, so a head is
    // searched once, however short its lines are, and also where it has none.
    class LineEnd {
    public:
        LineEnd(char end, std::string_view bytes, size_t start)
            : end_(end), bytes_(bytes), at_(bytes.find(end, start))
        {
        }
        size_t from(size_t start)
        {
            if (at_ < start)
                at_ = bytes_.find(end_, start);
            return at_;
        }

    private:
        char end_;
        std::string_view bytes_;
        size_t at_;
    };

    bool atEnd() const
    {
        if (canGrow_)
            throw HeadTooShort();
        return false;
    }

    std::string_view bytes_;
    bool whole_, canGrow_;
    size_t at_;
    LineEnd lf_, cr_;
};

// The lines of the job itself: those of embedded documents and of data
// sections are left out.
class OwnLines {
public:
    OwnLines(const JobHead &head, size_t start) : lines_(head, start) {}

    bool next(Line &line)
    {
        while (lines_.next(line)) {
            if (!line.text.starts_with("%%")) {
                if (embedded_ == 0)
                    return true;
            } else if (isComment(line.text, "%%BeginDocument"))
                ++embedded_;
            else if (isComment(line.text, "%%EndDocument"))
                embedded_ -= embedded_ > 0;
            else if (isComment(line.text, "%%BeginData"))
                skipData(line.text.substr(11), "%%EndData");
            else if (isComment(line.text, "%%BeginBinary"))
                skipData(line.text.substr(13), "%%EndBinary");
            else if (embedded_ == 0)
                return true;
        }
        return false;
    }

private:
    // Skips the count that the section states; to its end where it states none.
    void skipData(std::string_view arguments, std::string_view endWord)
    {
        const std::string_view number = nextWord(arguments);
        nextWord(arguments);  // how the data is coded
        const bool inLines = nextWord(arguments) == "Lines";
        size_t count = 0;
        const auto parsed = std::from_chars(number.data(), number.data() + number.size(), count);
        if (parsed.ec == std::errc::result_out_of_range)
            count = kJobHeadSize;
        else if (parsed.ec != std::errc())
            return skipTo(endWord);
        if (!inLines)
            return lines_.skipBytes(count);
        for (Line line; count > 0 && lines_.next(line); --count)
            ;
    }

    void skipTo(std::string_view endWord)
    {
        for (Line line; lines_.next(line) && !isComment(line.text, endWord);)
            ;
    }

    Lines lines_;
    unsigned embedded_ = 0;
};

// Skips what a printer driver may send before the job.
size_t pastPrinterLanguage(const JobHead &head, size_t at)
{
    at += kUniversalExit.size();
    Lines lines(head, at);
    for (Line line; lines.next(line) && line.ended; at = line.next)
        if (!line.text.empty() && !line.text.starts_with("@PJL"))
            break;
    return at;
}

// Offset of the "%!" that the job begins with.
size_t findStart(const JobHead &head)
{
    if (head.bytes.empty())
        throw io::Refusal(head.name + ": is empty, not a PostScript job");
    if (head.bytes.starts_with("\xC5\xD0\xD3\xC6"))
        throw io::Refusal(head.name +
                          ": is an EPS file in a binary wrapper with a preview; take its PostScript part");
    if (head.bytes.starts_with("%PDF-"))
        throw io::Refusal(head.name + ": is a PDF, not a PostScript job; convert it first (pdftops)");
    size_t at = 0;
    for (size_t before = 1; before != at;) {
        before = at;
        at = std::min(head.bytes.find_first_not_of(kEndOfJob, at), head.bytes.size());
        if (head.canGrow && at + kUniversalExit.size() > head.bytes.size())
            throw HeadTooShort();
        if (head.bytes.substr(at).starts_with(kUniversalExit))
            at = pastPrinterLanguage(head, at);
    }
    if (!head.bytes.substr(at).starts_with("%!"))
        throw io::Refusal(head.name + ": is not a PostScript job (it does not begin with %!)");
    return at;
}

}  // namespace

Place findPlace(const JobHead &head)
{
    OwnLines lines(head, findStart(head));
    Line line;
    if (!lines.next(line) || line.next > kJobHeadLimit)
        throw io::Refusal(head.name + ": its first line does not end within 4 MiB");
    Place place{line.next, !line.ended};
    bool pastComments = false, pastProlog = false;
    while (lines.next(line)) {
        if (line.text.starts_with(kOpeningWord))
            throw io::Refusal(head.name + ": has a riders file in it already; strip it first");
        if (line.next > kJobHeadLimit)
            continue;  // looked at for a marker only
        if (isComment(line.text, "%%EndSetup") || isComment(line.text, "%%Page"))
            return {line.start, false};
        if (isComment(line.text, "%%Trailer") || isComment(line.text, "%%EOF"))
            break;
        const bool prolog = isComment(line.text, "%%EndProlog") && !pastProlog;
        const bool comments = isComment(line.text, "%%EndComments") && !pastComments && !pastProlog;
        if (prolog || comments)
            place = {line.next, !line.ended};
        pastProlog |= prolog;
        pastComments |= comments;
    }
    return place;
}

bool isLandscape(const JobHead &head)
{
    Lines lines(head, findStart(head));
    constexpr std::string_view word = "%%Orientation";
    for (Line line; lines.next(line) && line.text.starts_with('%') && !isComment(line.text, "%%EndComments");)
        if (isComment(line.text, word)) {
            std::string_view value = line.text.substr(word.size());
            return nextWord(value) == "Landscape";
        }
    return false;
}

std::optional<size_t> findFragment(const JobHead &head)
{
    OwnLines lines(head, findStart(head));
    for (Line line; lines.next(line);)
        if (line.text.starts_with(kOpeningWord))
            return line.start;
    return {};
}

}  // namespace riders::apply
