#include "printer/queues/choices.h"

#include <algorithm>
#include <limits>
#include <sstream>

#include "film/resolution_text.h"
#include "io/refusal.h"
#include "screens/number_text.h"
#include "screens/plate_spelling.h"
#include "screens/screen_limits.h"

namespace riders::printer {
namespace {

constexpr std::size_t kLongestChoice = 1000;  // bytes

bool isOneOf(const std::string &value, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), value) != words.end();
}

// "all", "none", or some of the marks with a plus between them.
std::vector<std::string> marksIn(const std::string &text)
{
    std::vector<std::string> marks;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, '+');)
        marks.push_back(word);
    return marks;
}

bool areMarks(const std::string &text)
{
    if (isOneOf(text, {"all", "none"}))
        return true;
    const std::vector<std::string> marks = marksIn(text);
    return !marks.empty() && std::all_of(marks.begin(), marks.end(), [](const std::string &mark) {
        return isOneOf(mark, {"label", "register", "crop", "wedge"});
    });
}

// Several screens of plates, with a semicolon between them.
std::vector<std::string> platesIn(const std::string &text)
{
    std::vector<std::string> plates;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ';');)
        plates.push_back(word);
    return plates;
}

std::string wrongNumber(const std::string &text, std::string (*wrong)(double))
{
    return wrong(screens::numberFromText(text).value_or(std::numeric_limits<double>::quiet_NaN()));
}

std::string wrongPlates(const std::string &text)
{
    try {
        for (const std::string &plate : platesIn(text))
            screens::plateFromText(plate);
    } catch (const io::Refusal &refusal) {
        return "the screens of plates, as in Cyan:133@15,Round (" + refusal.message + ")";
    }
    return {};
}

std::string unless(bool right, const char *expected)
{
    return right ? "" : expected;
}

// What was expected; empty where the value is right.
std::string wrongValue(std::string_view name, const std::string &value)
{
    if (name == "frequency")
        return wrongNumber(value, screens::wrongFrequency);
    if (name == "angle")
        return wrongNumber(value, screens::wrongAngle);
    if (name == "plates")
        return wrongPlates(value);
    if (name == "dpi")
        return unless(film::resolutionFromText(value).has_value(), "dots per inch, as in 1200 or 1440x720");
    if (name == "marks")
        return unless(areMarks(value), "all, none, or some of label, register, crop and wedge, as in label+crop");
    if (name == "negative")
        return unless(isOneOf(value, {"yes", "no"}), "yes or no");
    if (name == "emulsion")
        return unless(isOneOf(value, {"up", "down"}), "up or down");
    if (name == "rotate")
        return unless(isOneOf(value, {"0", "90", "180", "270"}), "0, 90, 180 or 270");
    return {};
}

bool mayNameFile(std::string_view name)
{
    return isOneOf(std::string(name), {"screens", "shape", "plates"});
}

void addMarks(std::vector<std::string> &arguments, const std::string &value)
{
    if (value == "all")
        arguments.emplace_back("--marks");
    else if (value != "none")
        for (const std::string &mark : marksIn(value))
            arguments.push_back("--" + mark);
}

}  // namespace

const std::vector<ChoiceKind> &choiceKinds()
{
    static const std::vector<ChoiceKind> kinds = {
        {"screens", "screens"},        {"frequency", "screen-frequency"}, {"angle", "screen-angle"},
        {"shape", "spot-function"},    {"plates", "screen-plates"},       {"dpi", nullptr},
        {"marks", "film-marks"},       {"sheet", "film-sheet"},           {"negative", "film-negative"},
        {"emulsion", "film-emulsion"}, {"rotate", "film-rotate"}};
    return kinds;
}

void Choices::set(std::string_view name, const std::string &value, ChosenBy by)
{
    const std::vector<ChoiceKind> &kinds = choiceKinds();
    if (std::none_of(kinds.begin(), kinds.end(), [&](const ChoiceKind &kind) { return name == kind.name; }))
        throw io::Refusal("there is no choice \"" + std::string(name) + "\"");
    if (value.empty()) {
        chosen_.erase(std::string(name));
        return;
    }
    if (value.size() > kLongestChoice || screens::hasControlCharacters(value))
        throw io::Refusal("expected for " + std::string(name) + " a text of at most " +
                          std::to_string(kLongestChoice) + " bytes, without control characters");
    if (const std::string expected = wrongValue(name, value); !expected.empty())
        throw io::Refusal("expected for " + std::string(name) + " " + expected + ", not \"" + value + "\"");
    if (by == ChosenBy::job && mayNameFile(name) && value.find('/') != value.npos)
        throw io::Refusal("a job cannot name files, as in " + std::string(name) + " \"" + value + "\"");
    chosen_[std::string(name)] = value;
}

const std::string &Choices::get(std::string_view name) const
{
    static const std::string none;
    const auto found = chosen_.find(name);
    return found == chosen_.end() ? none : found->second;
}

Choices Choices::over(const Choices &queue) const
{
    Choices both = queue;
    if (!get("screens").empty())
        for (const char *single : {"frequency", "angle", "shape", "plates"})
            both.chosen_.erase(single);
    if (!get("angle").empty())
        both.chosen_.erase("screens");
    for (const auto &[name, value] : chosen_)
        both.chosen_[name] = value;
    return both;
}

// A value may begin with a hyphen, and so stays in one word with its option.
std::vector<std::string> Choices::arguments() const
{
    std::vector<std::string> arguments;
    for (const auto &[name, value] : chosen_)
        if (name == "marks")
            addMarks(arguments, value);
        else if (name == "negative")
            arguments.insert(arguments.end(), value == "yes" ? 1 : 0, "--negative");
        else if (name == "plates")
            for (const std::string &plate : platesIn(value))
                arguments.push_back("--plate=" + plate);
        else
            arguments.push_back("--" + (name == "shape" ? "spot" : name) + "=" + value);
    return arguments;
}

std::string Choices::inWords() const
{
    std::string words;
    for (const auto &[name, value] : chosen_)
        words += (words.empty() ? "" : ", ") + name + " " + value;
    return words.empty() ? "as the job has it" : words;
}

}  // namespace riders::printer
