// The program of `riders printer`, which is one of its own, so that `riders` needs no print server's library.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "io/plain_text.h"
#include "printer/command_line.h"
#include "printer/service.h"

// Exit codes as those of `riders`: 0 done, 1 refused or failed with a line on standard error, 2 wrong usage.
int main(int argc, char **argv)
{
    CLI::App app{"A printer that makes films: every program that prints can print on it"};
    app.name("riders printer");
    riders::printer::CommandLine words;
    riders::printer::addOptions(app, words);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    try {
        riders::printer::serve(riders::printer::requestFrom(words));
        return 0;
    } catch (const std::exception &error) {
        std::cerr << "riders printer: " << riders::io::plainText(error.what()) << '\n';
        return 1;
    }
}
