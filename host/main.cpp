// The program people start.

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands/commands.h"
#include "commands/description.h"
#include "commands/mistakes.h"
#include "commands/presets.h"
#include "io/plain_text.h"

namespace {

// Exit codes: 0 done, 1 refused or failed with a line on standard error, 2
// wrong usage.
enum { done = 0, failed = 1, wrongUsage = 2 };

// What was wrong may quote an argument, which may hold anything.
int explain(CLI::App &app, const CLI::ParseError &error, const std::vector<std::string> &given)
{
    bool helpAsked = error.get_exit_code() == 0;
    std::ostringstream words;
    app.exit(error, std::cout, words);
    if (!helpAsked)
        words << riders::commands::meantBy(app, given);
    std::cerr << riders::io::plainLines(words.str());
    if (helpAsked && !std::cout.flush()) {
        std::cerr << app.get_name() << ": standard output cannot be written\n";
        return failed;
    }
    return helpAsked ? done : wrongUsage;
}

std::atomic<bool> memoryWasMissing = false;

// There is none to compose a message in either.
void sayThatMemoryIsMissing()
{
    constexpr std::string_view words = "riders: there is not enough memory\n";
    [[maybe_unused]] const ssize_t put = write(STDERR_FILENO, words.data(), words.size());
}

int run(int argc, char **argv)
{
    CLI::App app{"Halftone screens, flatness, annotation and error handler for PostScript jobs"};
    app.name("riders");
    riders::commands::Commands commands(app);
    const std::vector<std::string> given(argv + std::min(argc, 1), argv + argc);
    if (const auto problem = riders::commands::describe(app, given)) {
        if (problem->empty())
            return done;
        std::cerr << app.get_name() << ": " << riders::io::plainText(*problem) << '\n';
        return failed;
    }
    try {
        const std::vector<std::string> words = riders::commands::withPresets(given);
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ParseError &error) {
        return explain(app, error, given);
    } catch (const riders::io::Refusal &refusal) {
        std::cerr << app.get_name() << ": " << riders::io::plainText(refusal.message) << '\n';
        return dynamic_cast<const riders::commands::WrongPreset *>(&refusal) != nullptr ? wrongUsage : failed;
    }
    return commands.run() ? done : failed;
}

}  // namespace

int main(int argc, char **argv)
{
    // A file that may not grow any further is treated as a full disk: reported
    // and cleaned up after, instead of ending the process.
    signal(SIGXFSZ, SIG_IGN);
    // The standard library ends the process where it has no memory and no way to say so, as when it reads a
    // folder.
    std::set_new_handler([] {
        memoryWasMissing = true;
        throw std::bad_alloc();
    });
    std::set_terminate([] {
        if (!memoryWasMissing)
            std::abort();
        sayThatMemoryIsMissing();
        _exit(failed);
    });
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc &) {
        sayThatMemoryIsMissing();
        return failed;
    }
}
