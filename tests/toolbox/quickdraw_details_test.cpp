// Shapes that dialogs are made of, pixel by pixel.
#include "quickdraw_canvas.h"

namespace {

class QuickDrawDetails : public CanvasTest {
protected:
    // The canvas from left and top onwards, a letter for each colour.
    std::vector<std::string> drawn(int fromH, int fromV, int columns, int rows) const
    {
        const auto canvas = pixels();
        std::vector<std::string> result;
        for (int v = fromV; v < fromV + rows; ++v) {
            std::string row;
            for (int h = fromH; h < fromH + columns; ++h) {
                const std::uint32_t color = at(canvas, h, v);
                row += color == white ? '.' : color == black ? '#' : color == blue ? 'b' : '?';
            }
            result.push_back(row);
        }
        return result;
    }

    static constexpr std::uint32_t blue = 0x0000D4;
};

using Rows = std::vector<std::string>;

}  // namespace

TEST_F(QuickDrawDetails, AShadowIsOnePixelOutsideAPopupsFrame)
{
    const Rect box{10, 20, 18, 32};
    FrameRect(&box);
    MoveTo(box.left + 1, box.bottom);
    LineTo(box.right, box.bottom);
    LineTo(box.right, box.top + 1);
    EXPECT_EQ(drawn(19, 9, 15, 11),
              (Rows{"...............", ".############..", ".#..........##.", ".#..........##.", ".#..........##.",
                    ".#..........##.", ".#..........##.", ".#..........##.", ".#############.", "..############.",
                    "..............."}));
}

TEST_F(QuickDrawDetails, APopupsArrowIsATriangleOfElevenPixelsToOne)
{
    const int16_t right = 60, top = 10;
    PolyHandle arrow = OpenPoly();
    MoveTo(right - 5, top + 6);
    LineTo(right - 17, top + 6);
    LineTo(right - 11, top + 12);
    LineTo(right - 5, top + 6);
    ClosePoly();
    PaintPoly(arrow);
    KillPoly(arrow);
    EXPECT_EQ(drawn(right - 18, top + 5, 14, 8),
              (Rows{"..............", ".###########..", "..#########...", "...#######....", "....#####.....",
                    ".....###......", "......#.......", ".............."}));
}

TEST_F(QuickDrawDetails, AnEtchedPanelHasWhiteBesideItsBlueFrame)
{
    useDepth(32);
    const Rect ground{0, 0, 30, 30}, panel{5, 5, 12, 14};
    Rect light = panel;
    PaintRect(&ground);
    OffsetRect(&light, -1, -1);
    ForeColor(whiteColor);
    FrameRect(&light);
    ForeColor(blueColor);
    FrameRect(&panel);
    ForeColor(blackColor);
    EXPECT_EQ(drawn(3, 3, 12, 10),
              (Rows{"############", "#.........##", "#.bbbbbbbbb#", "#.b######.b#", "#.b######.b#", "#.b######.b#",
                    "#.b######.b#", "#.b.......b#", "##bbbbbbbbb#", "############"}));
}

TEST_F(QuickDrawDetails, ADefaultButtonsOutlineHasCornersOfSixteenAndAPenOfThreePixels)
{
    Rect button{20, 20, 40, 80};
    PenSize(3, 3);
    InsetRect(&button, -4, -4);
    FrameRoundRect(&button, 16, 16);
    PenSize(1, 1);
    EXPECT_EQ(drawn(15, 15, 14, 12),
              (Rows{"..............", "......########", "....##########", "...###########", "..#####.......",
                    "..###.........", ".####.........", ".###..........", ".###..........", ".###..........",
                    ".###..........", ".###.........."}));
    const auto canvas = pixels();
    for (int v = 16; v < 44; ++v)
        for (int h = 16; h < 84; ++h) {
            ASSERT_EQ(at(canvas, h, v), at(canvas, 99 - h, v));
            ASSERT_EQ(at(canvas, h, v), at(canvas, h, 59 - v));
        }
}
