#include "film/printing/job_option.h"

#include <algorithm>
#include <cctype>

namespace riders::printing {
namespace {

std::string lower(std::string_view text)
{
    std::string letters(text);
    for (char &letter : letters)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return letters;
}

std::string plainValue(std::string_view text)
{
    const std::string value = lower(text);
    if (value == "yes" || value == "on")
        return "true";
    return value == "no" || value == "off" ? "false" : value;
}

}  // namespace

std::optional<JobOption> jobOptionFromText(std::string_view text)
{
    const std::size_t equals = text.find('=');
    JobOption option{std::string(text.substr(0, equals)),
                     equals == text.npos ? "true" : std::string(text.substr(equals + 1))};
    const auto isControl = [](char letter) { return static_cast<unsigned char>(letter) < ' ' || letter == 0x7f; };
    if (option.name.empty() || option.name.find(' ') != option.name.npos ||
        std::any_of(text.begin(), text.end(), isControl))
        return std::nullopt;
    return option;
}

bool sameName(std::string_view one, std::string_view other)
{
    return lower(one) == lower(other);
}

bool sameValue(std::string_view one, std::string_view other)
{
    return plainValue(one) == plainValue(other);
}

std::optional<std::string> valueOf(const std::vector<JobOption> &options, std::string_view name)
{
    const auto found = std::find_if(options.rbegin(), options.rend(),
                                    [&](const JobOption &option) { return sameName(option.name, name); });
    return found == options.rend() ? std::nullopt : std::optional(found->value);
}

}  // namespace riders::printing
