// The command line's own words, for manual pages and shells.
#include <set>

#include <CLI/CLI.hpp>

#include "commands/commands.h"
#include "describing/command_words.h"
#include "describing/completion.h"
#include "describing/manual_page.h"
#include "describing/mdoc.h"
#include "support/toolbox_test.h"

namespace {

namespace describing = riders::describing;
using describing::CommandWords;
using describing::OptionWords;

// A program with a bit of everything.
class Describing : public ::testing::Test {
protected:
    Describing()
    {
        app_.add_option("file", text_, "What to open")->type_name("FILE");
        CLI::App *cut = app_.add_subcommand("cut", "Cut paper; none is left");
        CLI::Option *deep = cut->add_option("-d,--deep", number_, "How deep. Not more")->check(CLI::Range(1, 9));
        deep->type_name("MM")->required();
        cut->add_option("--side", text_, "Which side")->check(CLI::IsMember({"left", "right"}))->needs(deep);
        cut->add_flag("--quick", quick_, "Be quick");
        cut->add_option("--secret", text_, "Not for all")->group("");
        cut->add_option("job", text_, "The job")->type_name("JOB");
        app_.add_subcommand("hidden", "Not for all")->group("");
        words_ = describing::wordsOf(app_);
    }

    std::string offered(const std::vector<std::string> &typed) const
    {
        return completionLines(describing::complete(words_, typed, {}));
    }

    CLI::App app_{"Paper", "paper"};
    std::string text_;
    int number_ = 0;
    bool quick_ = false;
    CommandWords words_;
};

// Values that only the user knows: no list has them.
const std::set<std::string> kOwn = {
    "N", "N|NxM", "TEXT", "LIST", "SIZE", "NAME", "NAME=VALUE", "WxHxDEPTH[@SCALE][+...]", "C", "BYTES"};

void expectKnown(const OptionWords &option, const std::string &command)
{
    const describing::ValueKind kind = describing::valueKindOf(option);
    EXPECT_TRUE(option.value.empty() || !option.choices.empty() || kOwn.contains(option.value) ||
                !kind.of.empty() || kind.files || kind.folders)
        << command << " " << option.names.back() << " " << option.value
        << ": host/describing/value_kinds.cpp is to say what can stand for it";
}

}  // namespace

TEST_F(Describing, TakesOptionsApart)
{
    ASSERT_EQ(words_.commands.size(), 1u) << "hidden ones are left out";
    const CommandWords &cut = words_.commands[0];
    ASSERT_EQ(cut.options.size(), 4u);  // with --help
    const OptionWords &deep = cut.options[1], &side = cut.options[2], &quick = cut.options[3];
    EXPECT_EQ(deep.names, (std::vector<std::string>{"-d", "--deep"}));
    EXPECT_EQ(deep.value, "MM");
    EXPECT_EQ(deep.range, "1 to 9");
    EXPECT_TRUE(deep.required);
    EXPECT_EQ(side.choices, (std::vector<std::string>{"left", "right"}));
    EXPECT_EQ(side.needs, (std::vector<std::string>{"--deep"}));
    EXPECT_EQ(quick.value, "");
    ASSERT_EQ(cut.operands.size(), 1u);
    EXPECT_EQ(cut.operands[0].names, (std::vector<std::string>{"job"}));
}

TEST_F(Describing, OffersWhatCanComeNext)
{
    EXPECT_EQ(offered({"c"}), "cut\tCut paper\n:files ps eps pdf riders\n");
    EXPECT_EQ(offered({"cut", "--"}), "--help\tPrint this help message and exit\n--deep\tHow deep\n"
                                      "--side\tWhich side\n--quick\tBe quick\n:none\n");
    EXPECT_EQ(offered({"cut", "--quick", "-d", "3", "--q"}), ":none\n") << "it is there already";
    EXPECT_EQ(offered({"cut", "--side", ""}), "left\t\nright\t\n:none\n");
    EXPECT_EQ(offered({"cut", "--side=R"}), "--side=right\t\n:none\n");
    EXPECT_EQ(offered({"cut", "--deep", ""}), ":none\n");
    EXPECT_EQ(offered({"cut", "--deep=3", ""}), ":files ps eps pdf\n");
    EXPECT_EQ(offered({"cut", "--nonsense", "--", "--s"}), ":files ps eps pdf\n");
    EXPECT_EQ(offered({"cut", "job.ps", ""}), ":none\n") << "there is one job";
    EXPECT_EQ(offered({}), "cut\tCut paper\n:files ps eps pdf riders\n");
}

TEST_F(Describing, WritesPagesAlsoWhereNothingMoreIsSaid)
{
    TemporaryFolder folder;
    writeFile(folder / "paper.mdoc", ".Sh DESCRIPTION\nLong.\n.\\\" commands\n.\\\" include end\n");
    writeFile(folder / "end.mdoc", ".Sh SEE ALSO\n.Xr gs 1\n");
    describing::writeManual(words_, {"2.0", "2026-02-03", folder.path(), folder / "pages"});
    EXPECT_EQ(contentsOf(folder / "pages/paper.1"),
              ".Dd February 3, 2026\n.Dt PAPER 1\n.Os paper 2.0\n.Sh NAME\n.Nm paper\n.Nd paper\n.Sh SYNOPSIS\n"
              ".Nm paper\n.Op Ar option ...\n.Op Ar file\n.Nm paper\n.Ar command\n.Op Ar option ...\n"
              ".Sh DESCRIPTION\nLong.\n.Bl -tag -width Ds\n.It Cm cut\nCut paper; none is left.\nSee\n"
              ".Xr paper-cut 1 .\n.El\n.Sh SEE ALSO\n.Xr gs 1\n");
    const std::string page = contentsOf(folder / "pages/paper-cut.1");
    EXPECT_NE(page.find(".Nm paper Cm cut\n.Fl d Ar MM\n"), std::string::npos) << page;
    EXPECT_NE(page.find(".It Fl d , Fl \\-deep Ar MM\nHow deep.\nNot more.\nFrom 1 to 9.\n"), std::string::npos)
        << page;
    EXPECT_NE(page.find(".It Fl \\-side Cm left | right\nWhich side.\nNeeds \\-\\-deep.\n"), std::string::npos)
        << page;
    EXPECT_EQ(page.find("secret"), std::string::npos);
}

TEST_F(Describing, RefusesADateThatIsNone)
{
    TemporaryFolder folder;
    EXPECT_ANY_THROW(describing::writeManual(words_, {"2.0", "3.2.2026", folder.path(), folder.path()}));
}

TEST(DescribingWords, MeanNothingToMdoc)
{
    EXPECT_EQ(describing::mdocWords(".Nm \\n, -o, --all (-x) a-b"), "\\&.Nm \\en, \\-o, \\-\\-all (\\-x) a-b");
    EXPECT_EQ(describing::mdocSentences("One. Two, as in 1.5 and a. b"), "One.\nTwo, as in 1.5 and a. b.\n");
}

TEST(DescribingTheProgram, KnowsWhatEveryValueCanBe)
{
    CLI::App app("", "riders");
    const riders::commands::Commands commands(app);
    const CommandWords program = describing::wordsOf(app);
    EXPECT_GE(program.commands.size(), 9u);
    for (const CommandWords &command : program.commands) {
        for (const OptionWords &option : command.options)
            expectKnown(option, command.name);
        for (const OptionWords &operand : command.operands)
            expectKnown(operand, command.name);
    }
}
