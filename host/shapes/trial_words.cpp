#include "shapes/trial_words.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace riders::shapes {
namespace {

constexpr std::string_view kOpening = "RidersShape ";
constexpr double kPixelScale = 1 << 29;  // as in trial.ps

// The next word of a line, which is taken from it.
std::string_view takeWord(std::string_view &line)
{
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

bool readNumber(std::string_view word, float &value)
{
    const char *end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, value);
    return error == std::errc() && rest == end && std::isfinite(value);
}

std::string several(std::string_view count, const char *one)
{
    return std::string(count) + " " + one + (count == "1" ? "" : "s");
}

struct Fault {
    std::string_view kind, word;
    std::string place;  // in the cell
};

std::string inWords(const Fault &fault)
{
    const std::string word(fault.word);
    if (fault.kind == "empty")
        return "it is empty";
    if (fault.kind == "braces")
        return "it has a closing brace too many";
    if (fault.kind == "text")
        return word == "syntaxerror" ? "a brace, bracket or parenthesis in it has no partner (syntaxerror)"
                                     : "it cannot be read as PostScript (" + word + ")";
    if (fault.kind == "operator")
        return "it uses " + word + ", which does not calculate; a dot shape may use only operators that do";
    if (fault.kind == "stack")
        return "it leaves " + several(word, "value") + " on the stack, and not one, for " + fault.place;
    if (fault.kind == "type")
        return "it leaves what is no number (" + word + ") for " + fault.place;
    if (fault.kind == "range")
        return "it gives " + word + " for " + fault.place + ", and not a number from -1 to 1";
    if (fault.kind == "dictionaries")
        return "it leaves the dictionary stack other than it was, for " + fault.place;
    if (word == "stackunderflow")
        return "it takes more from the stack than x and y (stackunderflow), for " + fault.place;
    return "it fails (" + word + ") for " + fault.place;
}

}  // namespace

bool TrialWords::take(std::string_view line)
{
    if (!line.starts_with(kOpening) || current_ == trials_.size())
        return false;
    line.remove_prefix(kOpening.size());
    const std::string_view kind = takeWord(line);
    if (kind == "row")
        takeRow(line);
    else if (kind == "pixels")
        takePixels(line);
    else if (kind == "fault")
        takeFault(line);
    else if (kind == "end")
        end();
    else
        return false;
    return true;
}

void TrialWords::takeRow(std::string_view numbers)
{
    std::vector<float> &values = trials_[current_].values;
    float value = 0;
    for (std::string_view word; !(word = takeWord(numbers)).empty() && values.size() < most_;)
        if (readNumber(word, value))
            values.push_back(value);
}

void TrialWords::takePixels(std::string_view numbers)
{
    std::vector<float> &values = trials_[current_].values;
    std::int64_t value = 0;
    for (std::string_view word; !(word = takeWord(numbers)).empty() && values.size() < most_;)
        if (std::from_chars(word.data(), word.data() + word.size(), value).ec == std::errc())
            values.push_back(static_cast<float>(double(value) / kPixelScale - 1));
}

void TrialWords::takeFault(std::string_view words)
{
    Fault fault;
    fault.kind = takeWord(words);
    const std::string_view x = takeWord(words), y = takeWord(words);
    fault.place = "x = " + std::string(x) + ", y = " + std::string(y);
    fault.word = takeWord(words);
    if (trials_[current_].problem.empty())
        trials_[current_].problem = inWords(fault);
}

void TrialWords::end()
{
    ShapeTrial &trial = trials_[current_++];
    trial.ended = true;
    if (trial.problem.empty() && trial.values.size() != most_)
        trial.problem = "it gives values that are not numbers";
    if (!trial.problem.empty())
        trial.values.clear();
}

}  // namespace riders::shapes
