#include "architecture/source_text.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>

namespace architecture {

bool ofWord(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

namespace {

// Goes through a text once, from one comment or quoted piece to the next.
class Blanker {
public:
    Blanker(const std::string &text, Quotes quotes) : text_(text), quotes_(quotes) {}

    std::string blanked()
    {
        while (at_ < text_.size())
            step();
        return text_;
    }

private:
    void step()
    {
        if (text_.compare(at_, 2, "//") == 0)
            blank(text_.find('\n', at_));
        else if (text_.compare(at_, 2, "/*") == 0)
            blank(after(text_.find("*/", at_ + 2), 2));
        else if (text_.compare(at_, 2, "R\"") == 0 && (at_ == 0 || !ofWord(text_[at_ - 1])))
            rawText();
        else if (text_[at_] == '"' || (text_[at_] == '\'' && !separatesDigits()))
            quoted(text_[at_]);
        else
            ++at_;
    }

    static size_t after(size_t place, size_t count) { return place == std::string::npos ? place : place + count; }

    void blank(size_t end)
    {
        for (end = std::min(end, text_.size()); at_ < end; ++at_)
            if (text_[at_] != '\n')
                text_[at_] = ' ';
    }

    // In 1'000; a character after a prefix, as in u'x', has letters before it.
    bool separatesDigits() const
    {
        size_t start = at_;
        while (start > 0 && (ofWord(text_[start - 1]) || text_[start - 1] == '\''))
            --start;
        return start < at_ && std::isdigit(static_cast<unsigned char>(text_[start]));
    }

    void quoted(char mark)
    {
        size_t end = at_ + 1;
        while (end < text_.size() && text_[end] != mark && text_[end] != '\n')
            end += text_[end] == '\\' ? 2 : 1;
        pass(end, end + 1);
    }

    void rawText()
    {
        size_t open = text_.find('(', at_);
        std::string close = ")" + text_.substr(at_ + 2, open - at_ - 2) + "\"";
        size_t end = text_.find(close, open);
        pass(end, after(end, close.size()));
    }

    // The piece starts here, its contents end at `inner`, it ends at `outer`.
    void pass(size_t inner, size_t outer)
    {
        ++at_;
        if (quotes_ == Quotes::Blank)
            blank(inner);
        at_ = std::min(outer, text_.size());
    }

    std::string text_;
    Quotes quotes_;
    size_t at_ = 0;
};

}  // namespace

std::string withoutComments(const std::string &text, Quotes quotes)
{
    return Blanker(text, quotes).blanked();
}

std::vector<IncludeLine> includeLines(const std::string &text)
{
    static const std::regex form(R"(^\s*#\s*include\s*(["<])([^">]+)[">])");
    std::vector<IncludeLine> found;
    std::istringstream lines(withoutComments(text, Quotes::Kept));
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::smatch match;
        if (line.find("include") != std::string::npos && std::regex_search(line, match, form))
            found.push_back({number, match[2], match[1] == "\""});
    }
    return found;
}

std::set<std::string> words(const std::string &text)
{
    std::string code = withoutComments(text, Quotes::Blank);
    std::set<std::string> found;
    for (size_t end = 0, at = 0; at < code.size(); at = end + 1) {
        for (end = at; end < code.size() && ofWord(code[end]);)
            ++end;
        if (end > at)
            found.insert(code.substr(at, end - at));
    }
    return found;
}

int lineOfWord(const std::string &text, const std::string &word)
{
    std::string code = withoutComments(text, Quotes::Blank);
    for (size_t at = code.find(word); at != std::string::npos; at = code.find(word, at + 1)) {
        bool starts = at == 0 || !ofWord(code[at - 1]);
        if (starts && (at + word.size() >= code.size() || !ofWord(code[at + word.size()])))
            return 1 + static_cast<int>(std::count(code.begin(), code.begin() + at, '\n'));
    }
    return 0;
}

}  // namespace architecture
