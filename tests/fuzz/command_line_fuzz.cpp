// Any words on the command line: understood or refused with words. Nothing is done.
#include <CLI/CLI.hpp>

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "commands/commands.h"

namespace {

// The first byte chooses the command; the words end in NUL.
std::vector<std::string> wordsOf(const uint8_t *data, size_t size)
{
    static const char *const commands[] = {"make", "apply",   "strip", "show", "proof",
                                           "play", "screens", "mesh",  ""};
    std::vector<std::string> words = {"riders"};
    const char *const command = size > 0 ? commands[data[0] % std::size(commands)] : "";
    if (*command != '\0')
        words.emplace_back(command);
    std::string word;
    for (size_t i = 1; i < size; ++i)
        if (data[i] != 0) {
            word += static_cast<char>(data[i]);
        } else {
            words.push_back(word);
            word.clear();
        }
    if (!word.empty())
        words.push_back(word);
    return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::vector<std::string> words = wordsOf(data, size);
    std::vector<const char *> arguments;
    for (const std::string &word : words)
        arguments.push_back(word.c_str());
    CLI::App app{"fuzzed"};
    riders::commands::Commands commands(app);
    try {
        app.parse(static_cast<int>(arguments.size()), arguments.data());
    } catch (const CLI::ParseError &error) {
        std::ostringstream out, err;
        app.exit(error, out, err);
        if (out.str().empty() && err.str().empty())
            abort();
    }
    return 0;
}
