// What is read from a job's structuring comments.
#include <gtest/gtest.h>

#include "app/job_comments.h"

namespace {

riders::app::JobComments of(const std::string &job)
{
    return riders::app::commentsOf(job, job);
}

TEST(JobComments, TitleAndPages)
{
    EXPECT_EQ(of("%!PS\n%%Title: Poster\n%%Pages: 3\n%%EndComments\n"), (riders::app::JobComments{"Poster", 3}));
    EXPECT_EQ(of("%!PS\r%%Title:Poster \t\r%%Pages:3 1\r"), (riders::app::JobComments{"Poster", 3}));
    EXPECT_EQ(of("%!PS\r\n%%Title: Poster\r\n%%Pages:   12\r\n"), (riders::app::JobComments{"Poster", 12}));
    EXPECT_EQ(of("%!PS"), riders::app::JobComments{});
    EXPECT_EQ(of(""), riders::app::JobComments{});
}

TEST(JobComments, TitleMayBeAString)
{
    EXPECT_EQ(of("%!PS\n%%Title: (A \\(b\\) c)\n").title, "A (b) c");
    EXPECT_EQ(of("%!PS\n%%Title: (\n").title, "(");
    EXPECT_EQ(of("%!PS\n%%Title: ()\n").title, "");
    EXPECT_EQ(of("%!PS\n%%Title: (\\)\n").title, "\\");
}

TEST(JobComments, OtherBytesAreTakenForMacRoman)
{
    EXPECT_EQ(of("%!PS\n%%Title: K\xC3\xA4se\n").title, "K\xC3\xA4se");
    EXPECT_EQ(of("%!PS\n%%Title: K\x8Ase\n").title, "K\xC3\xA4se");
    EXPECT_EQ(of("%!PS\n%%Title: a\tb\x01\n").title, "ab");
}

TEST(JobComments, HeaderEndsWithItsComments)
{
    EXPECT_EQ(of("%!PS\n%%EndComments\n%%Title: Late\n").title, "");
    EXPECT_EQ(of("%!PS\nshowpage\n%%Title: Late\n").title, "");
    EXPECT_EQ(of("%!PS\n%%Title: One\n%%Title: Two\n").title, "One");
}

TEST(JobComments, TheFirstLineMayBeAnything)
{
    EXPECT_EQ(of("\x04%!PS-Adobe-3.0\n%%Title: Poster\n").title, "Poster") << "as some print systems send it";
}

TEST(JobComments, PagesMayStandAtTheEnd)
{
    EXPECT_EQ(of("%!PS\n%%Pages: (atend)\nshowpage\n%%Pages: 2\n%%Trailer\n%%Pages: 7\n").pages, 7);
    EXPECT_EQ(of("%!PS\n%%Pages: 4\nshowpage\n%%Trailer\n%%Pages: 7\n").pages, 4);
    EXPECT_FALSE(of("%!PS\n%%Pages: many\n").pages);
    EXPECT_FALSE(of("%!PS\n%%Pages: -1\n").pages);
    EXPECT_FALSE(of("%!PS\n%%Pages: 99999999999999999999\n").pages);
    EXPECT_EQ(of("%!PS\n%%Pages: 0\n").pages, 0);
}

}  // namespace
