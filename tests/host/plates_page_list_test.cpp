// The pages a user asks for, from text and back.
#include <gtest/gtest.h>

#include "io/refusal.h"
#include "plates/page_list.h"

namespace {

namespace plates = riders::plates;

using Pages = std::vector<int>;

std::string refusal(const std::string &text)
{
    try {
        plates::pagesFromText(text);
    } catch (const riders::io::Refusal &refusal) {
        return refusal.message;
    }
    return "taken";
}

TEST(PageList, IsNumbersAndRanges)
{
    EXPECT_EQ(plates::pagesFromText(""), Pages{});
    EXPECT_EQ(plates::pagesFromText("7"), Pages{7});
    EXPECT_EQ(plates::pagesFromText("1,3-5"), (Pages{1, 3, 4, 5}));
    EXPECT_EQ(plates::pagesFromText(" 2 , 1 - 2 ,2"), (Pages{1, 2}));
    EXPECT_EQ(plates::pagesFromText("100000"), Pages{100000});
}

TEST(PageList, AnythingElseIsRefusedInWords)
{
    for (const char *text : {",", "1,", ",1", "a", "1-", "-1", "1--2", "1-2-3", "1.5", "1 2", "+1", " "})
        EXPECT_EQ(refusal(text), "\"" + std::string(text) + "\" is not a list of pages such as 1,3-5") << text;
    EXPECT_EQ(refusal("5-3"), "the pages 5-3 run backwards");
    EXPECT_EQ(refusal("0"), "there is no page 0; pages go from 1 to 100000");
    EXPECT_EQ(refusal("1-100001"), "there is no page 100001; pages go from 1 to 100000");
    EXPECT_EQ(refusal("99999999999"), "there is no page 99999999999; pages go from 1 to 100000");
}

TEST(PageList, IsWrittenAsShortAsPossible)
{
    for (const char *text : {"", "1", "1-2", "1,3", "1,3-5,9"})
        EXPECT_EQ(plates::textFromPages(plates::pagesFromText(text)), text);
}

}  // namespace
