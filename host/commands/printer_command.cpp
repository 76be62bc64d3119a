#include "commands/printer_command.h"

#include <filesystem>
#include <string>
#include <vector>

#include "io/become.h"
#include "io/refusal.h"

namespace riders::commands {
namespace {

std::filesystem::path printerProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename("riders-printer");
}

}  // namespace

void becomePrinterIfThere(const std::vector<std::string> &arguments)
{
    const std::filesystem::path program = printerProgram();
    if (!std::filesystem::exists(program))
        return;
    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    io::becomeProgram(words);
}

void addPrinterCommand(CLI::App &app, Chosen &chosen)
{
    CLI::App *command =
        app.add_subcommand("printer", "Be a printer that makes films; riders printer --help lists its options");
    command->prefix_command();
    command->set_help_flag();
    command->callback([command, &chosen] {
        chosen.name = "riders printer";
        chosen.run = [command]() -> std::string {
            becomePrinterIfThere(command->remaining());
            throw io::Refusal("the program riders-printer is not installed beside riders");
        };
    });
}

}  // namespace riders::commands
