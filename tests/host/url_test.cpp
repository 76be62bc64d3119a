// Links to files, whatever they are called.
#include "html/url.h"
#include "support/toolbox_test.h"

namespace {

TEST(Url, HasNoBytesThatMeanSomethingElse)
{
    using riders::html::urlOf;
    EXPECT_EQ(urlOf("../films/job_p01_Cyan-2.tif"), "../films/job_p01_Cyan-2.tif");
    EXPECT_EQ(urlOf("a b%?#&\"<é:"), "a%20b%25%3F%23%26%22%3C%C3%A9%3A");
}

}  // namespace
