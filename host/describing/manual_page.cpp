#include "describing/manual_page.h"

#include <array>
#include <cctype>
#include <regex>
#include <sstream>

#include "describing/mdoc.h"
#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"

namespace riders::describing {
namespace {

constexpr std::string_view kInclude = ".\\\" include ";

// For a command that nothing more is said about.
constexpr std::string_view kLeastText = ".Sh DESCRIPTION\n"
                                        "The options are:\n"
                                        ".\\\" options\n";

std::string withSmallInitial(std::string words)
{
    if (words.size() > 1 && std::islower(static_cast<unsigned char>(words[1])) != 0)
        words[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(words[0])));
    return words;
}

std::string joined(const std::vector<std::string> &names)
{
    std::string all;
    for (const std::string &name : names)
        all += (all.empty() ? "" : ", ") + name;
    return all;
}

std::string itemOf(const OptionWords &option, bool operand)
{
    std::string item = mdocItem(option, operand) + mdocSentences(option.about);
    if (!option.range.empty())
        item += mdocSentences("From " + option.range);
    if (!option.needs.empty())
        item += mdocSentences("Needs " + joined(option.needs));
    if (!option.excludes.empty())
        item += mdocSentences("Not together with " + joined(option.excludes));
    return item;
}

std::string optionList(const CommandWords &command)
{
    std::string list = ".Bl -tag -width Ds\n";
    for (const OptionWords &operand : command.operands)
        list += itemOf(operand, true);
    for (const OptionWords &option : command.options)
        list += itemOf(option, false);
    return list + ".El\n";
}

std::string commandList(const CommandWords &program)
{
    std::string list = ".Bl -tag -width Ds\n";
    for (const CommandWords &command : program.commands)
        list += ".It Cm " + command.name + "\n" + mdocSentences(command.about) + "See\n.Xr " + program.name + "-" +
                command.name + " 1 .\n";
    return list + ".El\n";
}

std::string synopsis(const CommandWords &program, const CommandWords *command)
{
    const CommandWords &used = command ? *command : program;
    std::string lines = ".Nm " + program.name + (command ? " Cm " + command->name : "") + "\n";
    for (const OptionWords &option : used.options)
        if (option.required)
            lines += "." + mdocUse(option) + "\n";
    lines += ".Op Ar option ...\n";
    for (const OptionWords &operand : used.operands)
        lines += (operand.required ? ".Ar " : ".Op Ar ") + mdocWords(operand.names.front()) + "\n";
    if (!used.commands.empty())
        lines += ".Nm " + program.name + "\n.Ar command\n.Op Ar option ...\n";
    return lines;
}

// November 22, 2026, from 2026-11-22.
std::string dateInWords(const std::string &date)
{
    static const std::array<const char *, 12> months = {"January",   "February", "March",    "April",
                                                        "May",       "June",     "July",     "August",
                                                        "September", "October",  "November", "December"};
    static const std::regex form(R"((\d{4})-(0[1-9]|1[0-2])-0?(\d+))");
    std::smatch part;
    if (!std::regex_match(date, part, form))
        throw io::Refusal("\"" + date + "\" is not a date such as 2026-11-22");
    return months[std::stoul(part[2]) - 1] + (" " + part[3].str()) + ", " + part[1].str();
}

std::string headOf(const CommandWords &program, const CommandWords *command, const Manual &manual)
{
    const std::string name = program.name + (command ? "-" + command->name : "");
    std::string title;
    for (const char c : name)
        title += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return ".Dd " + dateInWords(manual.date) + "\n.Dt " + title + " 1\n.Os " + program.name + " " +
           manual.version + "\n.Sh NAME\n.Nm " + name + "\n.Nd " +
           mdocWords(withSmallInitial(command ? command->about : program.about)) + "\n.Sh SYNOPSIS\n" +
           synopsis(program, command);
}

class Pages {
public:
    Pages(const CommandWords &program, const Manual &manual) : program_(program), manual_(manual) {}

    void write(const CommandWords *command) const
    {
        const std::string name = command ? "-" + command->name : "";
        io::writeFile(manual_.pageFolder / (program_.name + name + ".1"), page(command));
    }

private:
    std::string page(const CommandWords *command) const
    {
        const CommandWords &words = command ? *command : program_;
        const std::filesystem::path text = manual_.textFolder / (words.name + ".mdoc");
        return headOf(program_, command, manual_) +
               filledIn(exists(text) ? io::contentsOf(text) : std::string(kLeastText), words);
    }

    std::string filledIn(const std::string &text, const CommandWords &words) const
    {
        std::istringstream lines(text);
        std::string filled;
        for (std::string line; std::getline(lines, line);)
            if (line == ".\\\" options")
                filled += optionList(words);
            else if (line == ".\\\" commands")
                filled += commandList(words);
            else if (line.starts_with(kInclude))
                filled += io::contentsOf(manual_.textFolder / (line.substr(kInclude.size()) + ".mdoc"));
            else
                filled += line + "\n";
        return filled;
    }

    const CommandWords &program_;
    const Manual &manual_;
};

}  // namespace

void writeManual(const CommandWords &program, const Manual &manual)
{
    std::filesystem::create_directories(manual.pageFolder);
    const Pages pages(program, manual);
    pages.write(nullptr);
    for (const CommandWords &command : program.commands)
        if (!command.isAnotherProgram)
            pages.write(&command);
}

void writePage(const CommandWords &program, const CommandWords &command, const Manual &manual)
{
    std::filesystem::create_directories(manual.pageFolder);
    Pages(program, manual).write(&command);
}

}  // namespace riders::describing
