// Random drawing, compared with the slow reference and with other scales.
#include <random>

#include "quickdraw_reference.h"

namespace {

class QuickDrawReference : public CanvasTest {
protected:
    void useDisplay(int depth, int scale)
    {
        closeCanvas();
        machine.setDisplays({{{0, 0, 200, 260}, depth, scale}});
        GetMainDevice();
        openCanvas();
        scale_ = scale;
    }
    std::vector<std::uint32_t> devicePixels() const
    {
        const toolbox::Picture display = toolbox::displayPicture(0);
        std::vector<std::uint32_t> result;
        for (int y = top * scale_; y < (top + height) * scale_; ++y) {
            auto row = display.pixels.begin() + y * display.width + left * scale_;
            result.insert(result.end(), row, row + width * scale_);
        }
        return result;
    }
    // How many pixels of the display outside the canvas are not white.
    int inkedBeside() const
    {
        const toolbox::Picture display = toolbox::displayPicture(0);
        int count = 0;
        for (int y = 0; y < display.height; ++y)
            for (int x = 0; x < display.width; ++x) {
                const int h = x / scale_ - left, v = y / scale_ - top;
                const bool inside = h >= 0 && h < width && v >= 0 && v < height;
                count += !inside &&
                         display.pixels[std::size_t(y) * std::size_t(display.width) + std::size_t(x)] != white;
            }
        return count;
    }

    int scale_ = 1;
};

// Draws the same at random on the port and the slow canvas.
class Scribbler {
public:
    Scribbler(unsigned seed, bool smoothShapes, SlowCanvas *slow)
        : random_(seed), smoothShapes_(smoothShapes), slow_(slow)
    {
    }

    void draw()
    {
        chooseState();
        const Rect r = rect();
        switch (between(0, smoothShapes_ ? 8 : 6)) {
        case 0:
            both([&] { FrameRect(&r); }, [&] { slow_->frameRect(r); });
            break;
        case 1:
            both([&] { PaintRect(&r); }, [&] { slow_->paintRect(r); });
            break;
        case 2:
            both([&] { EraseRect(&r); }, [&] { slow_->eraseRect(r); });
            break;
        case 3:
            both([&] { InvertRect(&r); }, [&] { slow_->invertRect(r); });
            break;
        case 4:
            fill(r);
            break;
        case 5:
            line();
            break;
        case 6:
            scroll(r);
            break;
        case 7:
            roundRect(r);
            break;
        case 8:
            polygon();
            break;
        }
    }

private:
    int16_t between(int low, int high) { return int16_t(low + int(random_() % unsigned(high - low + 1))); }
    Point point() { return {between(-15, CanvasSize::height + 10), between(-15, CanvasSize::width + 10)}; }
    Rect rect()
    {
        const Point a = point(), b = point();
        Rect r{std::min(a.v, b.v), std::min(a.h, b.h), std::max(a.v, b.v), std::max(a.h, b.h)};
        return between(0, 15) ? r : Rect{r.bottom, r.left, r.top, r.right};  // now and then an empty one
    }
    Pattern pattern()
    {
        Pattern result{};
        for (unsigned char &row : result.pat)
            row = static_cast<unsigned char>(random_());
        return between(0, 2) ? result : qd.black;
    }
    int32_t color()
    {
        return between(0, 1)
                   ? eightColors[random_() % 8]
                   : toolbox::quickdraw::directColor(uint8_t(random_()), uint8_t(random_()), uint8_t(random_()));
    }
    template <typename Fast, typename Slow>
    void both(Fast fast, Slow slow)
    {
        fast();
        if (slow_)
            slow();
    }

    void chooseState()
    {
        SlowCanvas::State state;
        state.penSize = {between(1, 5), between(1, 5)};
        state.mode = between(patCopy, patBic);
        state.pattern = pattern();
        state.background = between(0, 1) ? pattern() : qd.white;
        state.fore = color();
        state.back = color();
        PenSize(state.penSize.h, state.penSize.v);
        PenMode(int16_t(state.mode));
        PenPat(&state.pattern);
        qd.thePort->bkPat = state.background;
        ForeColor(state.fore);
        BackColor(state.back);
        state.clip = clip();
        if (slow_)
            slow_->state = state;
    }

    // Nothing, a rectangle, or what is in exactly one of two rectangles.
    std::function<bool(int, int)> clip()
    {
        const Rect one = rect(), other = rect(), all{-1000, -1000, 1000, 1000};
        auto in = [](const Rect &r, int h, int v) {
            return h >= r.left && h < r.right && v >= r.top && v < r.bottom;
        };
        switch (between(0, 3)) {
        case 0:
            ClipRect(&one);
            return [=](int h, int v) { return in(one, h, v); };
        case 1: {
            RgnHandle a = NewRgn(), b = NewRgn();
            RectRgn(a, &one);
            RectRgn(b, &other);
            XorRgn(a, b, a);
            SetClip(a);
            DisposeRgn(a);
            DisposeRgn(b);
            return [=](int h, int v) { return in(one, h, v) != in(other, h, v); };
        }
        default:
            ClipRect(&all);
            return [](int, int) { return true; };
        }
    }

    void fill(const Rect &r)
    {
        const Pattern filling = pattern();
        both([&] { FillRect(&r, &filling); }, [&] { slow_->fillRect(r, filling); });
    }
    void line()
    {
        const Point from = point(), to = point();
        MoveTo(from.h, from.v);
        both([&] { LineTo(to.h, to.v); }, [&] { slow_->line(from, to); });
    }
    void scroll(const Rect &r)
    {
        const int16_t dh = between(-30, 30), dv = between(-30, 30);
        both([&] { ScrollRect(&r, dh, dv, nullptr); }, [&] { slow_->scrollRect(r, dh, dv); });
    }
    void roundRect(const Rect &r)
    {
        const int16_t ovalWidth = between(0, 60), ovalHeight = between(0, 60);
        if (between(0, 1))
            both([&] { PaintRoundRect(&r, ovalWidth, ovalHeight); },
                 [&] { slow_->paintRoundRect(r, ovalWidth, ovalHeight); });
        else
            both([&] { FrameRoundRect(&r, ovalWidth, ovalHeight); },
                 [&] { slow_->frameRoundRect(r, ovalWidth, ovalHeight); });
    }
    void polygon()
    {
        std::vector<Point> points;
        for (int count = between(3, 7); count > 0; --count)
            points.push_back(point());
        PolyHandle polygon = OpenPoly();
        MoveTo(points[0].h, points[0].v);
        for (std::size_t i = 1; i < points.size(); ++i)
            LineTo(points[i].h, points[i].v);
        ClosePoly();
        both([&] { PaintPoly(polygon); }, [&] { slow_->paintPolygon(points); });
        KillPoly(polygon);
    }

    std::mt19937 random_;
    bool smoothShapes_;
    SlowCanvas *slow_;
};

std::vector<std::uint32_t> enlarged(const std::vector<std::uint32_t> &small, int width, int scale)
{
    std::vector<std::uint32_t> large;
    const int height = int(small.size()) / width;
    for (int y = 0; y < height * scale; ++y)
        for (int x = 0; x < width * scale; ++x)
            large.push_back(small[std::size_t(y / scale * width + x / scale)]);
    return large;
}

}  // namespace

TEST_F(QuickDrawReference, RandomDrawingMatchesAtEveryDepthAndScale)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    unsigned drawing = seed;
    for (int scale : {1, 2, 3})
        for (int depth : {1, 2, 4, 8, 32}) {
            useDisplay(depth, scale);
            SlowCanvas slow(depth, scale);
            Scribbler scribbler(++drawing, true, &slow);
            for (int shape = 0; shape < 36 / (scale * scale); ++shape) {
                scribbler.draw();
                const auto drawn = devicePixels();
                for (std::size_t i = 0; i < drawn.size(); ++i)
                    ASSERT_EQ(drawn[i], slow.pixels()[i])
                        << "depth " << depth << " scale " << scale << " shape " << shape << " at "
                        << int(i) % slow.width() << "," << int(i) / slow.width();
            }
            EXPECT_EQ(inkedBeside(), 0);
        }
}

TEST_F(QuickDrawReference, AllButCurvesAndSlantsIsTheSameAtEveryScaleButLarger)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int round = 0; round < 4; ++round)
        for (int depth : {1, 2, 4, 8, 32}) {
            std::vector<std::uint32_t> small;
            for (int scale : {1, 2, 3}) {
                useDisplay(depth, scale);
                Scribbler scribbler(seed + unsigned(round), false, nullptr);
                for (int shape = 0; shape < 40; ++shape)
                    scribbler.draw();
                if (scale == 1)
                    small = devicePixels();
                else
                    ASSERT_TRUE(devicePixels() == enlarged(small, width, scale)) << depth << " " << scale;
            }
        }
}
