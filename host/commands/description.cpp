#include "commands/description.h"

#include <exception>

#include "commands/known_words.h"
#include "commands/standard_output.h"
#include "commands/version.h"
#include "describing/completion.h"
#include "describing/manual_page.h"

namespace riders::commands {
namespace {

std::string writeManual(CLI::App &app, const std::vector<std::string> &words)
{
    if (words.size() != 4)
        return "--write-manual needs the folders of texts and of pages, and a date";
    try {
        describing::writeManual(
            describing::wordsOf(app),
            {.version = kVersion, .date = words[3], .textFolder = words[1], .pageFolder = words[2]});
    } catch (const std::exception &error) {
        return error.what();
    }
    return {};
}

}  // namespace

std::optional<std::string> describe(CLI::App &app, const std::vector<std::string> &words)
{
    if (words.empty())
        return std::nullopt;
    if (words[0] == "--write-manual")
        return writeManual(app, words);
    if (words[0] == "--complete-line")
        return printLines(completionLines(
            describing::complete(describing::wordsOf(app), {words.begin() + 1, words.end()}, knownWords())));
    return std::nullopt;
}

}  // namespace riders::commands
