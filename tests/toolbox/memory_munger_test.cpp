#include "support/toolbox_test.h"

#include "toolbox/memory.h"

class Munge : public ToolboxTest {
protected:
    void TearDown() override
    {
        if (text)
            DisposeHandle(text);
        ToolboxTest::TearDown();
    }
    void holds(const std::string &bytes)
    {
        ASSERT_EQ(PtrToHand(bytes.data(), &text, static_cast<Size>(bytes.size())), noErr);
    }
    std::string now() { return std::string(*text, static_cast<size_t>(GetHandleSize(text))); }
    Handle text = nullptr;
};

TEST_F(Munge, FindsWithoutChanging)
{
    holds("abcabc");
    EXPECT_EQ(Munger(text, 0, "ca", 2, nullptr, 0), 2);
    EXPECT_EQ(Munger(text, 1, "abc", 3, nullptr, 0), 3);
    EXPECT_LT(Munger(text, 4, "abc", 3, nullptr, 0), 0);
    EXPECT_EQ(now(), "abcabc");
}

TEST_F(Munge, ReplacesByLongerShorterAndNothing)
{
    holds("one two two");
    EXPECT_EQ(Munger(text, 0, "two", 3, "three", 5), 9);
    EXPECT_EQ(now(), "one three two");
    EXPECT_EQ(Munger(text, 0, "three", 5, "2", 1), 5);
    EXPECT_EQ(now(), "one 2 two");
    EXPECT_EQ(Munger(text, 0, " two", 4, "", 0), 5);
    EXPECT_EQ(now(), "one 2");
}

TEST_F(Munge, AnEmptyTargetInserts)
{
    holds("ad");
    EXPECT_EQ(Munger(text, 1, "", 0, "bc", 2), 3);
    EXPECT_EQ(now(), "abcd");
}

TEST_F(Munge, NilTargetReplacesTheStretchAtTheOffset)
{
    holds("abcdef");
    EXPECT_EQ(Munger(text, 1, nullptr, 2, "-", 1), 2);
    EXPECT_EQ(now(), "a-def");
    EXPECT_EQ(Munger(text, 2, nullptr, -1, "!", 1), 3);
    EXPECT_EQ(now(), "a-!");
    EXPECT_EQ(Munger(text, 1, nullptr, 100, "", 0), 1);
    EXPECT_EQ(now(), "a");
}

TEST_F(Munge, OffsetsOutsideAreRefused)
{
    holds("abc");
    EXPECT_LT(Munger(text, -1, "a", 1, "b", 1), 0);
    EXPECT_LT(Munger(text, 4, nullptr, 0, "b", 1), 0);
    EXPECT_EQ(now(), "abc");
}

TEST_F(Munge, NoRoomLeavesTheTextAlone)
{
    holds("abc");
    toolbox::faults::failAllocation(1);
    EXPECT_LT(Munger(text, 0, "b", 1, "long", 4), 0);
    EXPECT_EQ(MemError(), memFullErr);
    EXPECT_EQ(now(), "abc");
}
