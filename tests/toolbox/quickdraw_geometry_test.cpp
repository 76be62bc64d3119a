#include "quickdraw_canvas.h"

TEST(QuickDrawGeometry, RectanglesHoldTopLeftButNotBottomRight)
{
    const Rect r{10, 20, 30, 40};
    EXPECT_TRUE(PtInRect({10, 20}, &r));
    EXPECT_TRUE(PtInRect({29, 39}, &r));
    EXPECT_FALSE(PtInRect({30, 39}, &r));
    EXPECT_FALSE(PtInRect({29, 40}, &r));
    EXPECT_FALSE(EmptyRect(&r));
    const Rect line{10, 20, 10, 40};
    EXPECT_TRUE(EmptyRect(&line));
}

TEST(QuickDrawGeometry, SectRectGivesAllZeroWithoutAnOverlap)
{
    const Rect a{0, 0, 10, 10}, b{5, 5, 20, 20}, beside{0, 10, 10, 20};
    Rect both{};
    EXPECT_TRUE(SectRect(&a, &b, &both));
    const Rect expected{5, 5, 10, 10}, zero{};
    EXPECT_TRUE(EqualRect(&both, &expected));
    EXPECT_FALSE(SectRect(&a, &beside, &both));
    EXPECT_TRUE(EqualRect(&both, &zero));
}

TEST(QuickDrawGeometry, UnionRectLeavesOutEmptyOnes)
{
    const Rect a{0, 0, 10, 10}, b{5, 5, 20, 30}, empty{90, 90, 80, 80};
    Rect both{};
    UnionRect(&a, &b, &both);
    const Rect expected{0, 0, 20, 30};
    EXPECT_TRUE(EqualRect(&both, &expected));
    UnionRect(&a, &empty, &both);
    EXPECT_TRUE(EqualRect(&both, &a));
}

TEST(QuickDrawGeometry, InsetRectBecomesZeroWhenNothingIsLeft)
{
    Rect r{0, 0, 10, 10};
    InsetRect(&r, -4, 2);
    const Rect grown{2, -4, 8, 14}, zero{};
    EXPECT_TRUE(EqualRect(&r, &grown));
    InsetRect(&r, 0, 3);
    EXPECT_TRUE(EqualRect(&r, &zero));
}

using QuickDrawPorts = CanvasTest;

TEST_F(QuickDrawPorts, ConvertBetweenLocalAndGlobal)
{
    Point point{5, 7};
    LocalToGlobal(&point);
    EXPECT_EQ(point.h, 107);
    EXPECT_EQ(point.v, 65);
    GlobalToLocal(&point);
    EXPECT_EQ(point.h, 7);
    EXPECT_EQ(point.v, 5);
}

TEST_F(QuickDrawPorts, SetOriginRenumbersButMovesNoPixel)
{
    const Rect dot{3, 4, 4, 5};
    PaintRect(&dot);
    SetOrigin(50, 60);
    EXPECT_EQ(port.portRect.left, 50);
    EXPECT_EQ(port.portRect.bottom, 60 + height);
    const Rect sameDot{63, 54, 64, 55};
    InvertRect(&sameDot);
    EXPECT_EQ(inked(), 0);
}

TEST_F(QuickDrawPorts, ClosingTheCurrentOneLeavesTheDesktopsCurrent)
{
    closeCanvas();
    GrafPtr current = nullptr;
    GetPort(&current);
    EXPECT_EQ(current, toolbox::quickdraw::desktopPort());
    openCanvas();
}

TEST_F(QuickDrawPorts, ClipToPortVisibleAndClipRegion)
{
    SetRectRgn(port.visRgn, 0, 0, width, 50);
    const Rect clip{40, 30, 200, 200}, all{-100, -100, 300, 300};
    ClipRect(&clip);
    PaintRect(&all);
    EXPECT_EQ(inked(), (width - 30) * 10);
    EXPECT_EQ(pixel(30, 40), black);
    EXPECT_EQ(pixel(29, 40), white);
    EXPECT_EQ(pixel(width - 1, 49), black);
}

TEST_F(QuickDrawPorts, TheClipRegionIsGivenAsACopy)
{
    const Rect clip{10, 20, 30, 40}, other{0, 0, 5, 5};
    ClipRect(&clip);
    RgnHandle copy = NewRgn();
    GetClip(copy);
    ClipRect(&other);
    EXPECT_TRUE(EqualRect(&(**copy).rgnBBox, &clip));
    SetClip(copy);
    EXPECT_TRUE(EqualRgn(port.clipRgn, copy));
    DisposeRgn(copy);
}

TEST_F(QuickDrawPorts, WithoutRegionsDrawNothing)
{
    GrafPort bare{};
    toolbox::faults::failAllocation(1, true);
    toolbox::quickdraw::openPort(&bare);
    toolbox::faults::clear();
    EXPECT_EQ(bare.visRgn, nullptr);
    SetPort(&bare);
    const auto before = pixels();
    const Rect all{0, 0, 400, 400};
    PaintRect(&all);
    EXPECT_EQ(pixels(), before);
    toolbox::quickdraw::closePort(&bare);
    SetPort(&port);
}

class QuickDrawDevices : public ToolboxTest {};

TEST_F(QuickDrawDevices, AreTheDisplaysInOrder)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 600, 1440}, 1}, {{480, 0, 800, 640}, 32}});
    GDHandle device = GetDeviceList();
    EXPECT_EQ(device, GetMainDevice());
    EXPECT_TRUE(TestDeviceAttribute(device, mainScreen));
    EXPECT_EQ((*(*device)->gdPMap)->pixelSize, 8);
    device = GetNextDevice(device);
    ASSERT_NE(device, nullptr);
    EXPECT_FALSE(TestDeviceAttribute(device, mainScreen));
    EXPECT_TRUE(TestDeviceAttribute(device, screenDevice));
    EXPECT_TRUE(TestDeviceAttribute(device, screenActive));
    EXPECT_EQ((*device)->gdRect.left, 640);
    EXPECT_EQ((*(*device)->gdPMap)->pixelSize, 1);
    device = GetNextDevice(device);
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(GetNextDevice(device), nullptr);
}

TEST_F(QuickDrawDevices, ShowAChangedDepthAtOnce)
{
    GDHandle device = GetMainDevice();
    machine.setDisplays({{{0, 0, 480, 640}, 1}});
    EXPECT_EQ((*(*GetMainDevice())->gdPMap)->pixelSize, 1);
    EXPECT_EQ(GetMainDevice(), device);
}

TEST_F(QuickDrawDevices, ThatAreGoneStayReadableButInactive)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 480, 1280}, 8}});
    GDHandle gone = GetNextDevice(GetDeviceList());
    machine.setDisplays({{{0, 0, 480, 640}, 8}});
    EXPECT_EQ(GetNextDevice(GetDeviceList()), nullptr);
    EXPECT_FALSE(TestDeviceAttribute(gone, screenActive));
}

TEST_F(QuickDrawDevices, GrayRegionIsAllDisplaysWithoutTheMenuBar)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 480, 1280}, 8}});
    RgnHandle gray = GetGrayRgn();
    EXPECT_FALSE(PtInRgn({19, 100}, gray));
    EXPECT_TRUE(PtInRgn({20, 100}, gray));
    EXPECT_TRUE(PtInRgn({0, 640}, gray));
    EXPECT_FALSE(PtInRgn({480, 640}, gray));
    EXPECT_EQ(qd.screenBits.bounds.right, 640);
    EXPECT_EQ(qd.screenBits.bounds.top, 0);
}

TEST_F(QuickDrawDevices, ThirtyTwoChangesOfDisplayLeaveNothingBehind)
{
    for (int i = 0; i < 32; ++i)
        machine.setDisplays(std::vector<toolbox::Display>(1, {{0, 0, 480, 640}, i % 2 ? 1 : 8})), GetMainDevice();
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

TEST(QuickDrawRandom, IsTheMinimalStandardGenerator)
{
    // The generator's published check: from 1, the 10000th value.
    qd.randSeed = 1;
    int16_t last = 0;
    for (int i = 0; i < 10000; ++i)
        last = Random();
    EXPECT_EQ(qd.randSeed, 1043618065);
    EXPECT_EQ(last, int16_t(1043618065 & 0xFFFF));
}

TEST(QuickDrawRandom, ReturnsZeroInsteadOfTheLowestNumber)
{
    // The seed before 0x8000: its product with 16807 leaves 0x8000.
    int64_t inverse = 1, power = 16807;
    for (int64_t exponent = 0x7FFFFFFF - 2; exponent > 0; exponent /= 2, power = power * power % 0x7FFFFFFF)
        if (exponent % 2)
            inverse = inverse * power % 0x7FFFFFFF;
    qd.randSeed = int32_t(inverse * 0x8000 % 0x7FFFFFFF);
    EXPECT_EQ(Random(), 0);
    EXPECT_EQ(qd.randSeed, 0x8000);
    qd.randSeed = 0;
    Random();
    EXPECT_NE(qd.randSeed, 0);
}
