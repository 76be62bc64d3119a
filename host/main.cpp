// The program people start.

#include <signal.h>

#include <CLI/CLI.hpp>

#include "commands/commands.h"

namespace {

// Exit codes: 0 done, 1 refused or failed with a line on standard error, 2
// wrong usage.
enum { done = 0, failed = 1, wrongUsage = 2 };

int explain(const CLI::App &app, const CLI::ParseError &error)
{
    bool helpAsked = error.get_exit_code() == 0;
    app.exit(error);
    return helpAsked ? done : wrongUsage;
}

}  // namespace

// Commands report what fails in them; before one runs, only memory can be missing.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char **argv)
{
    // A file that may not grow any further is treated as a full disk: reported
    // and cleaned up after, instead of ending the process.
    signal(SIGXFSZ, SIG_IGN);
    CLI::App app{"Halftone screens, flatness, annotation and error handler for PostScript jobs"};
    app.name("riders");
    riders::commands::Commands commands(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return explain(app, error);
    }
    return commands.run() ? done : failed;
}
