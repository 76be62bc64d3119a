#include "architecture/type_definitions.h"

#include <cctype>

#include "architecture/source_text.h"

namespace architecture {

namespace {

struct Token {
    std::string text;
    int line;
};

// Words, "::", and single characters; preprocessor lines are left out.
std::vector<Token> tokens(const std::string &text)
{
    std::vector<Token> found;
    int line = 1;
    bool lineStart = true;
    for (size_t at = 0; at < text.size();) {
        char c = text[at];
        if (c == '#' && lineStart) {
            while (at < text.size() && text[at] != '\n')
                at += text[at] == '\\' && at + 1 < text.size() ? (line += text[at + 1] == '\n', 2) : 1;
            continue;
        }
        size_t end = at + 1;
        if (ofWord(c))
            while (end < text.size() && ofWord(text[end]))
                ++end;
        else if (text.compare(at, 2, "::") == 0)
            ++end;
        if (c == '\n')
            ++line;
        if (!std::isspace(static_cast<unsigned char>(c)))
            found.push_back({text.substr(at, end - at), line});
        lineStart = c == '\n' || (lineStart && std::isspace(static_cast<unsigned char>(c)));
        at = end;
    }
    return found;
}

// Follows braces, and knows what each of them belongs to.
class TypeReader {
public:
    explicit TypeReader(const std::string &text) : tokens_(tokens(text)) {}

    std::vector<TypeDefinition> read()
    {
        for (at_ = 0; at_ < tokens_.size(); ++at_) {
            const std::string &token = tokens_[at_].text;
            if (token == "}" && !scopes_.empty())
                scopes_.pop_back();
            else if (token == "{")
                scopes_.push_back({"", true});
            else if (token == "extern" && word(at_ + 1) == "\"" && word(at_ + 3) == "{")
                linkage();
            else if (!hidden() && token == "namespace")
                nameSpace();
            else if (!hidden() && (token == "class" || token == "struct" || token == "union" || token == "enum"))
                type();
        }
        return found_;
    }

private:
    struct Scope {
        std::string name;
        bool hidden;  // a function, a namespace without a name: what is inside is invisible to other files
    };

    bool hidden() const
    {
        for (const Scope &scope : scopes_)
            if (scope.hidden)
                return true;
        return false;
    }

    std::string word(size_t place) const { return place < tokens_.size() ? tokens_[place].text : ""; }

    // A name with its ::, starting at a place, which is moved past it.
    std::string name(size_t &place) const
    {
        std::string found;
        while (ofWord(word(place)[0]) || word(place) == "::") {
            found += word(place);
            ++place;
        }
        return found;
    }

    void linkage()
    {
        scopes_.push_back({"", hidden()});
        at_ += 3;
    }

    void nameSpace()
    {
        size_t place = at_ + 1;
        std::string found = name(place);
        if (word(place) != "{")
            return;
        scopes_.push_back({found, found.empty()});
        at_ = place;
    }

    void type()
    {
        size_t place = at_ + 1;
        if (word(place) == "class" || word(place) == "struct")
            ++place;
        skipAttributes(place);
        std::string found = name(place);
        if (found.ends_with("final"))
            found.resize(found.size() - 5);
        if (word(place) == "<")
            found += arguments(place);
        if (word(place) == "final")
            ++place;
        if (word(place) == ":")
            while (place < tokens_.size() && word(place) != "{" && word(place) != ";")
                ++place;
        if (word(place) != "{")
            return;
        if (!found.empty())
            found_.push_back({tokens_[at_].line, qualified(found)});
        scopes_.push_back({found, found.empty()});
        at_ = place;
    }

    void skipAttributes(size_t &place) const
    {
        while (word(place) == "[" || word(place) == "alignas" || word(place) == "__attribute__") {
            int open = 0;
            do {
                const std::string token = word(place++);
                open += token == "[" || token == "(";
                open -= token == "]" || token == ")";
            } while (place < tokens_.size() && (open > 0 || word(place) == "("));
        }
    }

    std::string arguments(size_t &place) const
    {
        std::string found;
        int open = 0;
        do {
            open += word(place) == "<";
            open -= word(place) == ">";
            found += word(place++);
        } while (place < tokens_.size() && open > 0 && word(place) != "{" && word(place) != ";");
        return found;
    }

    std::string qualified(const std::string &own) const
    {
        std::string whole;
        for (const Scope &scope : scopes_)
            if (!scope.name.empty())
                whole += scope.name + "::";
        return whole + own;
    }

    std::vector<Token> tokens_;
    size_t at_ = 0;
    std::vector<Scope> scopes_;
    std::vector<TypeDefinition> found_;
};

}  // namespace

std::vector<TypeDefinition> typeDefinitions(const std::string &text)
{
    return TypeReader(withoutComments(text, Quotes::Blank)).read();
}

}  // namespace architecture
