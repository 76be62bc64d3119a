// `riders show`: what a riders file chooses, and which riders files a job has, as a user asks.
#include <random>

#include "reading/choices_in.h"
#include "reading/written_in.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

namespace reading = riders::reading;

class Show : public ::testing::Test {
protected:
    void SetUp() override { writeFile(folder / "mine.spot", "%!KT1_Spot\rabs exch abs add 1 exch sub % mine\r"); }
    CommandResult riders(std::vector<std::string> words, const std::string &input = {})
    {
        return runRiders(words, input, folder.path());
    }
    void make(std::vector<std::string> options)
    {
        options.insert(options.begin(), {"make", "-o", "film"});
        const CommandResult result = riders(options);
        ASSERT_EQ(result.status, 0) << result.err;
    }
    std::string show(const std::string &file)
    {
        const CommandResult result = riders({"show", file});
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }
    bool isExact(const std::string &file)
    {
        return riders({"show", file, "--json"}).out.find("\"exact\": true") != std::string::npos;
    }
    std::string film() const { return contentsOf(folder / "film"); }

    TemporaryFolder folder;
};

constexpr const char *kJob = "%!PS\n%%EndComments\nshowpage\n";

std::string replaced(std::string text, const std::string &from, const std::string &to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return at == text.npos ? text : text.replace(at, from.size(), to);
}

}  // namespace

TEST_F(Show, SaysEverythingThatCanBeChosen)
{
    make({"--frequency", "62.5", "--angle", "22.5", "--spot", "ellipse", "--plate", "Cyan:133@15,Round", "--plate",
          "Gold:@75,./mine.spot", "--flatness", "1.5", "--annotation", "Größe (1", "--font", "Courier-Bold",
          "--size", "14", "--error-handler"});
    EXPECT_EQ(show("film"), "film: a riders file\n"
                            "  Cyan 133 lpi at 15°, Round\n"
                            "  Gold at 75°, mine.spot (a spot function file)\n"
                            "  the rest 62.5 lpi at 22.5°, Ellipse\n"
                            "  flatness 1.5\n"
                            "  annotation \"Größe (1\" in Courier-Bold, 14 points\n"
                            "  error handler\n");
    EXPECT_TRUE(isExact("film"));
    make({"--plate", "Gold:60"});
    EXPECT_EQ(show("film"), "film: a riders file\n  Gold 60 lpi\n");
    make({"--spot", "cosinedot"});
    EXPECT_EQ(show("film"), "film: a riders file\n  all plates CosineDot\n");
}

TEST_F(Show, SpeaksJson)
{
    make({"--frequency", "62.5", "--spot", "./mine.spot"});
    EXPECT_EQ(
        riders({"show", "film", "--json"}).out,
        "{\"file\": \"film\", \"kind\": \"riders\", \"riders\": [{\"plates\": [{\"plate\": \"*\", \"frequency\": "
        "62.5, \"shape\": \"mine.spot\", \"shapeKind\": \"own\", \"spotFunction\": \"abs exch abs add 1 exch sub "
        "% mine\\u000d\"}], \"flatness\": null, \"annotation\": null, \"errorHandler\": false, \"whole\": true, "
        "\"exact\": true, \"notes\": []}]}\n");
}

// Every choice made or not, with texts that look like pieces.
TEST_F(Show, IsExactOnWhateverMakeWrites)
{
    const std::vector<std::vector<std::string>> choices = {
        {"--frequency", "87.25"},
        {"--angle", "12.5"},
        {"--spot", "./mine.spot"},
        {"--flatness", "2"},
        {"--annotation", "/riderFrequency 7 def %end-of-dot-shape% 1 setflat"},
        {"--error-handler"},
        {"--plate", "Gold:,./trap"}};
    writeFile(folder / "trap", "%!KT1_Spot\r/riderAngle 3 def\n<43> 0 1 riderOnPlate\n%Zu3_RidersSetup\npop");
    std::mt19937 random(1);
    for (int tried = 0; tried < 12; ++tried) {
        std::vector<std::string> options;
        const unsigned chosen = tried == 0 ? 127 : 1 + random() % 127;
        for (std::size_t i = 0; i < choices.size(); ++i)
            if (chosen >> i & 1)
                options.insert(options.end(), choices[i].begin(), choices[i].end());
        make(options);
        const reading::Choices read = reading::choicesIn(film());
        EXPECT_TRUE(read.exact && read.whole) << chosen;
        EXPECT_EQ(reading::ridersOf(reading::writtenIn(film())), film()) << chosen;
        const bool rest = (chosen & 7) != 0;
        EXPECT_EQ(read.screens.size(), std::size_t(rest) + (chosen >> 6)) << chosen;
        if (rest) {
            EXPECT_EQ(read.screens.back().frequency.value_or(0), chosen & 1 ? 87.25 : 0) << chosen;
            EXPECT_EQ(read.screens.back().angle.value_or(0), chosen & 2 ? 12.5 : 0) << chosen;
        }
        EXPECT_EQ(read.flatness.value_or(0), chosen & 8 ? 2 : 0) << chosen;
        EXPECT_EQ(read.annotation.has_value(), (chosen & 16) != 0) << chosen;
        EXPECT_EQ(read.errorHandler, (chosen & 32) != 0) << chosen;
    }
}

TEST_F(Show, WhatThePluginWritesIsExactButForTheNameOfAShape)
{
    writeFile(folder / "film.play", "start\ncommand 0\nchoose 4 3\nchoose 6 4\npress 1\nsave film\n");
    ASSERT_EQ(riders({"play", "film.play", "--preferences", "kept"}).status, 0);
    EXPECT_TRUE(isExact("film"));
    EXPECT_NE(show("film").find(", Ellipse\n"), std::string::npos) << show("film");
    make({"--spot", "./mine.spot"});
    const std::string named = film();
    const std::size_t name = named.find("%Zu3_RidersShape ");
    ASSERT_NE(name, named.npos);
    writeFile(folder / "film", replaced(named, named.substr(name, named.find('\n', name) + 1 - name), ""));
    EXPECT_TRUE(isExact("film"));
    EXPECT_EQ(show("film"), "film: a riders file\n  all plates a dot shape of its own\n");
}

TEST_F(Show, AnEditedFileIsReadAsFarAsItCanBe)
{
    make({"--frequency", "62.5", "--angle", "22.5", "--flatness", "2"});
    writeFile(folder / "film", replaced(film(), "/riderFrequency 62.5 def", "/riderFrequency 60 def % changed"));
    EXPECT_EQ(show("film"),
              "film: a riders file\n  all plates at 22.5°\n  flatness 2\n  Not as this version of riders "
              "writes it: there may be more in it than could be read.\n");
    EXPECT_FALSE(isExact("film"));
    make({"--frequency", "62.5", "--angle", "22.5"});
    writeFile(folder / "film", replaced(film(), "/riderAngle 22.5 def", "/riderAngle 22,5x def"));
    EXPECT_NE(show("film").find("  its angle is no number: \"22,5x\"\n"), std::string::npos);
    EXPECT_FALSE(isExact("film"));
}

TEST_F(Show, OneThatWasCutOffIsSaidToBe)
{
    make({"--frequency", "62.5", "--error-handler"});
    const std::string whole = film();
    writeFile(folder / "film", whole.substr(0, whole.find("/faultInfo ")));
    const CommandResult cut = riders({"show", "film"});
    EXPECT_EQ(cut.status, 1);
    EXPECT_EQ(cut.out, "film: a riders file\n  all plates 62.5 lpi\n");
    EXPECT_EQ(cut.err, "riders show: film: is cut off: what it chose after that is lost; make it again\n");
    for (std::size_t length = 0; length + 1 < whole.size(); length += 149) {
        const reading::Choices read = reading::choicesIn(whole.substr(0, length));
        EXPECT_FALSE(read.exact || read.whole) << length;
        EXPECT_TRUE(read.screens.empty() || read.screens[0].frequency == 62.5) << length;
    }
}

TEST_F(Show, NamesAllRidersFilesOfAJobAndWhere)
{
    make({"--frequency", "62.5"});
    writeFile(folder / "job.ps", kJob);
    EXPECT_EQ(show("job.ps"), "job.ps: a job without a riders file\n");
    ASSERT_EQ(riders({"apply", "film", "job.ps", "-o", "one.ps"}).status, 0);
    EXPECT_EQ(show("one.ps"), "one.ps: a riders file in line 3\n  all plates 62.5 lpi\n");
    const std::string one = contentsOf(folder / "one.ps");
    writeFile(folder / "two.ps", "%!PS\n%%EndComments\n%%BeginDocument: logo.eps\n" + one + "%%EndDocument\n" +
                                     film() + "%%BeginData: " + std::to_string(one.size()) + " Binary Bytes\n" +
                                     one + "\n%%EndData\nshowpage\n");
    make({"--angle", "30"});
    ASSERT_EQ(riders({"apply", "film", "two.ps", "-o", "two.ps"}).status, 0);
    const std::string said = show("two.ps");
    EXPECT_TRUE(said.starts_with("two.ps: a riders file in line 3\n  all plates at 30°\n")) << said;
    const auto lineOf = [&](const std::string &text, std::size_t after) {
        const std::string job = contentsOf(folder / "two.ps");
        return std::to_string(
            1 + std::count(job.begin(), job.begin() + long(job.find(text, job.find(text) + after)), '\n'));
    };
    EXPECT_NE(said.find("two.ps: a riders file in line " + lineOf("%RidersBegin", 1) +
                        ", in the embedded document logo.eps, which riders strip leaves\n  all plates 62.5 lpi\n"),
              said.npos)
        << said;
    EXPECT_NE(said.find(", without the lines around it that riders strip needs\n  all plates 62.5 lpi\n"),
              said.npos)
        << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 6) << "nor those in data: " << said;
    const std::string json = riders({"show", "one.ps", "--json"}).out;
    EXPECT_NE(json.find("\"kind\": \"job\", \"riders\": [{\"line\": 3, \"offset\": 19, \"bytes\": "), json.npos)
        << json;
    EXPECT_NE(json.find("\"document\": null, \"marked\": true, \"damaged\": false, \"canBeStripped\": true, "),
              json.npos);
}

TEST_F(Show, ADamagedOneInAJobIsSaidToBe)
{
    make({"--frequency", "62.5"});
    writeFile(folder / "job.ps", kJob);
    ASSERT_EQ(riders({"apply", "film", "job.ps", "-o", "one.ps"}).status, 0);
    writeFile(folder / "one.ps", replaced(contentsOf(folder / "one.ps"), "62.5", "625"));
    const CommandResult damaged = riders({"show", "one.ps"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(
        damaged.out.starts_with("one.ps: a riders file in line 3, damaged: riders strip takes nothing out\n  all "
                                "plates 625 lpi\n"))
        << damaged.out;
    EXPECT_EQ(damaged.err,
              "riders show: one.ps: the riders file in line 3 is damaged: it was changed after it was "
              "added\n");
}

TEST_F(Show, ReadsStandardInput)
{
    make({"--angle", "30"});
    EXPECT_EQ(riders({"show", "-"}, film()).out, "standard input: a riders file\n  all plates at 30°\n");
    std::string job = kJob;
    for (int i = 0; i < 200000; ++i)
        job += "0 0 moveto\r\n";
    EXPECT_EQ(riders({"show", "-"}, job + film()).out,
              "standard input: a riders file in line 200004, without the lines "
              "around it that riders strip needs\n  all plates at 30°\n");
}

TEST_F(Show, OtherFilesAreRefused)
{
    writeFile(folder / "a.pdf", "%PDF-1.4\n");
    EXPECT_EQ(riders({"show", "a.pdf"}).err, "riders show: a.pdf: is a PDF, in which there are no riders files\n");
    writeFile(folder / "text", "hello");
    EXPECT_EQ(riders({"show", "text"}).err, "riders show: text: is neither a riders file nor a PostScript job\n");
    EXPECT_EQ(
        riders({"show", "mine.spot"}).err,
        "riders show: mine.spot: is neither a riders file nor a PostScript job; riders shapes shows what the dots "
        "of a spot function file are like\n");
    EXPECT_EQ(riders({"show", "text"}).status, 1);
    EXPECT_EQ(riders({"show"}).status, 2);
}
