// Where a fragment belongs in a job, from the job's bytes.
#include "apply/job_structure.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "io/refusal.h"

using riders::apply::findFragment;
using riders::apply::findPlace;
using riders::apply::JobHead;
using riders::apply::kJobHeadLimit;
using riders::apply::Place;
using riders::io::Refusal;

namespace {

// What stands before the place, for a job given in one string with LF line ends.
std::string before(const std::string &job)
{
    const Place place = findPlace({job, true, "job"});
    EXPECT_FALSE(place.needsLineEnd);
    return job.substr(0, place.offset);
}

std::string refusalOf(const std::string &job, bool whole = true)
{
    try {
        findPlace({job, whole, "job"});
    } catch (const Refusal &refusal) {
        return refusal.message;
    }
    return "accepted";
}

const std::string kHead = "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n";
const std::string kProlog = "%%BeginProlog\n/x 1 def\n%%EndProlog\n";
const std::string kPage = "%%Page: 1 1\nshowpage\n%%Trailer\n%%EOF\n";

TEST(JobStructure, EndOfTheJobsOwnSetupComesFirst)
{
    const std::string start = kHead + kProlog + "%%BeginSetup\n1 setlinewidth\n";
    EXPECT_EQ(before(start + "%%EndSetup\n" + kPage), start);
}

TEST(JobStructure, WithoutSetupItIsBeforeTheFirstPage)
{
    EXPECT_EQ(before(kHead + kProlog + "/y 2 def\n" + kPage + "%%Page: 2 2\n"), kHead + kProlog + "/y 2 def\n");
    EXPECT_EQ(before(kHead + kPage), kHead);
}

TEST(JobStructure, WithoutPagesItIsAfterTheProlog)
{
    EXPECT_EQ(before(kHead + kProlog + "showpage\n%%EOF\n"), kHead + kProlog);
}

TEST(JobStructure, WithoutPrologItIsAfterTheHeaderComments)
{
    EXPECT_EQ(before(kHead + "showpage\n"), kHead);
}

TEST(JobStructure, WithoutAnyStructureItIsAfterTheFirstLine)
{
    EXPECT_EQ(before("%!PS\nshowpage\n"), "%!PS\n");
    EXPECT_EQ(before("%!\n"), "%!\n");
}

TEST(JobStructure, FirstLineWithoutLineEndGetsOne)
{
    for (const std::string job : {"%!", "%!PS showpage"})
        EXPECT_EQ(findPlace({job, true, "job"}), (Place{job.size(), true}));
}

TEST(JobStructure, SetupOfALaterPageIsNotTheJobs)
{
    const std::string start = kHead + kProlog;
    EXPECT_EQ(before(start + "%%Page: 1 1\n%%BeginSetup\n%%EndSetup\n"), start);
}

TEST(JobStructure, CommentsThatOnlyLookAlikeDoNotCount)
{
    const std::string start = "%!PS\n%%PageOrder: Ascend\n%%Pages: 1\n%%EndSetups\n %%EndSetup\n";
    EXPECT_EQ(before(start + "%%EndPageSetup\n"), "%!PS\n");
    EXPECT_EQ(before(start + "%%EndSetup \n"), start);
}

TEST(JobStructure, AllLineEndsAreLineEnds)
{
    const std::string job = kHead + kProlog + "%%BeginSetup\n%%EndSetup\n" + kPage;
    for (const std::string end : {"\r", "\r\n"}) {
        std::string other, expected;
        for (char byte : job)
            other += byte == '\n' ? end : std::string(1, byte);
        for (char byte : kHead + kProlog + "%%BeginSetup\n")
            expected += byte == '\n' ? end : std::string(1, byte);
        EXPECT_EQ(before(other), expected);
    }
    EXPECT_EQ(before("%!PS\r\nshowpage"), "%!PS\r\n");
    EXPECT_EQ(before("%!PS\rshowpage"), "%!PS\r");
}

TEST(JobStructure, EmbeddedDocumentsAreSkipped)
{
    const std::string inner = "%%BeginDocument: a.eps\n%!PS\n%%EndSetup\n%%Page: 1 1\n";
    const std::string start = kHead + kProlog + inner + inner + "%%EndDocument\n%%EndSetup\n%%EndDocument\n";
    EXPECT_EQ(before(start + "%%EndSetup\n" + kPage), start);
    EXPECT_EQ(before(kHead + inner), kHead) << "one that never ends";
    EXPECT_EQ(before(kHead + "%%EndDocument\n%%EndSetup\n"), kHead + "%%EndDocument\n") << "one that never began";
}

TEST(JobStructure, DataSectionsAreSkippedByTheirCounts)
{
    const std::string data = "%%EndSetup\n%%Page:\n";  // 19 bytes, 2 lines
    for (const std::string line : {"%%BeginData: 19 Binary Bytes\n", "%%BeginData: 19\n", "%%BeginBinary: 19\n",
                                   "%%BeginData: 2 ASCII Lines\n"}) {
        const std::string start = kHead + line + data + "%%EndData\n";
        EXPECT_EQ(before(start + "%%EndSetup\n"), start) << line;
    }
    const std::string binary = kHead + "%%BeginBinary: 24\n%%BeginDocument: never ends%%EndBinary\n";
    EXPECT_EQ(before(binary + "%%EndSetup\n"), binary);
}

TEST(JobStructure, DataSectionWithoutCountGoesToItsEnd)
{
    const std::string start = kHead + "%%BeginData:\n%%EndSetup\n%%EndData\n";
    EXPECT_EQ(before(start + "%%EndSetup\n"), start);
}

TEST(JobStructure, DataCountsThatCannotBeTrueHideTheRest)
{
    for (const char *count : {"99999", "99999999999999999999999999", "18446744073709551615", "-5", "x"})
        for (const char *unit : {" Hex Bytes", " ASCII Lines"})
            EXPECT_EQ(before(kHead + "%%BeginData: " + count + unit + "\n%%EndSetup\n"), kHead) << count << unit;
}

TEST(JobStructure, WhatPrinterDriversSendBeforeTheJobIsSkipped)
{
    const std::string language = "\033%-12345X@PJL JOB\r\n@PJL SET RESOLUTION=600\r\n\r\n@PJL ENTER LANGUAGE = "
                                 "POSTSCRIPT \r\n";
    for (const std::string &ahead : {std::string("\x04"), std::string("\x04\x04"), std::string("\033%-12345X"),
                                     language, "\x04" + language + "\x04"})
        EXPECT_EQ(before(ahead + "%!PS\nshowpage\n"), ahead + "%!PS\n");
}

TEST(JobStructure, WhatIsNotPostScriptIsRefusedInWords)
{
    EXPECT_EQ(refusalOf(""), "job: is empty, not a PostScript job");
    EXPECT_NE(refusalOf(std::string("\xC5\xD0\xD3\xC6 ...")).find("preview"), std::string::npos);
    EXPECT_NE(refusalOf("%PDF-1.7\n").find("PDF"), std::string::npos);
    for (const std::string job :
         {"%", "hello\n%!PS\n", "\x04", "\033%-12345X", " %!PS\n", "\033%-12345X\n@PJL\nx%!"})
        EXPECT_EQ(refusalOf(job), "job: is not a PostScript job (it does not begin with %!)");
}

TEST(JobStructure, JobWithAFragmentIsRefused)
{
    EXPECT_EQ(refusalOf(kHead + "%RidersBegin: 99 bytes\n" + kPage),
              "job: has a riders file in it already; strip it first");
    EXPECT_EQ(before(kHead + "%%BeginDocument: x\n%RidersBegin: 9\n%%EndDocument\n" + kPage).substr(0, 10),
              kHead.substr(0, 10));
}

TEST(JobStructure, OnlyTheFirstPartIsLookedAt)
{
    const std::string filler(kJobHeadLimit - kHead.size() - 12, 'x');
    const std::string atLimit = kHead + filler + "\n%%EndSetup\n";
    ASSERT_EQ(atLimit.size(), kJobHeadLimit);
    EXPECT_EQ(before(atLimit), kHead + filler + "\n");
    EXPECT_EQ(before(kHead + filler + "x\n%%EndSetup\n"), kHead);
    EXPECT_EQ(refusalOf("%!" + std::string(kJobHeadLimit, 'x') + "\n", false),
              "job: its first line does not end within 4 MiB");
}

TEST(JobStructure, LineThatTheHeadCutsOffIsNotSeen)
{
    for (const std::string cut : {"%%EndSetup", "%%EndSetup\r"}) {
        EXPECT_EQ(findPlace({kHead + cut, false, "job"}).offset, kHead.size());
        EXPECT_EQ(refusalOf("%!PS\r", false), "job: its first line does not end within 4 MiB");
    }
    EXPECT_EQ(findPlace({kHead + "x\n%%EndSetup", true, "job"}).offset, kHead.size() + 2);
}

TEST(JobStructure, LandscapeIsWhatTheHeaderSays)
{
    const auto landscape = [](const std::string &job) { return riders::apply::isLandscape({job, true, "job"}); };
    EXPECT_TRUE(landscape("%!PS\n%%Orientation: Landscape\n"));
    EXPECT_TRUE(landscape("\x04%!PS-Adobe-3.0\r\n%%Title: x\r\n%%Orientation:Landscape \r\n"));
    EXPECT_FALSE(landscape("%!PS\n%%Orientation: Portrait\n%%Orientation: Landscape\n"));
    EXPECT_FALSE(landscape("%!PS\n%%Orientation: (atend)\n%%Trailer\n%%Orientation: Landscape\n"));
    EXPECT_FALSE(landscape(kHead + "%%Orientation: Landscape\n")) << "after the header";
    EXPECT_FALSE(landscape("%!PS\n\n%%Orientation: Landscape\n")) << "after the header";
    EXPECT_FALSE(landscape("%!PS\n%%Orientations: Landscape\n%%Orientation\n"));
    EXPECT_THROW(landscape("nothing"), Refusal);
}

TEST(JobStructure, MarkerIsFoundWhereverAFragmentCanBe)
{
    const std::string marker = "%RidersBegin: 9 bytes\n";
    EXPECT_EQ(findFragment({kHead + marker, true, "job"}), kHead.size());
    EXPECT_EQ(findFragment({kHead + kPage, true, "job"}), std::nullopt);
    EXPECT_EQ(findFragment({kHead + "%%BeginDocument: x\n" + marker, true, "job"}), std::nullopt);
}

}  // namespace
