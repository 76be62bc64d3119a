#include <bitset>
#include <cstring>
#include <random>

#include "support/toolbox_test.h"
#include "toolbox/memory.h"
#include "toolbox/quickdraw.h"

namespace {

constexpr int side = 24;
using Square = std::bitset<side * side>;

Rect randomRect(std::mt19937 &random)
{
    auto coordinate = [&] { return int16_t(random() % (side + 1)); };
    return {coordinate(), coordinate(), coordinate(), coordinate()};  // empty ones too
}

Square bitsOf(const Rect &r)
{
    Square bits;
    for (int v = r.top; v < r.bottom; ++v)
        for (int h = r.left; h < r.right; ++h)
            bits.set(v * side + h);
    return bits;
}

}  // namespace

class Regions : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        for (RgnHandle &region : regions)
            region = NewRgn();
    }
    void TearDown() override
    {
        for (RgnHandle region : regions)
            DisposeRgn(region);
        ToolboxTest::TearDown();
    }
    static Square bitsOf(RgnHandle region)
    {
        Square bits;
        for (int v = 0; v < side; ++v)
            for (int h = 0; h < side; ++h)
                bits[v * side + h] = PtInRgn({int16_t(v), int16_t(h)}, region);
        return bits;
    }
    // A region of several rectangles, and the same as bits.
    Square fill(RgnHandle region, std::mt19937 &random)
    {
        Square bits;
        RgnHandle one = NewRgn();
        SetEmptyRgn(region);
        for (unsigned i = random() % 5; i > 0; --i) {
            const Rect r = randomRect(random);
            RectRgn(one, &r);
            UnionRgn(region, one, region);
            bits |= ::bitsOf(r);
        }
        DisposeRgn(one);
        return bits;
    }
    static void expectBoundsFit(RgnHandle region, const Square &bits)
    {
        Rect extent{};
        for (int v = 0; v < side; ++v)
            for (int h = 0; h < side; ++h)
                if (bits[v * side + h]) {
                    const Rect pixel{int16_t(v), int16_t(h), int16_t(v + 1), int16_t(h + 1)};
                    UnionRect(&extent, &pixel, &extent);
                }
        const Rect bounds = (*region)->rgnBBox;
        EXPECT_TRUE(EqualRect(&bounds, &extent));
        const bool rectangle = ::bitsOf(extent) == bits;
        EXPECT_EQ((*region)->rgnSize == 10, rectangle);
    }

    RgnHandle regions[3];
};

TEST_F(Regions, AreEmptyWhenNew)
{
    EXPECT_TRUE(EmptyRgn(regions[0]));
    EXPECT_EQ((*regions[0])->rgnSize, 10);
}

TEST_F(Regions, OfARectangleAreTenBytes)
{
    SetRectRgn(regions[0], 3, 4, 30, 40);
    EXPECT_EQ((*regions[0])->rgnSize, 10);
    const Rect bounds = (*regions[0])->rgnBBox, expected{4, 3, 40, 30};
    EXPECT_TRUE(EqualRect(&bounds, &expected));
    SetRectRgn(regions[0], 30, 4, 3, 40);
    EXPECT_TRUE(EmptyRgn(regions[0]));
}

TEST_F(Regions, CombineAsSetsOfPixelsDo)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 150; ++round) {
        const Square a = fill(regions[0], random), b = fill(regions[1], random);
        ASSERT_EQ(bitsOf(regions[0]), a);
        const std::pair<void (*)(RgnHandle, RgnHandle, RgnHandle), Square> operations[] = {
            {SectRgn, a & b}, {UnionRgn, a | b}, {DiffRgn, a & ~b}, {XorRgn, a ^ b}};
        for (const auto &[combine, expected] : operations) {
            combine(regions[0], regions[1], regions[2]);
            ASSERT_EQ(bitsOf(regions[2]), expected);
            expectBoundsFit(regions[2], expected);
            ASSERT_EQ(EmptyRgn(regions[2]), expected.none());
        }
        ASSERT_EQ(EqualRgn(regions[0], regions[1]), a == b);
        const Rect r = randomRect(random);
        ASSERT_EQ(RectInRgn(&r, regions[0]), (a & ::bitsOf(r)).any());
        CopyRgn(regions[0], regions[2]);
        ASSERT_TRUE(EqualRgn(regions[0], regions[2]));
        (random() % 2 ? DiffRgn : XorRgn)(regions[0], regions[0], regions[0]);
        ASSERT_TRUE(EmptyRgn(regions[0])) << "the result may be a source";
    }
}

TEST_F(Regions, MoveTogetherWithTheirParts)
{
    SetRectRgn(regions[0], 0, 0, 10, 10);
    SetRectRgn(regions[1], 3, 3, 5, 5);
    DiffRgn(regions[0], regions[1], regions[0]);
    OffsetRgn(regions[0], -100, 50);
    EXPECT_FALSE(PtInRgn({54, -96}, regions[0]));
    EXPECT_TRUE(PtInRgn({52, -98}, regions[0]));
    const Rect bounds = (*regions[0])->rgnBBox, expected{50, -100, 60, -90};
    EXPECT_TRUE(EqualRect(&bounds, &expected));
}

TEST_F(Regions, StayAsTheyAreWhenThereIsNoRoomForTheResult)
{
    SetRectRgn(regions[0], 0, 0, 10, 10);
    SetRectRgn(regions[1], 3, 3, 5, 5);
    toolbox::faults::failAllocation(1);
    DiffRgn(regions[0], regions[1], regions[0]);
    EXPECT_EQ(MemError(), memFullErr);
    EXPECT_TRUE(PtInRgn({4, 4}, regions[0]));
    EXPECT_EQ((*regions[0])->rgnSize, 10);
}

TEST_F(Regions, LeaveNothingBehind)
{
    const toolbox::LeakReport before = toolbox::leftBehind();
    RgnHandle region = NewRgn();
    UnionRgn(regions[0], regions[1], region);
    DisposeRgn(region);
    EXPECT_EQ(toolbox::leftBehind(), before);
}
