#include "apply/comment_words.h"

#include <algorithm>

namespace riders::apply {

bool isComment(std::string_view text, std::string_view word)
{
    if (!text.starts_with(word))
        return false;
    text.remove_prefix(word.size());
    return text.empty() || text[0] == ':' || text[0] == ' ' || text[0] == '\t';
}

std::string_view nextWord(std::string_view &text)
{
    const std::size_t start = std::min(text.find_first_not_of(": \t"), text.size());
    const std::size_t end = std::min(text.find_first_of(" \t", start), text.size());
    const std::string_view word = text.substr(start, end - start);
    text.remove_prefix(end);
    return word;
}

}  // namespace riders::apply
