#include "reading/riders_in_job.h"

#include <charconv>

#include "apply/comment_words.h"
#include "apply/markers.h"
#include "apply/riders_file.h"
#include "reading/window.h"

namespace riders::reading {
namespace {

using apply::isComment;
using apply::nextWord;

constexpr std::size_t kLineSeen = 64 << 10;  // of a longer line only the beginning is looked at

std::size_t lineEndsIn(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find_first_of("\r\n"); at != text.npos; at = text.find_first_of("\r\n", at + 1)) {
        if (text.substr(at, 2) == "\r\n")
            ++at;
        ++count;
    }
    return count;
}

// What belongs to the riders file that the text begins with: up to its last line, or to that of earlier versions.
std::size_t lengthOfRiders(std::string_view text)
{
    const std::size_t last = text.find(apply::kRidersLastLine);
    if (last != text.npos)
        return std::min(text.find_first_of("\r\n", last), text.size());
    constexpr std::string_view earlier = "\nend end\n";
    const std::size_t end = text.find(earlier);
    return end == text.npos ? text.size() : end + earlier.size();
}

class Job {
public:
    Job(const io::OpenFile &job, std::string_view start) : window_(job, start) {}

    std::vector<RidersInJob> riders()
    {
        for (std::string_view seen = window_.see(kLineSeen); !seen.empty(); seen = window_.see(kLineSeen)) {
            const std::string_view text = seen.substr(0, seen.find_first_of("\r\n"));
            if (inLine_ || !takeFragment(text))
                takeLine(text);
        }
        return std::move(found_);
    }

private:
    // The line, and the data that it announces; of a long line the part that is seen.
    void takeLine(std::string_view text)
    {
        const std::string line(inLine_ ? "" : text);
        const std::string_view seen = window_.see(kLineSeen);
        inLine_ = seen.size() == text.size();
        std::size_t end = text.size();
        if (!inLine_)
            end += seen.substr(end, 2) == "\r\n" ? 2 : 1;
        line_ += !inLine_;
        window_.pass(end);
        if (isComment(line, "%%BeginDocument"))
            documents_.push_back(nameIn(line));
        else if (isComment(line, "%%EndDocument") && !documents_.empty())
            documents_.pop_back();
        else if (isComment(line, "%%BeginData"))
            passData(std::string_view(line).substr(11));
        else if (isComment(line, "%%BeginBinary"))
            passData(std::string_view(line).substr(13));
    }

    static std::string nameIn(std::string_view line)
    {
        line.remove_prefix(std::string_view("%%BeginDocument").size());
        line.remove_prefix(std::min(line.find_first_not_of(": \t"), line.size()));
        return std::string(line.empty() ? "without a name" : line);
    }

    // As many bytes or lines as it says; where it does not say, nothing.
    void passData(std::string_view arguments)
    {
        const std::string_view number = nextWord(arguments);
        nextWord(arguments);  // how the data is coded
        std::uint64_t count = 0;
        if (std::from_chars(number.data(), number.data() + number.size(), count).ec != std::errc())
            return;
        linesToPass_ = nextWord(arguments) == "Lines";
        while (count > 0 && passSome(count))
            ;
    }

    bool passSome(std::uint64_t &count)
    {
        const std::string_view seen = window_.see(kLineSeen);
        if (seen.empty())
            return false;
        if (!linesToPass_) {
            const std::size_t some = static_cast<std::size_t>(std::min<std::uint64_t>(seen.size(), count));
            line_ += lineEndsIn(seen.substr(0, some));
            count -= some;
            window_.pass(some);
            return true;
        }
        const std::size_t end = std::min(seen.find_first_of("\r\n"), seen.size());
        const bool ended = end < seen.size();
        const std::size_t length = end + (seen.substr(end, 2) == "\r\n" ? 2 : ended);
        count -= ended;
        line_ += ended;
        window_.pass(length);
        return true;
    }

    bool takeFragment(std::string_view text)
    {
        if (text.starts_with(apply::kOpeningWord))
            takeMarked();
        else if (apply::isRidersFile(window_.see(apply::kRidersMagic.size() + 3)) &&
                 text.find(apply::kRidersMagic) != text.npos)
            takeUnmarked();
        else
            return false;
        return true;
    }

    RidersInJob begun(bool marked)
    {
        return {line_, window_.offset(), documents_.empty() ? "" : documents_.back(), marked, false, {}};
    }

    void passSeen(std::size_t count)
    {
        line_ += lineEndsIn(window_.see(count).substr(0, count));
        window_.pass(count);
    }

    void takeMarked()
    {
        RidersInJob found = begun(true);
        const std::string_view seen =
            window_.see(apply::kLongestOpening + apply::kLandscapeLine.size() + apply::kLongestRiders + 64);
        std::size_t start = seen.substr(0, apply::kLongestOpening).find('\n') + 1;
        const auto marker = apply::parseOpening(seen.substr(0, start));
        if (start == 0)
            start = seen.find_first_of("\r\n") == seen.npos ? seen.size() : seen.find_first_of("\r\n") + 1;
        if (seen.substr(start).starts_with(apply::kLandscapeLine))
            start += apply::kLandscapeLine.size();
        std::size_t length = 0, end = 0;
        if (marker && marker->length <= apply::kLongestRiders &&
            seen.substr(std::min(start + marker->length + marker->lineEndAfter, seen.size()))
                .starts_with(apply::kClosingLine)) {
            length = marker->length;
            end = start + length + marker->lineEndAfter + apply::kClosingLine.size();
        } else {
            found.damaged = true;
            const std::size_t closing = seen.find("\n" + std::string(apply::kClosingLine), start);
            length = closing == seen.npos ? lengthOfRiders(seen.substr(start)) : closing + 1 - start;
            end = start + length;
        }
        found.riders = seen.substr(start, length);
        found.damaged |= !apply::isRidersFile(found.riders);
        passSeen(end);
        found_.push_back(std::move(found));
    }

    void takeUnmarked()
    {
        RidersInJob found = begun(false);
        const std::string_view seen = window_.see(apply::kLongestRiders);
        found.riders = seen.substr(0, lengthOfRiders(seen));
        passSeen(found.riders.size());
        found_.push_back(std::move(found));
    }

    Window window_;
    std::uint64_t line_ = 1;
    bool inLine_ = false, linesToPass_ = false;
    std::vector<std::string> documents_;
    std::vector<RidersInJob> found_;
};

}  // namespace

std::vector<RidersInJob> ridersInJob(const io::OpenFile &job, std::string_view start)
{
    return Job(job, start).riders();
}

}  // namespace riders::reading
