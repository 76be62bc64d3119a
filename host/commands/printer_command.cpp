#include "commands/printer_command.h"

#include <filesystem>
#include <string>
#include <vector>

#include "io/become.h"
#include "io/refusal.h"

namespace riders::commands {
namespace {

[[noreturn]] void becomePrinter(const std::vector<std::string> &arguments)
{
    const std::filesystem::path program =
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("riders-printer");
    if (!std::filesystem::exists(program))
        throw io::Refusal("the program riders-printer is not installed beside riders");
    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    io::becomeProgram(words);
}

}  // namespace

void addPrinterCommand(CLI::App &app, Chosen &chosen)
{
    CLI::App *command =
        app.add_subcommand("printer", "Be a printer that makes films; riders printer --help lists its options");
    command->prefix_command();
    command->set_help_flag();
    command->callback([command, &chosen] {
        chosen.name = "riders printer";
        chosen.run = [command]() -> std::string { becomePrinter(command->remaining()); };
    });
}

}  // namespace riders::commands
