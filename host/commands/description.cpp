#include "commands/description.h"

#include <exception>

#include "commands/known_words.h"
#include "commands/printer_command.h"
#include "commands/standard_output.h"
#include "commands/version.h"
#include "describing/completion.h"
#include "describing/manual_page.h"
#include "io/refusal.h"

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

void completeLineOfPrinter(const std::vector<std::string> &typed)
{
    std::vector<std::string> words = {"--complete-line"};
    words.insert(words.end(), typed.begin(), typed.end());
    try {
        becomePrinterIfThere(words);
    } catch (const io::Refusal &) {  // then there is nothing to offer
    }
}

}  // namespace

std::optional<std::string> describe(CLI::App &app, const std::vector<std::string> &words)
{
    if (words.empty())
        return std::nullopt;
    if (words[0] == "--write-manual")
        return writeManual(app, words);
    if (words[0] != "--complete-line")
        return std::nullopt;
    // Its command line is another program's.
    if (words.size() > 2 && words[1] == "printer")
        completeLineOfPrinter({words.begin() + 2, words.end()});
    return printLines(completionLines(
        describing::complete(describing::wordsOf(app), {words.begin() + 1, words.end()}, knownWords())));
}

}  // namespace riders::commands
