// A resource source as a sequence of tokens, and the error for one that is
// wrong.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace rescomp {

// Where in the sources something is.
struct Place {
    std::string file;
    int line = 0;

    std::string text() const { return file + ":" + std::to_string(line); }
};

// what() is the whole line for the user: file:line: message.
struct SourceError : std::runtime_error {
    SourceError(const Place &place, const std::string &message)
        : std::runtime_error(place.text() + ": " + message)
    {
    }
};

enum class TokenKind {
    atom,        // a word or a number, as it was written
    text,        // a quoted string, in Mac OS Roman
    type,        // 'TYPE', four bytes in Mac OS Roman
    open,        // {
    close,       // }
    separator,   // ;
    lineEnd,
    end
};

struct Token {
    TokenKind kind = TokenKind::end;
    std::string text;
    int line = 0;
};

// Throws SourceError. The last token is always an end.
std::vector<Token> tokensOf(const std::string &file, std::string_view utf8);

// The bytes of a file; throws SourceError for place when they cannot be read.
std::string fileBytes(const std::filesystem::path &path, const Place &place);

}  // namespace rescomp
