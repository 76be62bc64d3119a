// What the shells themselves offer after a part of a command line.
#include <map>
#include <set>
#include <sstream>

#include "installed/installation.h"

namespace {

using Words = std::set<std::string>;

// What is typed after "riders ": a shell takes long to start, so it is asked all of it at once.
const std::vector<std::string> kTyped = {
    "s",
    "make --fr",
    "make --frequency 60 --",
    "make --spot co",
    "make --spot=Cos",
    "film --screens two",
    "screens off",
    "film --format p",
    "proof jo",
    "proof --riders fi",
    "make --spot mi",
    "play let",
    "make --annotation ",
    "make --plate Cy",
    "make --frequency 13",
    "make --annotation x --font Helvetica-B",
    "printer --sandbox n",
    "printer --films fi",
};

// What a shell offers after each of them.
using Offers = std::map<std::string, Words>;

// From lines in which "== typed" begins what is offered after that.
Offers offersFrom(const CommandResult &result)
{
    EXPECT_EQ(result.err, "");
    std::istringstream lines(result.out);
    Offers offers;
    Words *current = nullptr;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("== "))
            current = &offers[line.substr(3)];
        else if (current != nullptr)
            current->insert(line.substr(0, line.find('\t')));  // fish explains after a tab
    return offers;
}

// Files to be offered, a set of the user's own, and the shell's program that asks.
Offers ask(std::vector<std::string> command)
{
    const std::filesystem::path &home = installed().home();
    for (const char *file : {"job.ps", "job.pdf", "film.riders", "mine.spot", "letter.txt", "job.txt"})
        writeFile(home / file, "");
    std::filesystem::create_directories(home / ".config/riders/screens");
    writeFile(home / ".config/riders/screens/twotone.toml",
              "name = \"Two\"\nfrequency = 60\n[plates]\nBlack = { angle = 45 }\n");
    command.insert(command.begin(), {"timeout", "60"});
    command.insert(command.end(), kTyped.begin(), kTyped.end());
    return offersFrom(installed().run(command));
}

std::string asker(const std::string &shell)
{
    return RIDERS_SOURCE_DIR "/tests/installed/offer." + shell;
}

const Offers &bash()
{
    static const Offers offers =
        ask({"bash", asker("bash"), installed() / "share/bash-completion/completions/riders"});
    return offers;
}

const Offers &zsh()
{
    static const Offers offers = ask({"zsh", "-f", asker("zsh"), installed() / "share/zsh/site-functions"});
    return offers;
}

const Offers &fish()
{
    static const Offers offers =
        ask({"fish", "--no-config", asker("fish"), installed() / "share/fish/vendor_completions.d/riders.fish"});
    return offers;
}

void expectInEach(const std::string &typed, const Words &expected)
{
    EXPECT_EQ(bash().at(typed), expected) << "bash: " << typed;
    EXPECT_EQ(zsh().at(typed), expected) << "zsh: " << typed;
    EXPECT_EQ(fish().at(typed), expected) << "fish: " << typed;
}

}  // namespace

TEST(Completion, OffersCommands)
{
    for (const Offers &offers : {bash(), zsh(), fish()}) {
        for (const char *command : {"strip", "screens", "shapes"})
            EXPECT_TRUE(offers.at("s").contains(command)) << command;
        EXPECT_FALSE(offers.at("s").contains("make"));
    }
}

TEST(Completion, OffersTheOptionsOfACommandThatAreNotUsedYet)
{
    expectInEach("make --fr", {"--frequency"});
    for (const Offers &offers : {bash(), zsh(), fish()}) {
        const Words &rest = offers.at("make --frequency 60 --");
        for (const char *option : {"--angle", "--spot", "--plate", "--output", "--help"})
            EXPECT_TRUE(rest.contains(option)) << option;
        for (const char *option : {"--frequency", "--printer", "--version"})
            EXPECT_FALSE(rest.contains(option)) << option;
    }
}

TEST(Completion, OffersShapesSetsAndWordsToChooseFrom)
{
    EXPECT_EQ(bash().at("make --spot co"), (Words{"CosineDot"}));
    EXPECT_EQ(fish().at("make --spot co"), (Words{"CosineDot"}));
    expectInEach("film --screens two", {"twotone"});
    expectInEach("screens off", {"offset"});
    expectInEach("film --format p", {"pdf", "ps", "pwg"});
    expectInEach("make --plate Cy", {"Cyan:"});
    expectInEach("make --frequency 13", {"133"});
    expectInEach("make --annotation x --font Helvetica-B", {"Helvetica-Bold", "Helvetica-BoldOblique"});
}

TEST(Completion, OffersFilesOfTheKindThatFitsOrElseAll)
{
    expectInEach("proof jo", {"job.pdf", "job.ps"});
    expectInEach("proof --riders fi", {"film.riders"});
    expectInEach("make --spot mi", {"mine.spot"});
    expectInEach("play let", {"letter.txt"});
}

// The printer is a program of its own, which is asked.
TEST(Completion, OffersWhatTheProgramOfACommandKnows)
{
    if (!std::filesystem::exists(installed() / "bin/riders-printer"))
        GTEST_SKIP() << "the printer is not built here";
    expectInEach("printer --sandbox n", {"never"});
    for (const char *name : {"printer", "riders-printer"}) {
        const CommandResult result = name == std::string("printer")
                                         ? installed().riders({"--complete-line", "printer", "--que"})
                                         : installed().run({name, "--complete-line", "--que"});
        EXPECT_TRUE(result.out.starts_with("--queue\tA queue and its choices")) << result.out;
        EXPECT_NE(result.out.find("\n--queues\t"), std::string::npos) << result.out;
    }
}

TEST(Completion, OffersNothingThatOnlyTheUserKnows)
{
    expectInEach("make --annotation ", {});
}

TEST(Completion, GoesOnAfterAnEqualsSign)
{
    EXPECT_EQ(bash().at("make --spot=Cos"), (Words{"CosineDot"})) << "what replaces the part after the sign";
    EXPECT_EQ(zsh().at("make --spot=Cos"), (Words{"--spot=CosineDot"}));
    EXPECT_EQ(fish().at("make --spot=Cos"), (Words{"--spot=CosineDot"}));
}
