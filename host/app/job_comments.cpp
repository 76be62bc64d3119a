#include "app/job_comments.h"

#include <algorithm>
#include <charconv>

#include "toolbox/host/text.h"

namespace riders::app {
namespace {

// The next line, without its end, which may be LF, CR or both.
std::optional<std::string_view> takeLine(std::string_view &bytes)
{
    if (bytes.empty())
        return std::nullopt;
    const size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(std::min(end + (bytes.substr(end, 2) == "\r\n" ? 2 : 1), bytes.size()));
    return line;
}

std::optional<std::string_view> valueOf(std::string_view line, std::string_view comment)
{
    if (!line.starts_with(comment))
        return std::nullopt;
    line.remove_prefix(comment.size());
    const size_t start = line.find_first_not_of(" \t");
    if (start == line.npos)
        return std::string_view();
    return line.substr(start, line.find_last_not_of(" \t") + 1 - start);
}

// A title may be a PostScript string. Bytes that are not UTF-8 are
// taken to be Mac OS Roman.
std::string asText(std::string_view value)
{
    std::string text;
    const bool string = value.size() >= 2 && value.front() == '(' && value.back() == ')';
    if (string)
        value = value.substr(1, value.size() - 2);
    for (size_t i = 0; i < value.size(); ++i) {
        if (string && value[i] == '\\' && i + 1 < value.size())
            ++i;
        if (static_cast<unsigned char>(value[i]) >= ' ')
            text += value[i];
    }
    return toolbox::romanFromUtf8(text) ? text : toolbox::utf8FromRoman(text);
}

std::optional<long> asNumber(std::string_view value)
{
    long number = 0;
    auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    const bool good = error == std::errc() && number >= 0 && end != value.data();
    return good ? std::optional(number) : std::nullopt;
}

// Header comments end at %%EndComments, or before a line that is not a comment.
void readHeader(std::string_view bytes, JobComments &comments)
{
    takeLine(bytes);
    while (auto line = takeLine(bytes)) {
        if (!line->starts_with("%") || line->starts_with("%%EndComments"))
            return;
        if (auto title = valueOf(*line, "%%Title:"); title && comments.title.empty())
            comments.title = asText(*title);
        if (auto pages = valueOf(*line, "%%Pages:"); pages && !comments.pages)
            comments.pages = asNumber(*pages);
    }
}

// The last one counts: those before belong to embedded documents.
void readTrailer(std::string_view bytes, JobComments &comments)
{
    while (auto line = takeLine(bytes))
        if (auto pages = valueOf(*line, "%%Pages:"))
            if (auto number = asNumber(*pages))
                comments.pages = number;
}

}  // namespace

JobComments commentsOf(std::string_view head, std::string_view tail)
{
    JobComments comments;
    readHeader(head, comments);
    if (!comments.pages)
        readTrailer(tail, comments);
    return comments;
}

}  // namespace riders::app
