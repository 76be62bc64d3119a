// The program of `riders printer`, which is one of its own, so that `riders` needs no print server's library.
#include <signal.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "io/plain_text.h"
#include "printer/command_line.h"
#include "printer/description.h"
#include "printer/service.h"

namespace {

// Exit codes as those of `riders`: 0 done, 1 refused or failed with a line on standard error, 2 wrong usage.
int run(int argc, char **argv)
{
    CLI::App app{"A printer that makes films: every program that prints can print on it"};
    app.name("riders printer");
    riders::printer::CommandLine words;
    riders::printer::addOptions(app, words);
    app.set_version_flag("--version", std::string("riders printer ") + riders::printer::kVersion,
                         "Print the version");
    if (riders::printer::describe(app, {argv + std::min(argc, 1), argv + argc}))
        return 0;
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    riders::printer::serve(riders::printer::requestFrom(words));
    return 0;
}

}  // namespace

int main(int argc, char **argv)
{
    // A file that may not grow any further is treated as a full disk.
    signal(SIGXFSZ, SIG_IGN);
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::cerr << "riders printer: " << riders::io::plainText(error.what()) << '\n';
        return 1;
    }
}
