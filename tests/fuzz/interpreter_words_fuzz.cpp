// Any lines of an interpreter or a job: pages are counted as they end, inks are
// in their range, and not all words are kept.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "plates/interpreter/interpreter_words.h"

namespace {

// Turns a line that begins with P, S or I into one that is known.
std::string spelledOut(const std::string &line)
{
    switch (line.empty() ? 0 : line[0]) {
    case 'P':
        return "%%ProofPage" + line.substr(1);
    case 'S':
        return "%%ProofScreen " + line.substr(1);
    case 'I':
        return "%%SeparationName: " + line.substr(1);
    }
    return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::istringstream in(std::string(reinterpret_cast<const char *>(data), size));
    riders::plates::InterpreterWords words;
    size_t ended = 0;
    for (std::string line; std::getline(in, line);)
        ended += words.take(spelledOut(line));
    const riders::plates::InterpreterReport &report = words.report();
    if (report.pages.size() != ended || report.said.size() > 100 || words.failure(10).empty())
        abort();
    for (const auto &page : report.pages)
        for (const auto &[plate, screen] : page)
            if (!std::isfinite(screen.frequency) || !std::isfinite(screen.angle))
                abort();
    for (const auto &[ink, parts] : report.inks)
        for (const double part : parts)
            if (!(part >= 0 && part <= 1))
                abort();
    return 0;
}
