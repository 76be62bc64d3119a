// Trace lines and their quoting.
#include <gtest/gtest.h>

#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"

using namespace toolbox;

namespace {

class TraceTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        trace::setSink({});
        trace::setDrawingSink({});
    }
    std::vector<std::string> lines;
};

}  // namespace

TEST_F(TraceTest, LinesArriveInOrder)
{
    trace::setSink(trace::into(lines));
    trace::line("dialog %d hidden", 128);
    trace::line("beep");
    EXPECT_EQ(lines, (std::vector<std::string>{"dialog 128 hidden", "beep"}));
}

TEST_F(TraceTest, LongLinesAreComplete)
{
    trace::setSink(trace::into(lines));
    std::string text(10000, 'x');
    trace::line("%s", text.c_str());
    EXPECT_EQ(lines.at(0), text);
}

TEST_F(TraceTest, DrawingIsSeparateAndOffUnlessWanted)
{
    trace::setSink(trace::into(lines));
    EXPECT_FALSE(trace::drawingWanted());
    trace::drawing("frameRect %d", 1);
    EXPECT_TRUE(lines.empty());
    std::vector<std::string> drawn;
    trace::setDrawingSink(trace::into(drawn));
    EXPECT_TRUE(trace::drawingWanted());
    trace::drawing("frameRect %d", 1);
    EXPECT_EQ(drawn.at(0), "frameRect 1");
    EXPECT_TRUE(lines.empty());
}

TEST_F(TraceTest, WithoutASinkLinesAreDropped)
{
    trace::setSink(trace::into(lines));
    trace::setSink({});
    trace::line("beep");
    EXPECT_TRUE(lines.empty());
}

TEST_F(TraceTest, QuotedTextStaysOnOneLine)
{
    EXPECT_EQ(trace::quoted(std::string("a\rb\"c\\d\ne\x12")), "\"a\\rb\\\"c\\\\d\\ne\\x12\"");
    unsigned char pascal[] = {3, 0x8E, '\r', 'x'};
    EXPECT_EQ(trace::quoted(pascal), "\"é\\rx\"");
}
