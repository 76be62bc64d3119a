#include "plates/interpreter/interpreter_words.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "plates/interpreter/spot_shape.h"

namespace riders::plates {
namespace {

constexpr size_t kMostLines = 100;
constexpr std::string_view kPageLine = "%%ProofPage";
constexpr std::string_view kScreenLine = "%%ProofScreen ";
constexpr std::string_view kShapeLine = "%%ProofShape ";
constexpr std::string_view kInkLine = "%%SeparationName: ";

}  // namespace

bool InterpreterWords::take(std::string_view line)
{
    if (line == kPageLine)
        return endPage();
    if (line.starts_with(kScreenLine) && takeScreen(std::string(line.substr(kScreenLine.size()))))
        return false;
    if (line.starts_with(kShapeLine)) {
        takeShape(std::string(line.substr(kShapeLine.size())));
        return false;
    }
    if (line.starts_with(kInkLine) && takeInk(std::string(line.substr(kInkLine.size()))))
        return false;
    const bool blank = line.find_first_not_of(" \t\r") == std::string_view::npos;
    if (!blank && firstError_.empty() && line.find("Error: ") != std::string_view::npos)
        firstError_ = line.substr(line.find("Error: ") + 7);
    if (!blank && report_.said.size() < kMostLines)
        report_.said.emplace_back(line);
    return false;
}

// Without the hyphens that the interpreter writes around operators.
std::string InterpreterWords::failure(int megabytes) const
{
    std::string words = firstError_.empty() && !report_.said.empty() ? report_.said.front() : firstError_;
    const size_t in = words.find(" in --");
    if (in != std::string::npos && words.ends_with("--") && words.size() > in + 8)
        words = words.substr(0, in + 4) + words.substr(in + 6, words.size() - in - 8);
    if (words.starts_with("/VMerror"))
        words += "; it may have " + std::to_string(megabytes) + " MB of memory";
    return words.empty() ? "nothing" : words;
}

bool InterpreterWords::endPage()
{
    if (started_)
        report_.pages.push_back(std::move(screens_));
    else
        report_.atStart = std::move(screens_);
    screens_ = {};
    return std::exchange(started_, true);
}

bool InterpreterWords::takeScreen(const std::string &text)
{
    std::istringstream words(text);
    AskedScreen screen;
    std::string plate;
    if (!(words >> screen.frequency >> screen.angle) || words.get() != ' ' || !std::getline(words, plate))
        return false;
    screen.shape = screens_[plate].shape;
    screens_[plate] = screen;
    return true;
}

void InterpreterWords::takeShape(const std::string &text)
{
    std::istringstream words(text);
    std::vector<double> values(kShapeValues);
    for (double &value : values)
        if (!(words >> value))
            return;  // the spot function fails
    std::string plate;
    if (words.get() != ' ' || !std::getline(words, plate))
        return;
    screens_[plate].shape = shapeOf(values);
}

// "NAME CMYK = [ 32760 26208 0 0 ]"
bool InterpreterWords::takeInk(const std::string &text)
{
    const std::string_view middle = " CMYK = [ ";
    const size_t at = text.rfind(middle);
    if (at == std::string::npos)
        return false;
    std::istringstream words(text.substr(at + middle.size()));
    std::array<double, 4> ink{};
    for (double &part : ink) {
        if (!(words >> part))
            return false;
        part = std::min(1.0, std::max(0.0, part / 32760));
    }
    report_.inks[text.substr(0, at)] = ink;
    return true;
}

}  // namespace riders::plates
