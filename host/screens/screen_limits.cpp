#include "screens/screen_limits.h"

#include <strings.h>

#include <utility>

#include "io/plain_text.h"
#include "screens/number_text.h"

namespace riders::screens {

std::string wrongFrequency(double value)
{
    if (value >= kLeastFrequency && value <= kMostFrequency)
        return {};
    return "a frequency from " + numberText(kLeastFrequency) + " to " + numberText(kMostFrequency) +
           " lines per inch";
}

std::string wrongAngle(double value)
{
    if (value >= -kMostAngle && value <= kMostAngle)
        return {};
    return "an angle from " + numberText(-kMostAngle) + " to " + numberText(kMostAngle) + " degrees";
}

std::string wrongPlateName(const std::string &name)
{
    if (name.empty() || name.size() > kLongestPlateName)
        return "the name of a plate, 1 to " + std::to_string(kLongestPlateName) + " bytes long";
    if (hasControlCharacters(name))
        return "the name of a plate in UTF-8 without control characters";
    // In a halftone dictionary or in a colour space these are no plates.
    for (const char *taken : {"Default", "HalftoneType", "HalftoneName", "All", "None"})
        if (name == taken)
            return "the name of a plate (the rest of the plates is *), not " + name;
    return {};
}

bool hasControlCharacters(const std::string &text)
{
    return io::plainText(text) != text;
}

std::string processInkMeant(const std::string &name)
{
    for (const auto &[meant, full] : {std::pair("C", "Cyan"), {"M", "Magenta"}, {"Y", "Yellow"}, {"K", "Black"}})
        if (strcasecmp(name.c_str(), meant) == 0 || name == std::string("Process ") + full)
            return full;
    return {};
}

std::string plateName(const std::string &typed)
{
    for (const char *process : {"Cyan", "Magenta", "Yellow", "Black"})
        if (strcasecmp(typed.c_str(), process) == 0)
            return process;
    return typed;
}

}  // namespace riders::screens
