// Any text as a script: split into words or refused, and split the same way
// when the words are quoted again; any text as the displays it plays on.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "play/displays.h"
#include "play/script.h"
#include "toolbox/host/user.h"

namespace {

std::string quoted(const std::string &word)
{
    std::string text = "\"";
    for (const char letter : word)
        if (letter == '\n')
            text += "\\n";
        else
            text += std::string(letter == '"' || letter == '\\' ? "\\" : "") + letter;
    return text + "\"";
}

std::string written(const riders::play::ScriptLine &line)
{
    std::string text;
    for (size_t i = 0; i < line.words.size(); ++i)
        text += " " + (line.quoted.at(i) ? quoted(line.words[i]) : line.words[i]);
    return text;
}

void checkDisplays(const std::string &text)
{
    for (const toolbox::Display &display : riders::play::displaysFromText(text))
        if (!riders::play::isDepth(display.depth) || display.scale < 1 ||
            display.scale > riders::play::largestScale)
            abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    checkDisplays(text);
    try {
        int last = 0;
        for (const riders::play::ScriptLine &line : riders::play::splitScript(text)) {
            if (line.number <= last || line.words.empty() || line.words.size() != line.quoted.size())
                abort();
            last = line.number;
            const auto again = riders::play::splitScript(written(line));
            if (again.size() != 1 || again[0].words != line.words || again[0].quoted != line.quoted)
                abort();
        }
    } catch (const toolbox::ScriptError &) {
    }
    return 0;
}
