#include "screens/set_file.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <utility>

#include "io/bytes.h"
#include "io/refusal.h"
#include "screens/number_text.h"
#include "screens/screen_limits.h"
#include "screens/toml_parser.h"

namespace riders::screens {
namespace {

[[noreturn]] void refuse(const std::string &file, const toml::source_position &at, const std::string &text)
{
    throw io::Refusal(file + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": " + text);
}

// Reads one table, and refuses what is in it that nobody has asked for.
class Keys {
public:
    Keys(const toml::table &table, std::string file) : table_(table), file_(std::move(file)) {}

    // Empty where there is no such key.
    std::string text(const char *key)
    {
        const toml::node *const node = find(key);
        if (node == nullptr)
            return {};
        std::string value = node->value_exact<std::string>().value_or("");
        if (value.empty() || value.size() > kLongestSetText || hasControlCharacters(value))
            refuse(file_, node->source().begin,
                   "expected " + std::string(key) + " as a text between quotation marks, of 1 to " +
                       std::to_string(kLongestSetText) + " bytes and without control characters");
        return value;
    }

    // `wrong` returns what was expected.
    std::optional<double> number(const char *key, std::string (*wrong)(double))
    {
        const toml::node *const node = find(key);
        if (node == nullptr)
            return {};
        // Whole numbers that a double cannot hold have no value either.
        const std::optional<double> read = node->is_number() ? node->value<double>() : std::nullopt;
        const double value = read.value_or(-HUGE_VAL);
        if (const std::string expected = wrong(value); !expected.empty())
            refuse(file_, node->source().begin, "expected " + expected);
        return value;
    }

    const toml::node *find(const char *key)
    {
        known_.emplace_back(key);
        return table_.get(key);
    }

    void refuseOthers() const
    {
        for (const auto &[key, node] : table_)
            if (std::find(known_.begin(), known_.end(), key.str()) == known_.end())
                refuse(file_, key.source().begin,
                       "there is no key \"" + std::string(key.str()) + "\" here; the keys are " + list());
    }

private:
    std::string list() const
    {
        std::string all;
        for (const std::string &key : known_)
            all += (all.empty() ? "" : ", ") + key;
        return all;
    }

    const toml::table &table_;
    const std::string file_;
    std::vector<std::string> known_;
};

std::string wrongFactor(double value)
{
    if (value >= kLeastFactor && value <= kMostFactor)
        return {};
    return "a factor from " + numberText(kLeastFactor) + " to " + numberText(kMostFactor);
}

SetPlate plateFrom(const std::string &name, const toml::node &node, const ScreenSet &set, const std::string &file)
{
    const toml::table *const table = node.as_table();
    if (table == nullptr)
        refuse(file, node.source().begin, "expected the plate's screen, as in { angle = 15 }");
    Keys keys(*table, file);
    SetPlate plate{
        {name, keys.number("frequency", wrongFrequency), keys.number("angle", wrongAngle), keys.text("shape")},
        keys.number("factor", wrongFactor)};
    keys.refuseOthers();
    if (plate.factor && (plate.screen.frequency || !set.frequency))
        refuse(file, node.source().begin,
               plate.screen.frequency ? "expected a frequency or a factor, not both"
                                      : "expected a frequency for the whole set, of which this is a factor");
    if (plate.factor && !wrongFrequency(*set.frequency * *plate.factor).empty())
        refuse(file, node.source().begin,
               "expected a factor that makes " + wrongFrequency(-1) + " of " + numberText(*set.frequency));
    if (!plate.screen.frequency && !set.frequency && !plate.screen.angle && plate.screen.shape.empty() &&
        set.shape.empty())
        refuse(file, node.source().begin, "expected a frequency, an angle or a shape for " + name);
    return plate;
}

// A table keeps its keys in alphabetical order.
std::vector<std::pair<const toml::key *, const toml::node *>> asWritten(const toml::table &table)
{
    std::vector<std::pair<const toml::key *, const toml::node *>> entries;
    for (const auto &[key, node] : table)
        entries.emplace_back(&key, &node);
    const auto place = [](const auto &entry) {
        const toml::source_position &at = entry.first->source().begin;
        return std::pair(at.line, at.column);
    };
    std::sort(entries.begin(), entries.end(),
              [&](const auto &one, const auto &other) { return place(one) < place(other); });
    return entries;
}

void takePlates(ScreenSet &set, const toml::node *node, const std::string &file)
{
    const toml::table *const table = node == nullptr ? nullptr : node->as_table();
    if (table == nullptr || table->empty())
        refuse(file, node == nullptr ? toml::source_position{1, 1} : node->source().begin,
               "expected [plates] with a line for each plate, as in Cyan = { angle = 15 }");
    for (const auto &[key, plate] : asWritten(*table)) {
        const toml::source_position at = key->source().begin;
        const std::string name = plateName(std::string(key->str()));
        if (const std::string expected = wrongPlateName(name); !expected.empty())
            refuse(file, at, "expected " + expected);
        if (set.plates.size() == kMostSetPlates)
            refuse(file, at, "expected no more than " + std::to_string(kMostSetPlates) + " plates");
        for (const SetPlate &earlier : set.plates)
            if (earlier.screen.plate == name)
                refuse(file, at, "expected each plate once; " + name + " is there already");
        set.plates.push_back(plateFrom(name, *plate, set, file));
    }
}

ScreenSet setFrom(const toml::table &table, const std::string &file)
{
    Keys keys(table, file);
    ScreenSet set;
    set.name = keys.text("name");
    set.use = keys.text("for");
    set.source = keys.text("source");
    set.frequency = keys.number("frequency", wrongFrequency);
    set.shape = keys.text("shape");
    const toml::node *const plates = keys.find("plates");
    keys.refuseOthers();
    if (set.name.empty())
        refuse(file, {1, 1}, "expected the set's name, as in name = \"Offset\"");
    takePlates(set, plates, file);
    return set;
}

// The parser does not say what beginners stumble over: that names with blanks, and texts, are in quotation marks.
std::string hintFor(std::string_view bytes, std::size_t line)
{
    for (; line > 1 && bytes.find('\n') != bytes.npos; --line)
        bytes.remove_prefix(bytes.find('\n') + 1);
    bytes = bytes.substr(0, bytes.find('\n'));
    const std::size_t equals = bytes.find('=');
    if (equals == bytes.npos)
        return {};
    const auto from = [](std::string_view part) {
        return part.substr(std::min(part.find_first_not_of(" \t\r"), part.size()));
    };
    const std::string_view value = from(bytes.substr(equals + 1));
    std::string_view key = from(bytes.substr(0, equals));
    key = key.substr(0, key.find_last_not_of(" \t\r") + 1);
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.";
    if (!key.empty() && key.find('"') == key.npos && key.find_first_not_of(kPlain) != key.npos)
        return "; such a name goes between quotation marks, as in \"" + std::string(key) + "\" =";
    if (!value.empty() && std::isalpha(static_cast<unsigned char>(value[0])) != 0)
        return "; a text goes between quotation marks";
    return {};
}

void findFromFolder(std::string &shape, const std::filesystem::path &folder)
{
    if (shape.find('/') != std::string::npos)
        shape = (folder / shape).lexically_normal().string();
}

}  // namespace

ScreenSet setFromText(std::string_view bytes, const std::string &file)
{
    if (bytes.size() > kMostSetBytes)
        throw io::Refusal(file + ": is larger than a set of screens may be, " + std::to_string(kMostSetBytes) +
                          " bytes");
    try {
        return setFrom(toml::parse(bytes, file), file);
    } catch (const toml::parse_error &error) {
        refuse(file, error.source().begin,
               std::string(error.description()) + hintFor(bytes, error.source().begin.line));
    }
}

ScreenSet setFromFile(const std::filesystem::path &file)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string bytes(kMostSetBytes + 1, '\0');
    bytes.resize(io::readFully(in, bytes.data(), bytes.size()));
    ScreenSet set = setFromText(bytes, file);
    const std::filesystem::path folder = file.parent_path();
    findFromFolder(set.shape, folder);
    for (SetPlate &plate : set.plates)
        findFromFolder(plate.screen.shape, folder);
    return set;
}

}  // namespace riders::screens
