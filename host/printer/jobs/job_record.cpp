#include "printer/jobs/job_record.h"

#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "io/refusal.h"

namespace riders::printer {
namespace {

constexpr std::string_view kFirstLine = "riders printer job 1";
constexpr std::string_view kChoice = "choice ";
constexpr std::array<std::pair<JobState, const char *>, 5> kStates = {{{JobState::accepted, "accepted"},
                                                                       {JobState::made, "made"},
                                                                       {JobState::held, "held"},
                                                                       {JobState::failed, "failed"},
                                                                       {JobState::canceled, "canceled"}}};

std::string escaped(std::string_view value)
{
    std::string text;
    for (const char c : value)
        if (c == '\n')
            text += "\\n";
        else if (c == '\\')
            text += "\\\\";
        else
            text += c;
    return text;
}

std::string unescaped(std::string_view text)
{
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\\' && i + 1 < text.size())
            value += text[++i] == 'n' ? '\n' : text[i];
        else
            value += text[i];
    return value;
}

long long numberIn(std::string_view text)
{
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0)
        throw io::Refusal("expected a number, not \"" + std::string(text) + "\"");
    return number;
}

JobState stateIn(std::string_view text)
{
    for (const auto &[state, name] : kStates)
        if (text == name)
            return state;
    throw io::Refusal("there is no state \"" + std::string(text) + "\" of a job");
}

std::string *textMember(JobRecord &record, std::string_view name)
{
    const std::array<std::pair<std::string_view, std::string *>, 8> members = {{{"queue", &record.key.queue},
                                                                                {"title", &record.title},
                                                                                {"user", &record.user},
                                                                                {"format", &record.format},
                                                                                {"hold", &record.holdUntil},
                                                                                {"pages", &record.pages},
                                                                                {"message", &record.message},
                                                                                {"films", &record.films}}};
    for (const auto &[member, place] : members)
        if (name == member)
            return place;
    return nullptr;
}

void take(JobRecord &record, std::string_view name, const std::string &value)
{
    if (std::string *const text = textMember(record, name))
        *text = value;
    else if (name == "number")
        record.key.number = static_cast<int>(std::min<long long>(numberIn(value), 1 << 30));
    else if (name == "state")
        record.state = stateIn(value);
    else if (name == "accepted")
        record.accepted = static_cast<std::time_t>(numberIn(value));
    else if (name == "ended")
        record.ended = static_cast<std::time_t>(numberIn(value));
    else if (name.starts_with(kChoice))
        record.choices.set(name.substr(kChoice.size()), value, ChosenBy::job);
    else
        throw io::Refusal("there is nothing called \"" + std::string(name) + "\" in the record of a job");
}

}  // namespace

std::string inWords(JobState state)
{
    for (const auto &[known, name] : kStates)
        if (state == known)
            return name;
    return {};
}

std::string textOf(const JobRecord &record)
{
    std::string text = std::string(kFirstLine) + "\n";
    const auto line = [&](const std::string &name, const std::string &value) {
        if (!value.empty())
            text += name + "=" + escaped(value) + "\n";
    };
    line("queue", record.key.queue);
    line("number", std::to_string(record.key.number));
    line("state", inWords(record.state));
    line("title", record.title);
    line("user", record.user);
    line("format", record.format);
    line("hold", record.holdUntil);
    line("pages", record.pages);
    line("accepted", std::to_string(record.accepted));
    line("ended", std::to_string(record.ended));
    line("message", record.message);
    line("films", record.films);
    for (const auto &[name, value] : record.choices.all())
        line(std::string(kChoice) + name, value);
    return text;
}

JobRecord recordFromText(std::string_view text)
{
    JobRecord record;
    bool first = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = line.find('=');
        if (first ? line != kFirstLine : equals == line.npos)
            throw io::Refusal("it is not the record of a job");
        if (!first)
            take(record, line.substr(0, equals), unescaped(line.substr(equals + 1)));
        first = false;
    }
    if (record.key.queue.empty() || record.key.number <= 0)
        throw io::Refusal("the record names no job");
    return record;
}

}  // namespace riders::printer
