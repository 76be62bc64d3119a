// Faults strike the calls they are planned for, and no others.
#include <gtest/gtest.h>

#include "toolbox/host/faults.h"

using namespace toolbox;

namespace {

class FaultsTest : public ::testing::Test {
protected:
    void SetUp() override { faults::clear(); }
    void TearDown() override { faults::clear(); }
};

}  // namespace

TEST_F(FaultsTest, StrikesTheNthCallOfTheKindOnce)
{
    faults::failFileCall(FileCall::write, 2, dskFulErr);
    EXPECT_EQ(faults::check(FileCall::write), noErr);
    EXPECT_EQ(faults::check(FileCall::read), noErr);
    EXPECT_FALSE(faults::met());
    EXPECT_EQ(faults::check(FileCall::write), dskFulErr);
    EXPECT_TRUE(faults::met());
    EXPECT_EQ(faults::check(FileCall::write), noErr);
}

TEST_F(FaultsTest, OnwardStrikesEveryLaterOne)
{
    faults::failFileCall(FileCall::open, 2, ioErr, true);
    EXPECT_EQ(faults::check(FileCall::open), noErr);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(faults::check(FileCall::open), ioErr);
}

TEST_F(FaultsTest, AnyCallCountsWhateverItsKind)
{
    faults::failAnyFileCall(3, fnfErr);
    EXPECT_EQ(faults::check(FileCall::create), noErr);
    EXPECT_EQ(faults::check(FileCall::open), noErr);
    EXPECT_EQ(faults::check(FileCall::write), fnfErr);
    EXPECT_EQ(faults::check(FileCall::close), noErr);
}

TEST_F(FaultsTest, PlansCountFromWhenTheyAreMade)
{
    faults::check(FileCall::write);
    faults::failFileCall(FileCall::write, 1, ioErr);
    faults::failFileCall(FileCall::write, 2, dskFulErr);
    EXPECT_EQ(faults::check(FileCall::write), ioErr);
    EXPECT_EQ(faults::check(FileCall::write), dskFulErr);
    EXPECT_EQ(faults::count(FileCall::write), 3);
}

TEST_F(FaultsTest, ClearForgetsPlansAndCounts)
{
    faults::failFileCall(FileCall::write, 1, ioErr, true);
    faults::failAllocation(1, true);
    faults::check(FileCall::write);
    faults::clear();
    EXPECT_FALSE(faults::met());
    EXPECT_EQ(faults::count(FileCall::write), 0);
    EXPECT_EQ(faults::check(FileCall::write), noErr);
    EXPECT_FALSE(faults::allocationFails());
}

TEST_F(FaultsTest, AllocationsAreCountedApartFromFiles)
{
    faults::failAllocation(2);
    faults::check(FileCall::write);
    EXPECT_FALSE(faults::allocationFails());
    EXPECT_TRUE(faults::allocationFails());
    EXPECT_FALSE(faults::allocationFails());
    EXPECT_TRUE(faults::met());
}

TEST_F(FaultsTest, StopsHalfwayWhereThatIsPlannedAndNowhereElse)
{
    faults::stopHalfway(FileCall::write, 1, dskFulErr);
    faults::failFileCall(FileCall::write, 2, ioErr);
    EXPECT_EQ(faults::check(FileCall::write), dskFulErr);
    EXPECT_TRUE(faults::stopsHalfway());
    EXPECT_EQ(faults::check(FileCall::write), ioErr);
    EXPECT_FALSE(faults::stopsHalfway());
    EXPECT_EQ(faults::check(FileCall::write), noErr);
    EXPECT_FALSE(faults::stopsHalfway());
}

TEST_F(FaultsTest, AllocationsAreCounted)
{
    EXPECT_EQ(faults::allocationCount(), 0);
    faults::failAllocation(2);
    for (int i = 0; i < 3; ++i)
        faults::allocationFails();
    EXPECT_EQ(faults::allocationCount(), 3);
    faults::clear();
    EXPECT_EQ(faults::allocationCount(), 0);
}

TEST_F(FaultsTest, EveryKindHasItsOwnName)
{
    for (int i = 0; i < fileCallKinds; ++i) {
        auto kind = static_cast<FileCall>(i);
        EXPECT_EQ(faults::kindNamed(faults::name(kind)), kind);
    }
    EXPECT_STREQ(faults::name(FileCall::rename), "rename");
    EXPECT_STREQ(faults::name(FileCall::findFolder), "findFolder");
    EXPECT_FALSE(faults::kindNamed("explode"));
}
