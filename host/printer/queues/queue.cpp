#include "printer/queues/queue.h"

#include <algorithm>
#include <cctype>
#include <set>

#include "io/bytes.h"
#include "io/refusal.h"
#include "screens/number_text.h"
#include "screens/screen_limits.h"
#include "screens/toml_parser.h"

namespace riders::printer {
namespace {

constexpr std::size_t kLongestName = 40, kLongestValue = 1000;  // bytes

bool isNameCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x80 && (std::isalnum(byte) != 0 || c == '-' || c == '_');
}

void checkName(const std::string &name)
{
    if (name.empty() || name.size() > kLongestName || !std::all_of(name.begin(), name.end(), isNameCharacter) ||
        std::isalpha(static_cast<unsigned char>(name[0])) == 0)
        throw io::Refusal("expected a queue's name of letters, digits, - and _, beginning with a letter, not \"" +
                          name + "\"");
}

bool isFlag(std::string_view name)
{
    return name == "negative" || name == "hold" || name == "look";
}

bool yesOrNo(const std::string &name, const std::string &value)
{
    if (value != "yes" && value != "no")
        throw io::Refusal("expected yes or no for " + name + ", not \"" + value + "\"");
    return value == "yes";
}

void setPart(Queue &queue, const std::string &name, const std::string &value)
{
    if (value.size() > kLongestValue || screens::hasControlCharacters(value))
        throw io::Refusal("expected a shorter text without control characters for " + name);
    if (name == "folder")
        queue.folder = value;
    else if (name == "printer")
        queue.printer = value;
    else if (name == "hold")
        queue.hold = yesOrNo(name, value);
    else if (name == "look")
        queue.look = yesOrNo(name, value);
    else
        queue.choices.set(name, value, ChosenBy::owner);
}

std::vector<std::string> partsOf(std::string_view text)
{
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const std::string part(text.substr(0, comma));
        text.remove_prefix(std::min(comma + 1, text.size()));
        if (!parts.empty() && part.find('=') == part.npos && !isFlag(part))
            parts.back() += "," + part;
        else
            parts.push_back(part);
    }
    return parts;
}

std::string textOf(const std::string &name, const toml::node &node);

std::string listOf(const std::string &name, const toml::array &array)
{
    std::string all;
    for (const toml::node &element : array)
        all += (all.empty() ? "" : ";") + textOf(name, element);
    return all;
}

std::string textOf(const std::string &name, const toml::node &node)
{
    if (const auto text = node.value_exact<std::string>(); text && !text->empty())
        return *text;
    if (const auto flag = node.value_exact<bool>())
        return *flag ? "yes" : "no";
    if (node.is_number())
        return screens::numberText(node.value<double>().value_or(0));
    if (const toml::array *const array = node.as_array(); array != nullptr && name == "plates" && !array->empty())
        return listOf("a plate", *array);
    throw io::Refusal("expected a text, a number, true or false for " + name);
}

[[noreturn]] void refuse(const std::string &file, const toml::source_position &at, const std::string &text)
{
    throw io::Refusal(file + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": " + text);
}

Queue queueFrom(const toml::key &name, const toml::node &node, const std::string &file)
{
    const toml::table *const table = node.as_table();
    if (table == nullptr)
        refuse(file, name.source().begin, "expected the choices of a queue, as in [queue.fine]");
    Queue queue{.name = std::string(name.str())};
    toml::source_position at = name.source().begin;
    try {
        checkName(queue.name);
        for (const auto &[key, value] : *table) {
            at = key.source().begin;
            setPart(queue, std::string(key.str()), textOf(std::string(key.str()), value));
        }
        checkQueue(queue);
    } catch (const io::Refusal &refusal) {
        refuse(file, at, refusal.message);
    }
    return queue;
}

}  // namespace

void checkQueue(const Queue &queue)
{
    checkName(queue.name);
    if (queue.printer.size() > kLongestValue || screens::hasControlCharacters(queue.printer))
        throw io::Refusal("expected the name of a queue to print on, not \"" + queue.printer + "\"");
    if (!queue.folder.empty() && !queue.printer.empty())
        throw io::Refusal("the films of " + queue.name + " go either to a folder or to a printer");
    if (queue.hold && !queue.printer.empty())
        throw io::Refusal("the films of " + queue.name + " are either held or printed");
    if (!queue.choices.get("screens").empty() && !queue.choices.get("angle").empty())
        throw io::Refusal("an angle would give all plates of the set of " + queue.name + " one angle");
}

Queue queueFromText(std::string_view text)
{
    const std::size_t colon = std::min(text.find(':'), text.size());
    Queue queue{.name = std::string(text.substr(0, colon))};
    checkName(queue.name);
    for (const std::string &part : partsOf(text.substr(std::min(colon + 1, text.size())))) {
        const std::size_t equals = part.find('=');
        if (equals == part.npos && !isFlag(part))
            throw io::Refusal("expected a choice and its value, as in frequency=60, not \"" + part + "\"");
        setPart(queue, part.substr(0, equals), equals == part.npos ? "yes" : part.substr(equals + 1));
    }
    checkQueue(queue);
    return queue;
}

std::vector<Queue> queuesFromToml(std::string_view bytes, const std::string &file)
{
    std::vector<Queue> queues;
    try {
        const toml::table table = toml::parse(bytes, file);
        for (const auto &[key, node] : table)
            if (key.str() != "queue" || !node.is_table())
                refuse(file, key.source().begin, "expected tables of queues only, as in [queue.fine]");
        if (const toml::table *const all = table["queue"].as_table())
            for (const auto &[name, node] : *all)
                queues.push_back(queueFrom(name, node, file));
    } catch (const toml::parse_error &error) {
        refuse(file, error.source().begin, std::string(error.description()));
    }
    return queues;
}

std::string tomlOf(const Queue &queue)
{
    std::string text = "[queue." + queue.name + "]\n";
    const auto line = [&](const std::string &name, const std::string &value) {
        if (value.empty())
            return;
        text += name + " = \"";
        for (const char c : value)
            text += (c == '"' || c == '\\' ? "\\" : "") + std::string(1, c);
        text += "\"\n";
    };
    for (const auto &[name, value] : queue.choices.all())
        line(name, value);
    line("folder", queue.folder);
    line("printer", queue.printer);
    line("hold", queue.hold ? "yes" : "");
    line("look", queue.look ? "yes" : "");
    return text;
}

std::vector<Queue> queuesFrom(const std::vector<std::string> &texts, const std::filesystem::path &file)
{
    std::vector<Queue> queues;
    if (!file.empty())
        queues = queuesFromToml(io::contentsOf(file), file);
    for (const std::string &text : texts)
        queues.push_back(queueFromText(text));
    if (queues.empty())
        queues.push_back({.name = kUsualQueue});
    if (queues.size() > kMostQueues)
        throw io::Refusal("expected no more than " + std::to_string(kMostQueues) + " queues");
    std::set<std::string> names;
    for (const Queue &queue : queues)
        if (!names.insert(queue.name).second)
            throw io::Refusal("there are two queues " + queue.name);
    return queues;
}

}  // namespace riders::printer
