#include "play/arguments.h"

#include <charconv>
#include <map>

#include "toolbox/events.h"
#include "toolbox/host/user.h"

namespace riders::play {

using toolbox::ScriptError;

std::string Arguments::word(const char *what)
{
    if (!more())
        throw ScriptError{line_.number, line_.words[0] + " needs " + what};
    return line_.words[next_++];
}

int Arguments::number(const char *what, int least, int most)
{
    std::string text = word(what);
    int value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool isNumber = error == std::errc() && end == text.data() + text.size();
    if (!isNumber || value < least || value > most)
        fail(line_.words[0] + " needs " + what + " from " + std::to_string(least) + " to " + std::to_string(most) +
             ", not \"" + text + "\"");
    return value;
}

Point Arguments::point()
{
    int h = number("a horizontal coordinate", INT16_MIN, INT16_MAX);
    int v = number("a vertical coordinate", INT16_MIN, INT16_MAX);
    return {static_cast<std::int16_t>(v), static_cast<std::int16_t>(h)};
}

bool Arguments::numberFollows() const
{
    return more() && !line_.quoted[next_] &&
           line_.words[next_].find_first_not_of("0123456789") == std::string::npos;
}

bool Arguments::pointFollows() const
{
    return more() && line_.words[next_] != "with";
}

bool Arguments::take(const std::string &expected)
{
    if (!more() || line_.words[next_] != expected)
        return false;
    ++next_;
    return true;
}

std::uint16_t Arguments::modifiers()
{
    static const std::map<std::string, std::uint16_t> known = {
        {"command", cmdKey}, {"shift", shiftKey}, {"option", optionKey}, {"control", controlKey}};
    std::uint16_t all = 0;
    if (!take("with"))
        return all;
    do {
        std::string name = word("a modifier key");
        auto found = known.find(name);
        if (found == known.end())
            fail("there is no modifier key \"" + name + "\"");
        all |= found->second;
    } while (more());
    return all;
}

void Arguments::end()
{
    if (more())
        fail("\"" + line_.words[next_] + "\" is too much for " + line_.words[0]);
}

void Arguments::fail(const std::string &message)
{
    throw ScriptError{line_.number, message};
}

}  // namespace riders::play
