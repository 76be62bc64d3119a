#include "quickdraw/dimming.h"
#include "quickdraw_canvas.h"

using QuickDrawLines = CanvasTest;
using QuickDrawShapes = CanvasTest;
using QuickDrawPolygons = CanvasTest;
using QuickDrawScrolling = CanvasTest;

TEST_F(QuickDrawLines, InkBothEndPoints)
{
    MoveTo(10, 20);
    LineTo(13, 20);
    EXPECT_EQ(inked(), 4);
    EXPECT_EQ(pixel(10, 20), black);
    EXPECT_EQ(pixel(13, 20), black);
    MoveTo(40, 40);
    LineTo(40, 40);
    EXPECT_EQ(inked(), 5);
}

TEST_F(QuickDrawLines, HangBelowAndToTheRightOfThePen)
{
    PenSize(3, 2);
    MoveTo(10, 20);
    LineTo(10, 29);
    EXPECT_EQ(inked(), 3 * 11);
    EXPECT_EQ(pixel(10, 20), black);
    EXPECT_EQ(pixel(12, 30), black);
    EXPECT_EQ(pixel(9, 20), white);
    EXPECT_EQ(pixel(13, 20), white);
    EXPECT_EQ(pixel(10, 31), white);
}

TEST_F(QuickDrawLines, LeaveThePenAtTheirEnd)
{
    MoveTo(1, 2);
    Line(10, 20);
    Point pen{};
    GetPen(&pen);
    EXPECT_EQ(pen.h, 11);
    EXPECT_EQ(pen.v, 22);
    Move(-1, -2);
    GetPen(&pen);
    EXPECT_EQ(pen.h, 10);
    EXPECT_EQ(pen.v, 20);
}

TEST_F(QuickDrawLines, WithAnEmptyPenDrawNothing)
{
    PenSize(0, 5);
    MoveTo(0, 0);
    LineTo(50, 50);
    PenSize(5, 0);
    const Rect r{0, 0, 20, 20};
    FrameRect(&r);
    PaintRect(&r);
    EXPECT_EQ(inked(), 0);
}

TEST_F(QuickDrawLines, AreTheSameBackwards)
{
    MoveTo(3, 5);
    LineTo(70, 36);
    const auto forward = pixels();
    EraseRect(&port.portRect);
    MoveTo(70, 36);
    LineTo(3, 5);
    EXPECT_EQ(pixels(), forward);
}

TEST_F(QuickDrawShapes, FramesLieInsideTheirRectangle)
{
    const Rect r{10, 10, 20, 30};
    PenSize(2, 3);
    MoveTo(5, 6);
    FrameRect(&r);
    EXPECT_EQ(inked(), 20 * 10 - 16 * 4);
    EXPECT_EQ(pixel(10, 10), black);
    EXPECT_EQ(pixel(29, 19), black);
    EXPECT_EQ(pixel(30, 19), white);
    EXPECT_EQ(pixel(12, 13), white);
    Point pen{};
    GetPen(&pen);
    EXPECT_EQ(pen.h, 5);
    EXPECT_EQ(pen.v, 6);
}

TEST_F(QuickDrawShapes, InvertedTwiceAreAsBefore)
{
    const Rect r{10, 10, 20, 30}, across{5, 15, 40, 20};
    ForeColor(redColor);
    PaintRect(&across);
    const auto before = pixels();
    InvertRect(&r);
    EXPECT_NE(pixels(), before);
    EXPECT_EQ(pixel(16, 12), 0x550000u);
    InvertRect(&r);
    EXPECT_EQ(pixels(), before);
    InvertRoundRect(&r, 8, 8);
    InvertRoundRect(&r, 8, 8);
    EXPECT_EQ(pixels(), before);
}

TEST_F(QuickDrawShapes, RoundRectanglesAreSymmetric)
{
    for (int oval : {1, 2, 5, 8, 16, 100}) {
        EraseRect(&port.portRect);
        const Rect r{10, 10, 31, 50};
        PenSize(3, 3);
        FrameRoundRect(&r, int16_t(oval), int16_t(oval + 3));
        const auto drawn = pixels();
        for (int v = 0; v < 21; ++v)
            for (int h = 0; h < 40; ++h) {
                const std::uint32_t value = at(drawn, 10 + h, 10 + v);
                ASSERT_EQ(value, at(drawn, 49 - h, 10 + v)) << oval;
                ASSERT_EQ(value, at(drawn, 10 + h, 30 - v)) << oval;
            }
        EXPECT_EQ(at(drawn, 30, 10), black);
        EXPECT_EQ(at(drawn, 10, 20), black);
        EXPECT_EQ(at(drawn, 30, 20), white);
        EXPECT_EQ(at(drawn, 10, 10), oval >= 5 ? white : black) << oval;
    }
}

TEST_F(QuickDrawShapes, RoundRectanglesHoldThePixelsWhoseCentreIsInside)
{
    const Rect r{0, 0, 40, 60};
    PaintRoundRect(&r, 20, 30);
    const auto drawn = pixels();
    for (int v = 0; v < 40; ++v)
        for (int h = 0; h < 60; ++h) {
            const double fromSide = std::min(h + 0.5, 59.5 - h), fromEdge = std::min(v + 0.5, 39.5 - v);
            const double x = fromSide < 10 ? (10 - fromSide) / 10 : 0;
            const double y = fromEdge < 15 ? (15 - fromEdge) / 15 : 0;
            EXPECT_EQ(at(drawn, h, v), x * x + y * y <= 1 || x == 0 || y == 0 ? black : white) << h << "," << v;
        }
}

TEST_F(QuickDrawShapes, WithoutCornersRoundRectanglesAreRectangles)
{
    const Rect r{10, 10, 20, 30};
    PaintRoundRect(&r, 0, 7);
    InvertRect(&r);
    EXPECT_EQ(inked(), 0);
}

TEST_F(QuickDrawShapes, PatternsAreAnchoredToThePort)
{
    const Rect r{3, 5, 40, 41};
    FillRect(&r, &qd.gray);
    const auto drawn = pixels();
    for (int v = 3; v < 40; ++v)
        for (int h = 5; h < 41; ++h)
            ASSERT_EQ(at(drawn, h, v), (h + v) % 2 ? white : black);
}

TEST_F(QuickDrawShapes, PenModesCombineWithWhatIsThere)
{
    const Rect r{0, 0, 8, 8};
    auto countAfter = [&](int16_t mode, bool onBlack) {
        EraseRect(&port.portRect);
        if (onBlack)
            FillRect(&r, &qd.black);
        PenMode(mode);
        PenPat(&qd.ltGray);  // 16 black pixels of 64
        PaintRect(&r);
        PenNormal();
        return inked();
    };
    EXPECT_EQ(countAfter(patCopy, false), 16);
    EXPECT_EQ(countAfter(patCopy, true), 16);
    EXPECT_EQ(countAfter(patOr, true), 64);
    EXPECT_EQ(countAfter(patXor, false), 16);
    EXPECT_EQ(countAfter(patXor, true), 48);
    EXPECT_EQ(countAfter(patBic, true), 48);
}

TEST_F(QuickDrawShapes, DimmingRemovesEveryOtherPixelAndAddsNone)
{
    const Rect all{0, 0, 8, 8}, dimmed{0, 0, 8, 4};
    FillRect(&all, &qd.black);
    PenSize(3, 3);
    toolbox::quickdraw::dim(dimmed);
    EXPECT_EQ(inked(), 64 - 16);
    EXPECT_NE(pixel(0, 0), pixel(1, 0));
    EraseRect(&all);
    toolbox::quickdraw::dim(dimmed);
    EXPECT_EQ(inked(), 0) << "what is white stays white";
    EXPECT_EQ(port.pnSize.h, 1);
    EXPECT_EQ(port.pnMode, patCopy);
}

TEST_F(QuickDrawShapes, ColoursHaveTheirTableValues)
{
    const std::pair<int32_t, std::uint32_t> table[] = {
        {33, 0x000000},  {30, 0xFFFFFF},  {205, 0xDD0806}, {341, 0x008011},
        {409, 0x0000D4}, {273, 0x02ABEA}, {137, 0xF20884}, {69, 0xFCF305}};
    useDepth(32);
    const Rect r{0, 0, 2, 2};
    for (const auto &[color, rgb] : table) {
        ForeColor(color);
        PaintRect(&r);
        EXPECT_EQ(pixel(1, 1), rgb);
        BackColor(color);
        EraseRect(&r);
        EXPECT_EQ(pixel(0, 0), rgb);
    }
}

TEST_F(QuickDrawShapes, OnABlackAndWhiteDisplayAllButWhiteIsBlack)
{
    const Rect before{0, 0, 2, 2}, r{10, 10, 12, 12};
    ForeColor(redColor);
    PaintRect(&before);
    useDepth(1);
    EXPECT_EQ(pixel(0, 0), black) << "what was there becomes what the display can show";
    EXPECT_EQ(pixel(5, 5), white);
    ForeColor(yellowColor);
    PaintRect(&r);
    EXPECT_EQ(pixel(10, 10), black);
    ForeColor(whiteColor);
    PaintRect(&r);
    EXPECT_EQ(pixel(10, 10), white);
}

TEST_F(QuickDrawShapes, RegionsArePaintedAndErased)
{
    RgnHandle ring = NewRgn(), hole = NewRgn();
    SetRectRgn(ring, 10, 10, 30, 30);
    SetRectRgn(hole, 15, 15, 20, 20);
    DiffRgn(ring, hole, ring);
    PaintRgn(ring);
    EXPECT_EQ(inked(), 400 - 25);
    EXPECT_EQ(pixel(15, 15), white);
    EraseRgn(ring);
    EXPECT_EQ(inked(), 0);
    DisposeRgn(ring);
    DisposeRgn(hole);
}

TEST_F(QuickDrawPolygons, LinesAreCollectedWhileOneIsOpen)
{
    PolyHandle triangle = OpenPoly();
    EXPECT_EQ(OpenPoly(), nullptr);
    MoveTo(50, 6);
    LineTo(38, 6);
    LineTo(44, 12);
    LineTo(50, 6);
    ClosePoly();
    EXPECT_EQ(inked(), 0);
    EXPECT_EQ((*triangle)->polySize, 10 + 4 * 4);
    const Rect bounds = (*triangle)->polyBBox, expected{6, 38, 12, 50};
    EXPECT_TRUE(EqualRect(&bounds, &expected));
    KillPoly(triangle);
    MoveTo(0, 0);
    LineTo(1, 0);
    EXPECT_EQ(inked(), 2);
}

TEST_F(QuickDrawPolygons, ATriangleIsFilledWithinItsEdges)
{
    PolyHandle triangle = OpenPoly();
    MoveTo(50, 6);
    LineTo(38, 6);
    LineTo(44, 12);
    LineTo(50, 6);
    ClosePoly();
    PaintPoly(triangle);
    KillPoly(triangle);
    const auto drawn = pixels();
    for (int v = 0; v < 20; ++v)
        for (int h = 30; h < 60; ++h) {
            // Both edges run through pixel centres: in on the left, out on the right.
            const bool inside = v >= 6 && v < 12 && h >= 38 + (v - 6) && h < 50 - (v - 6) - 1;
            ASSERT_EQ(at(drawn, h, v), inside ? black : white) << h << "," << v;
        }
}

TEST_F(QuickDrawPolygons, WhatIsEnclosedTwiceIsOutside)
{
    PolyHandle both = OpenPoly();
    const Point corners[] = {{0, 0}, {0, 30}, {30, 30}, {30, 0}, {0, 0},
                             {10, 10}, {10, 20}, {20, 20}, {20, 10}, {10, 10}};
    MoveTo(0, 0);
    for (Point corner : corners)
        LineTo(corner.h, corner.v);
    ClosePoly();
    PaintPoly(both);
    EXPECT_EQ(inked(), 900 - 100);
    EXPECT_EQ(pixel(15, 15), white);
    KillPoly(both);
}

TEST_F(QuickDrawPolygons, FramesFollowTheLinesWithThePen)
{
    PolyHandle square = OpenPoly();
    MoveTo(10, 10);
    LineTo(20, 10);
    LineTo(20, 20);
    LineTo(10, 20);
    LineTo(10, 10);
    ClosePoly();
    FramePoly(square);
    EXPECT_EQ(inked(), 40);
    EXPECT_EQ(pixel(20, 20), black);
    EraseRect(&port.portRect);
    PaintPoly(square);
    EXPECT_EQ(inked(), 100);
    EXPECT_EQ(pixel(20, 20), white);
    KillPoly(square);
}

TEST_F(QuickDrawPolygons, AreNotOpenedWithoutMemory)
{
    toolbox::faults::failAllocation(1);
    EXPECT_EQ(OpenPoly(), nullptr);
    LineTo(0, 0);
    EXPECT_EQ(inked(), 1);
    PaintPoly(nullptr);
    KillPoly(nullptr);
}

TEST_F(QuickDrawScrolling, MovesPixelsWithinTheRectangleAndReportsWhatIsToBeDrawn)
{
    const Rect r{10, 10, 30, 50}, dot{12, 12, 14, 14}, outside{15, 5, 16, 9};
    PaintRect(&dot);
    PaintRect(&outside);
    RgnHandle update = NewRgn();
    ScrollRect(&r, -2, 5, update);
    EXPECT_EQ(inked(), 8);
    EXPECT_EQ(pixel(10, 17), black);
    EXPECT_EQ(pixel(5, 15), black);
    EXPECT_TRUE(PtInRgn({10, 30}, update));
    EXPECT_TRUE(PtInRgn({20, 48}, update));
    EXPECT_FALSE(PtInRgn({15, 47}, update));
    const Rect bounds = (*update)->rgnBBox;
    EXPECT_TRUE(EqualRect(&bounds, &r));
    ScrollRect(&r, -2, 0, update);
    EXPECT_EQ(inked(), 4) << "what leaves the rectangle is lost";
    DisposeRgn(update);
}

TEST_F(QuickDrawScrolling, FurtherThanTheRectangleErasesIt)
{
    const Rect r{10, 10, 30, 50};
    PaintRect(&r);
    RgnHandle update = NewRgn();
    ScrollRect(&r, 1000, -30000, update);
    EXPECT_EQ(inked(), 0);
    const Rect bounds = (*update)->rgnBBox;
    EXPECT_TRUE(EqualRect(&bounds, &r));
    DisposeRgn(update);
}

TEST_F(QuickDrawShapes, AreTracedInLocalCoordinates)
{
    std::vector<std::string> drawing;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawing));
    const Rect r{1, 2, 33, 44};
    FrameRect(&r);
    EraseRect(&r);
    InvertRect(&r);
    PenSize(3, 3);
    FrameRoundRect(&r, 16, 17);
    MoveTo(5, 6);
    LineTo(7, 8);
    PolyHandle triangle = OpenPoly();
    LineTo(9, 8);
    LineTo(9, 20);
    ClosePoly();
    ForeColor(blueColor);
    PaintPoly(triangle);
    KillPoly(triangle);
    const std::vector<std::string> expected{"frameRect 2,1,44,33",
                                            "eraseRect 2,1,44,33",
                                            "invertRect 2,1,44,33",
                                            "roundRect 2,1,44,33 16,17 pen 3,3",
                                            "line 5,6 to 7,8",
                                            "poly (7,8) (9,8) (9,20) color 409"};
    EXPECT_EQ(drawing, expected);
}
