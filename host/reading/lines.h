// The lines of a text, with parts between them that are no lines.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace riders::reading {

// Lines end in LF, CR or CRLF.
class Lines {
public:
    explicit Lines(std::string_view text) : text_(text) {}

    // The next one without its line end; false at the end of the text.
    bool next(std::string_view &line)
    {
        if (at_ >= text_.size())
            return false;
        const std::size_t end = std::min(text_.find_first_of("\r\n", at_), text_.size());
        line = text_.substr(at_, end - at_);
        at_ = std::min(end + (text_.substr(end, 2) == "\r\n" ? 2 : 1), text_.size());
        return true;
    }

    // Everything from `rest`, the end of the line last returned, up to the mark, or to the end of the text where
    // there is none; the next line begins after the mark.
    std::string upTo(std::string_view rest, std::string_view mark)
    {
        const std::size_t start = static_cast<std::size_t>(rest.data() - text_.data());
        const std::size_t end = std::min(text_.find(mark, start), text_.size());
        at_ = std::min(end + mark.size(), text_.size());
        return std::string(text_.substr(start, end - start));
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace riders::reading
