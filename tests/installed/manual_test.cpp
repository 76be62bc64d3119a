// The manual pages that are installed.
#include <algorithm>
#include <regex>
#include <set>

#include "installed/installation.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> pages()
{
    std::vector<fs::path> found;
    for (const auto &entry : fs::directory_iterator(installed() / "share/man/man1"))
        found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

// The commands, and the options of one of them, as the help lists them.
std::set<std::string> found(const std::string &text, const std::regex &form)
{
    std::set<std::string> all;
    for (std::sregex_iterator at(text.begin(), text.end(), form), end; at != end; ++at)
        all.insert((*at)[1]);
    return all;
}

std::set<std::string> commands()
{
    const std::string help = installed().riders({"--help"}).out;
    static const std::regex form(R"(\n  ([a-z]+) )");
    return found(help.substr(help.find("Subcommands:")), form);
}

// It is built where its library is, and has its own page.
bool hasPrinter()
{
    return fs::exists(installed() / "bin/riders-printer");
}

std::string shown(const std::string &page)
{
    return runProgram({"mandoc", "-Tutf8", (installed() / "share/man/man1" / page).string()}).out;
}

// As a terminal shows them, without overprinting.
std::string plainly(const std::string &text)
{
    static const std::regex overprinted("[^\b]\b");
    return std::regex_replace(text, overprinted, "");
}

}  // namespace

TEST(Manual, HasAPageForEachCommandAndNoOther)
{
    std::set<std::string> expected = {"riders.1"}, there;
    for (const std::string &command : commands())
        expected.insert("riders-" + command + ".1");
    if (!hasPrinter())
        expected.erase("riders-printer.1");
    for (const fs::path &page : pages())
        there.insert(page.filename());
    EXPECT_GE(expected.size(), 10u);
    EXPECT_EQ(there, expected);
}

TEST(Manual, SaysMoreOfEachCommandThanItsOptions)
{
    for (const std::string &command : commands())
        EXPECT_TRUE(fs::exists(fs::path(RIDERS_SOURCE_DIR) / "install/manual" / (command + ".mdoc"))) << command;
}

TEST(Manual, HasNothingThatMandocWarnsOf)
{
    for (const fs::path &page : pages()) {
        const CommandResult result = runProgram({"mandoc", "-Tlint", "-Wwarning", page.string()});
        EXPECT_EQ(result.out + result.err, "");
        EXPECT_EQ(result.status, 0) << page;
    }
}

TEST(Manual, ListsTheOptionsThatTheHelpLists)
{
    static const std::regex option(R"(\n *(?:-., ?)?(--[a-z-]+))");
    std::set<std::string> described = commands();
    if (!hasPrinter())
        described.erase("printer");
    for (const std::string &command : described) {
        const std::string page = plainly(shown("riders-" + command + ".1"));
        const std::set<std::string> options = found(installed().riders({command, "--help"}).out, option);
        EXPECT_FALSE(options.empty());
        for (const std::string &name : options)
            EXPECT_NE(page.find(name), std::string::npos) << command << " " << name;
    }
}

TEST(Manual, UsesTheWordsOfTheHelp)
{
    std::string page = plainly(shown("riders-make.1"));
    page = std::regex_replace(page, std::regex("\\s+"), " ");
    EXPECT_NE(page.find("Screen frequency, lines per inch."), std::string::npos) << page;
    EXPECT_NE(page.find("Needs --annotation."), std::string::npos) << page;
}
