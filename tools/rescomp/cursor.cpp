#include "cursor.h"

#include <charconv>
#include <optional>

#include "toolbox/host/text.h"

namespace rescomp {
namespace {

constexpr std::size_t longestText = 255;

std::optional<std::int64_t> numberIn(std::string_view written)
{
    bool isNegative = written.starts_with('-');
    std::string_view digits = written.substr(isNegative ? 1 : 0);
    int base = 10;
    if (digits.starts_with("0x") || digits.starts_with("0X")) {
        digits.remove_prefix(2);
        base = 16;
    }
    std::uint64_t value = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size() || value > INT64_MAX)
        return std::nullopt;
    auto number = static_cast<std::int64_t>(value);
    return isNegative ? -number : number;
}

}  // namespace

Cursor::Cursor(const std::string &file, std::string_view utf8) : file_(file), tokens_(tokensOf(file, utf8)) {}

void Cursor::wrongBefore(const std::string &message) const
{
    throw SourceError({file_, tokens_[next_ ? next_ - 1 : 0].line}, message);
}

bool Cursor::atOpen() const
{
    std::size_t at = next_;
    while (tokens_[at].kind == TokenKind::lineEnd)
        ++at;
    return tokens_[at].kind == TokenKind::open;
}

bool Cursor::atWord(std::string_view word) const
{
    return is(TokenKind::atom) && tokens_[next_].text == word;
}

bool Cursor::accept(std::string_view word)
{
    if (!atWord(word))
        return false;
    ++next_;
    return true;
}

std::string Cursor::word(const std::string &what)
{
    if (!is(TokenKind::atom))
        wrong("expected " + what);
    return take().text;
}

std::int64_t Cursor::number(std::int64_t least, std::int64_t most, const std::string &what)
{
    std::optional<std::int64_t> value;
    if (is(TokenKind::atom))
        value = numberIn(tokens_[next_].text);
    if (!value)
        wrong("expected " + what);
    if (*value < least || *value > most)
        wrong(what + " must be from " + std::to_string(least) + " to " + std::to_string(most));
    ++next_;
    return *value;
}

std::uint32_t Cursor::type()
{
    if (!is(TokenKind::type))
        wrong("expected a type such as 'TEXT'");
    std::uint32_t code = 0;
    for (char c : take().text)
        code = code << 8 | static_cast<unsigned char>(c);
    return code;
}

bool Cursor::textFollows(bool overLines)
{
    std::size_t start = next_;
    if (overLines)
        skipLineEnds();
    if (atText())
        return true;
    next_ = start;
    return false;
}

void Cursor::checkLength(const std::string &text, int line) const
{
    if (text.size() > longestText)
        throw SourceError({file_, line}, "a text of " + std::to_string(text.size()) + " bytes; 255 is the most");
}

std::string Cursor::text(const std::string &what, bool overLines)
{
    if (!atText())
        wrong("expected " + what + " in quotes");
    int line = tokens_[next_].line;
    std::string all = take().text;
    while (textFollows(overLines))
        all += take().text;
    checkLength(all, line);
    return all;
}

std::string Cursor::singleText()
{
    if (!atText())
        wrong("expected a text in quotes");
    int line = tokens_[next_].line;
    std::string text = take().text;
    checkLength(text, line);
    return text;
}

std::filesystem::path Cursor::file()
{
    if (!accept("file"))
        wrong("expected file \"name\"");
    return besideSource(text("a file's name"));
}

std::filesystem::path Cursor::besideSource(const std::string &roman) const
{
    return std::filesystem::path(file_).parent_path() / toolbox::utf8FromRoman(roman);
}

void Cursor::skipLineEnds()
{
    while (is(TokenKind::lineEnd))
        ++next_;
}

void Cursor::skipSeparators()
{
    while (is(TokenKind::lineEnd) || is(TokenKind::separator))
        ++next_;
}

void Cursor::endStatement()
{
    if (!is(TokenKind::lineEnd) && !is(TokenKind::separator) && !is(TokenKind::close) && !is(TokenKind::end))
        wrong("did not expect anything more here");
}

void Cursor::block(const std::function<void()> &each)
{
    skipLineEnds();
    int line = tokens_[next_].line;
    if (!is(TokenKind::open))
        wrongBefore("expected {");
    ++next_;
    for (skipSeparators(); !is(TokenKind::close); skipSeparators()) {
        if (atEnd())
            throw SourceError({file_, line}, "this { has no }");
        each();
    }
    ++next_;
}

}  // namespace rescomp
