// Walking over the tokens of one source.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "source.h"

namespace rescomp {

class Cursor {
public:
    Cursor(const std::string &file, std::string_view utf8);

    // Where the next token is.
    Place place() const { return {file_, tokens_[next_].line}; }
    // Throws an error at the next token, or at the last one taken.
    [[noreturn]] void wrong(const std::string &message) const { throw SourceError(place(), message); }
    [[noreturn]] void wrongBefore(const std::string &message) const;

    bool atEnd() const { return is(TokenKind::end); }
    bool atText() const { return is(TokenKind::text); }
    bool atOpen() const;
    bool atWord(std::string_view word) const;
    // Takes the word if it is the next token.
    bool accept(std::string_view word);

    std::string word(const std::string &what);
    std::int64_t number(std::int64_t least, std::int64_t most, const std::string &what);
    std::int16_t id() { return static_cast<std::int16_t>(number(INT16_MIN, INT16_MAX, "a resource number")); }
    std::uint32_t type();
    // Neighbouring texts joined, on this line or, where the caller's kind of
    // list allows it, over following lines. At most 255 bytes.
    std::string text(const std::string &what, bool overLines = false);
    // One text, not joined with its neighbours. At most 255 bytes.
    std::string singleText();
    // file "name": a path beside this source.
    std::filesystem::path file();
    std::filesystem::path besideSource(const std::string &roman) const;

    // Skips separators and line ends.
    void skipSeparators();
    // Expects the end of a statement here: a separator, a line end, or a }.
    void endStatement();
    // { each, with separators between them }. each takes at least one token.
    void block(const std::function<void()> &each);

private:
    bool is(TokenKind kind) const { return tokens_[next_].kind == kind; }
    const Token &take() { return tokens_[next_++]; }
    void skipLineEnds();
    bool textFollows(bool overLines);
    void checkLength(const std::string &text, int line) const;

    std::string file_;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
};

}  // namespace rescomp
