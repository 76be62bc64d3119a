#include "plates/interpreter/interpreter_words.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "plates/interpreter/spot_shape.h"

namespace riders::plates {
namespace {

constexpr size_t kMostLines = 100, kLongestLine = 1000;
constexpr size_t kMostPlates = 200;  // the interpreter has fewer
constexpr std::string_view kPage = "Page", kBegin = "Begin";
constexpr std::string_view kScreen = "Screen ";
constexpr std::string_view kShape = "Shape ";
constexpr std::string_view kPlate = "Plate ";
constexpr std::string_view kSize = "Size ";
constexpr std::string_view kTooManyInks = "**** Max spot colorants reached.";
constexpr std::string_view kInkLine = "%%SeparationName: ";

// Where there is room for one more plate, or the plate is there.
template <class Plates>
bool hasRoom(const Plates &plates, const std::string &plate)
{
    return plates.size() < kMostPlates || plates.count(plate) != 0;
}

// A lack of memory while they are read is thrown; it is not the end of the line.
std::istringstream wordsOf(const std::string &text)
{
    std::istringstream words(text);
    words.exceptions(std::ios::badbit);
    return words;
}

}  // namespace

bool InterpreterWords::take(std::string_view line)
{
    if (line.starts_with(opening_))
        return takeProof(line.substr(opening_.size()));
    if (line.starts_with(kInkLine) && takeInk(std::string(line.substr(kInkLine.size()))))
        return false;
    report_.inksMixed |= line == kTooManyInks;
    line = line.substr(0, kLongestLine);
    const bool blank = line.find_first_not_of(" \t\r") == std::string_view::npos;
    if (!blank && firstError_.empty() && line.find("Error: ") != std::string_view::npos)
        firstError_ = line.substr(line.find("Error: ") + 7);
    if (!blank && report_.said.size() < kMostLines)
        report_.said.emplace_back(line);
    return false;
}

bool InterpreterWords::takeProof(std::string_view line)
{
    if (line == kPage)
        return endPage();
    if (line == kBegin)
        beginPage();
    else if (line.starts_with(kScreen))
        takeScreen(std::string(line.substr(kScreen.size())));
    else if (line.starts_with(kShape))
        takeShape(std::string(line.substr(kShape.size())));
    else if (line.starts_with(kPlate))
        takePlate(std::string(line.substr(kPlate.size())));
    else if (line.starts_with(kSize))
        takeSize(std::string(line.substr(kSize.size())));
    return false;
}

// Without the hyphens that the interpreter writes around operators.
std::string InterpreterWords::failure(int megabytes) const
{
    std::string words = firstError_.empty() && !report_.said.empty() ? report_.said.front() : firstError_;
    const size_t in = words.find(" in --");
    if (in != std::string::npos && words.ends_with("--") && words.size() > in + 8)
        words.erase(words.size() - 2).erase(in + 4, 2);
    if (words.starts_with("/VMerror"))
        words += "; it may have " + std::to_string(megabytes) + " MB of memory";
    // A file that may not be deleted gives this error, too.
    if (words.starts_with("/ioerror") && !words.ends_with("in deletefile"))
        words += "; is the disk full?";
    return words.empty() ? "nothing" : words;
}

bool InterpreterWords::endPage()
{
    if (started_) {
        report_.pages.push_back(std::move(screens_));
        report_.sizes.push_back(size_);
        writing_ = std::exchange(begun_, false);
    } else {
        report_.atStart = std::move(screens_);
    }
    screens_ = {};
    size_ = {};
    return std::exchange(started_, true);
}

void InterpreterWords::beginPage()
{
    begun_ = true;
    writing_ = false;
}

void InterpreterWords::takeScreen(const std::string &text)
{
    std::istringstream words = wordsOf(text);
    AskedScreen screen;
    std::string plate;
    if (!(words >> screen.frequency >> screen.angle) || words.get() != ' ' || !std::getline(words, plate) ||
        !hasRoom(screens_, plate))
        return;
    AskedScreen &taken = screens_[plate];
    taken.frequency = screen.frequency;
    taken.angle = screen.angle;
}

void InterpreterWords::takeShape(const std::string &text)
{
    std::istringstream words = wordsOf(text);
    std::vector<double> values(kShapeValues);
    for (double &value : values)
        if (!(words >> value))
            return;  // the spot function fails
    std::string plate;
    if (words.get() != ' ' || !std::getline(words, plate) || !hasRoom(screens_, plate))
        return;
    screens_[plate].shape = shapeOf(values);
}

void InterpreterWords::takeSize(const std::string &text)
{
    std::istringstream words = wordsOf(text);
    PagePixels size;
    if (words >> size.columns >> size.rows)
        size_ = size;
}

void InterpreterWords::takePlate(const std::string &plate)
{
    if (hasRoom(screens_, "Default"))
        screens_["Default"].pagePlate = plate;
}

// "NAME CMYK = [ 32760 26208 0 0 ]"
bool InterpreterWords::takeInk(const std::string &text)
{
    const std::string_view middle = " CMYK = [ ";
    const size_t at = text.rfind(middle);
    if (at == std::string::npos)
        return false;
    std::istringstream words = wordsOf(text.substr(at + middle.size()));
    std::array<double, 4> ink{};
    for (double &part : ink) {
        if (!(words >> part))
            return false;
        part = std::min(1.0, std::max(0.0, part / 32760));
    }
    if (const std::string name = text.substr(0, at); hasRoom(report_.inks, name))
        report_.inks[name] = ink;
    return true;
}

}  // namespace riders::plates
