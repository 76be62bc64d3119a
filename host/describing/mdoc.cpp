#include "describing/mdoc.h"

#include <cctype>

namespace riders::describing {
namespace {

// What follows the hyphens of "Fl": one of them is the macro's own.
std::string flag(const std::string &name)
{
    return "Fl " + mdocWords(name.substr(1));
}

std::string valueWords(const OptionWords &option)
{
    if (option.choices.empty())
        return option.value.empty() ? "" : " Ar " + mdocWords(option.value);
    std::string words;
    for (const std::string &choice : option.choices)
        words += (words.empty() ? " Cm " : " | ") + mdocWords(choice);
    return words;
}

bool endsSentence(const std::string &text, std::size_t at)
{
    return text[at] == '.' && at + 2 < text.size() && text[at + 1] == ' ' &&
           std::isupper(static_cast<unsigned char>(text[at + 2])) != 0;
}

}  // namespace

std::string mdocWords(const std::string &plain)
{
    std::string words;
    bool begins = true;
    for (const char c : plain) {
        if (words.empty() && (c == '.' || c == '\''))
            words += "\\&";
        if (c == '\\')
            words += "\\e";
        else if (c == '-' && begins)
            words += "\\-";
        else
            words += c;
        begins = c == ' ' || c == '(' || (begins && c == '-');
    }
    return words;
}

std::string mdocSentences(const std::string &about)
{
    std::string lines, sentence;
    for (std::size_t at = 0; at < about.size(); ++at) {
        sentence += about[at];
        if (!endsSentence(about, at))
            continue;
        lines += mdocWords(sentence) + "\n";
        sentence.clear();
        ++at;  // the blank
    }
    if (!sentence.empty())
        lines += mdocWords(sentence) + (sentence.ends_with('.') ? "\n" : ".\n");
    return lines;
}

std::string mdocItem(const OptionWords &option, bool operand)
{
    if (operand)
        return ".It Ar " + mdocWords(option.names.front()) + "\n";
    std::string names;
    for (const std::string &name : option.names)
        names += (names.empty() ? "" : " , ") + flag(name);
    return ".It " + names + valueWords(option) + "\n";
}

std::string mdocUse(const OptionWords &option)
{
    return flag(option.names.front()) + valueWords(option);
}

}  // namespace riders::describing
