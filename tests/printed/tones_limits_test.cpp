// Streaming the pages of a job ends, whatever the job does, and takes what is the job's page and nothing else.
#include "host/proof_support.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "printed/tones_support.h"

namespace {

namespace plates = riders::plates;

class TonesLimitsTest : public TonesTest {
protected:
    // Streams a job that was surveyed as another, of three small pages; returns the pages that came whole.
    std::vector<TonesOfPage> streamed(const std::string &job)
    {
        writeFile(folder / "good.ps", smallJob({kGood, kGood, kGood}));
        writeFile(folder / "job.ps", job);
        std::vector<TonesOfPage> pages = TonesTest::streamed(folder / "job.ps", folder / "good.ps", asked);
        pages.erase(
            std::remove_if(pages.begin(), pages.end(), [](const TonesOfPage &page) { return !page.whole; }),
            pages.end());
        return pages;
    }
    std::string from(int page) const
    {
        return (folder / "job.ps").string() + ": page " + std::to_string(page) + ": ";
    }

    const std::string kGood = smallPage("0 1 0 0 setcmykcolor 12 12 120 120 rectfill");
    TonesAsked asked;
};

TEST_F(TonesLimitsTest, WhatAJobWritesIsNotInItsPages)
{
    const std::vector<TonesOfPage> good = streamed(smallJob({kGood, kGood, kGood}));
    const std::vector<TonesOfPage> pages = streamed(
        smallJob({"(%stdout) (w) file 3000 {dup <00ff8b50530001> writestring} repeat flushfile " + kGood,
                  "9 {(anything) print flush} repeat (%stderr) (w) file (more) writestring " + kGood, kGood}));
    EXPECT_EQ(refused, "");
    expectAlike(pages, good);
}

TEST_F(TonesLimitsTest, APageOfAnotherSizeThanSurveyedIsRefused)
{
    for (const char *size : {"14400 14400", "144 150", "100 144"}) {
        EXPECT_EQ(streamed(smallJob({kGood, "<</PageSize [" + std::string(size) + "]>> setpagedevice showpage\n"}))
                      .size(),
                  1u);
        EXPECT_EQ(refused, from(2) + "has another size each time it is rendered") << size;
    }
}

TEST_F(TonesLimitsTest, OtherPagesOrInksThanSurveyedAreRefused)
{
    EXPECT_EQ(streamed(smallJob({kGood, kGood})).size(), 2u);
    EXPECT_EQ(refused, from(3) + "the interpreter has not written all of it");
    // More are not asked for.
    EXPECT_EQ(streamed(smallJob({kGood, kGood, kGood, kGood})).size(), 3u);
    EXPECT_EQ(refused, "");
    writeFile(folder / "gold.ps",
              smallJob({smallPage("[/Separation /Gold /DeviceGray {pop 0}] setcolorspace 1 setcolor "
                                  "9 9 9 9 rectfill")}));
    writeFile(folder / "job.ps", smallJob({kGood}));
    EXPECT_TRUE(TonesTest::streamed(folder / "job.ps", folder / "gold.ps", asked).empty());
    EXPECT_EQ(refused, from(1) + "has other plates each time it is rendered");
}

// It may, since the interpreter lets a job write what its device writes.
TEST_F(TonesLimitsTest, AJobThatWritesThePagesFileItselfIsRefused)
{
    asked.limits.secondsAPage = 2;
    for (const char *file : {"1.psd", "2.psd"}) {
        const std::string written =
            "(" + std::string(file) +
            ") (w) file dup 9999 {dup (not what it should be) writestring} repeat closefile ";
        streamed(smallJob({written + kGood + kGood + kGood}));
        // The interpreter may have put its own in the place before it was looked at.
        EXPECT_TRUE(refused.empty() || refused.find(file) != std::string::npos) << refused;
        streamed(smallJob({written + "{} loop\n"}));
        EXPECT_NE(refused, "");
    }
    streamed(smallJob({kGood, "(1.psd) deletefile (2.psd) deletefile " + kGood, kGood}));
    EXPECT_NE(refused, "");
    streamed(smallJob({"<</OutputFile (mine)>> setpagedevice " + kGood}));
    EXPECT_NE(refused, "");
    EXPECT_FALSE(std::filesystem::exists("mine"));
}

TEST_F(TonesLimitsTest, AnEndlessPageIsEnded)
{
    asked.limits.secondsAPage = 1;
    EXPECT_EQ(streamed(smallJob({kGood, "(%stdout) (w) file closefile {} loop\n"})).size(), 1u);
    EXPECT_TRUE(refused.ends_with("the interpreter took more than 1 seconds and was ended")) << refused;
}

// What a reader takes its time for is not the interpreter's.
class SlowReader : public KeepingReader {
public:
    void row(std::size_t y, const std::vector<const std::uint8_t *> &tones) override
    {
        if (y == 100)
            sleep(3);
        KeepingReader::row(y, tones);
    }
};

class FailingReader : public KeepingReader {
public:
    void endPage() override { throw riders::io::Refusal("no room"); }
};

TEST_F(TonesLimitsTest, AReaderMayBeSlowButNotTheInterpreter)
{
    asked.limits.secondsAPage = 3;
    asked.limits.slowPages = 1;
    writeFile(folder / "job.ps", smallJob({kGood}));
    riders::io::Interruption interruption;
    const SurveyedJob &made = surveyed(folder / "job.ps", asked);
    SlowReader reader;
    plates::streamTones(runOf(made.job, made.survey, asked), {}, reader);
    EXPECT_EQ(reader.pages.size(), 1u);
    FailingReader failing;
    EXPECT_THROW(plates::streamTones(runOf(made.job, made.survey, asked), {}, failing), riders::io::Refusal);
    EXPECT_TRUE(std::filesystem::is_empty(work / "tones"));
}

}  // namespace
