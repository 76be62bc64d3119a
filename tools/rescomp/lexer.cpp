#include <cctype>
#include <fstream>
#include <iterator>
#include <optional>

#include "source.h"
#include "toolbox/host/text.h"

namespace rescomp {
namespace {

class Lexer {
public:
    Lexer(const std::string &file, std::string_view source) : file_(file), source_(source) {}
    std::vector<Token> all();

private:
    bool atEnd() const { return next_ == source_.size(); }
    char peek() const { return atEnd() ? '\0' : source_[next_]; }
    [[noreturn]] void wrong(const std::string &message) const { throw SourceError({file_, line_}, message); }
    void add(TokenKind kind, std::string text = {}) { tokens_.push_back({kind, std::move(text), line_}); }

    void one();
    void comment();
    void sign(TokenKind kind);
    void lineEnd();
    void atom();
    std::string quoted(char quote);
    char escaped();
    int hexDigit();
    void addRoman(std::string_view utf8, std::string &roman) const;
    void type();

    const std::string &file_;
    std::string_view source_;
    std::size_t next_ = 0;
    int line_ = 1;
    std::vector<Token> tokens_;
};

bool isAtomCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '+' || c == '_';
}

std::vector<Token> Lexer::all()
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (source_.starts_with(byteOrderMark))
        next_ = byteOrderMark.size();
    while (!atEnd())
        one();
    add(TokenKind::lineEnd);
    add(TokenKind::end);
    return std::move(tokens_);
}

void Lexer::one()
{
    switch (char c = peek()) {
    case ' ':
    case '\t':
    case '\r':
        ++next_;
        return;
    case '\n':
        return lineEnd();
    case '#':
        return comment();
    case '{':
        return sign(TokenKind::open);
    case '}':
        return sign(TokenKind::close);
    case ';':
        return sign(TokenKind::separator);
    case '"':
        return add(TokenKind::text, quoted('"'));
    case '\'':
        return type();
    default:
        if (!isAtomCharacter(c))
            wrong("a character that means nothing outside quotes");
        return atom();
    }
}

void Lexer::comment()
{
    while (!atEnd() && peek() != '\n')
        ++next_;
}

void Lexer::sign(TokenKind kind)
{
    add(kind);
    ++next_;
}

void Lexer::lineEnd()
{
    sign(TokenKind::lineEnd);
    ++line_;
}

void Lexer::atom()
{
    std::size_t start = next_;
    while (isAtomCharacter(peek()))
        ++next_;
    add(TokenKind::atom, std::string(source_.substr(start, next_ - start)));
}

void Lexer::addRoman(std::string_view utf8, std::string &roman) const
{
    std::optional<std::string> converted = toolbox::romanFromUtf8(utf8);
    if (!converted)
        wrong("a character that has no place in Mac OS Roman");
    roman += *converted;
}

// The text between quotes. Only whole stretches are converted: a letter and its
// accent may be two characters.
std::string Lexer::quoted(char quote)
{
    std::string roman;
    std::size_t start = ++next_;
    while (peek() != quote) {
        if (atEnd() || peek() == '\n')
            wrong("a text that does not end on its line");
        if (peek() != '\\') {
            ++next_;
            continue;
        }
        addRoman(source_.substr(start, next_ - start), roman);
        roman += escaped();
        start = next_;
    }
    addRoman(source_.substr(start, next_ - start), roman);
    ++next_;
    return roman;
}

char Lexer::escaped()
{
    ++next_;
    char c = peek();
    ++next_;
    switch (c) {
    case 'r':
        return '\r';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case '"':
    case '\'':
    case '\\':
        return c;
    case 'x': {
        int high = hexDigit();
        return static_cast<char>(high << 4 | hexDigit());
    }
    default:
        wrong("after a backslash only \" \\ r n t or xHH may stand");
    }
}

int Lexer::hexDigit()
{
    char c = peek();
    if (!std::isxdigit(static_cast<unsigned char>(c)))
        wrong("\\x wants two hexadecimal digits");
    ++next_;
    return std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : std::tolower(c) - 'a' + 10;
}

void Lexer::type()
{
    std::string code = quoted('\'');
    if (code.size() != 4)
        wrong("a type is four characters");
    add(TokenKind::type, code);
}

}  // namespace

std::vector<Token> tokensOf(const std::string &file, std::string_view utf8)
{
    return Lexer(file, utf8).all();
}

std::string fileBytes(const std::filesystem::path &path, const Place &place)
{
    std::error_code ignored;
    std::ifstream in(path, std::ios::binary);
    if (!in || !std::filesystem::is_regular_file(path, ignored))
        throw SourceError(place, "cannot read \"" + path.string() + "\"");
    std::string bytes(std::istreambuf_iterator<char>(in), {});
    if (in.bad())
        throw SourceError(place, "cannot read all of \"" + path.string() + "\"");
    return bytes;
}

}  // namespace rescomp
