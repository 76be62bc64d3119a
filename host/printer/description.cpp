#include "printer/description.h"

#include <iostream>

#include "describing/completion.h"
#include "describing/manual_page.h"
#include "io/refusal.h"

namespace riders::printer {
namespace {

void writeManual(CLI::App &app, const std::vector<std::string> &words)
{
    if (words.size() != 4)
        throw io::Refusal("--write-manual needs the folders of texts and of pages, and a date");
    describing::CommandWords command = describing::wordsOf(app);
    command.name = "printer";
    describing::CommandWords program;
    program.name = "riders";
    describing::writePage(program, command,
                          {.version = kVersion, .date = words[3], .textFolder = words[1], .pageFolder = words[2]});
}

}  // namespace

const char *const kVersion = RIDERS_VERSION;

bool describe(CLI::App &app, const std::vector<std::string> &words)
{
    if (words.empty())
        return false;
    if (words[0] == "--write-manual")
        writeManual(app, words);
    else if (words[0] == "--complete-line")
        std::cout << describing::completionLines(
            describing::complete(describing::wordsOf(app), {words.begin() + 1, words.end()}, {}));
    else
        return false;
    if (!std::cout.flush())
        throw io::Refusal("standard output cannot be written");
    return true;
}

}  // namespace riders::printer
