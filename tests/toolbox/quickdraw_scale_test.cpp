// Displays with several device pixels per pixel.
#include "quickdraw/devices.h"
#include "quickdraw/pictures.h"
#include "quickdraw_canvas.h"
#include "toolbox/events.h"

using toolbox::Picture;

namespace {

class QuickDrawScale : public CanvasTest {
protected:
    void useScale(int scale)
    {
        machine.setDisplays({{{0, 0, 480, 640}, 8, scale}});
        GetMainDevice();
        openCanvas();
    }
    Picture shown() const { return toolbox::displayPicture(0); }
};

Picture enlarged(const Picture &small, int scale)
{
    Picture large{small.width * scale, small.height * scale, {}};
    for (int y = 0; y < large.height; ++y)
        for (int x = 0; x < large.width; ++x)
            large.pixels.push_back(small.pixels[std::size_t(y / scale) * small.width + x / scale]);
    return large;
}

int darkIn(const Picture &picture)
{
    return int(std::count_if(picture.pixels.begin(), picture.pixels.end(),
                             [](std::uint32_t pixel) { return (pixel & 0xFF) < 128; }));
}

}  // namespace

TEST_F(QuickDrawScale, ThePresentedPictureIsScaleTimesTheDisplay)
{
    for (int scale : {2, 3, 1}) {
        closeCanvas();
        useScale(scale);
        EXPECT_EQ(shown().width, 640 * scale);
        Delay(1, nullptr);
        EXPECT_EQ(machine.lastPicture(0).width, 640 * scale);
        EXPECT_EQ(machine.lastPicture(0).height, 480 * scale);
    }
}

TEST_F(QuickDrawScale, AChangeOfScaleAloneIsNoticed)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8, 2}});
    EXPECT_TRUE(toolbox::quickdraw::rebuildDevices());
    EXPECT_FALSE(toolbox::quickdraw::rebuildDevices());
}

TEST_F(QuickDrawScale, TextIsDrawnAtTheSizeOfTheDevice)
{
    MoveTo(5, 40);
    TextSize(24);
    DrawString(P("Screen"));
    const Picture small = shown();
    closeCanvas();
    useScale(3);
    MoveTo(5, 40);
    TextSize(24);
    DrawString(P("Screen"));
    const Picture large = shown();
    EXPECT_NE(large.pixels, enlarged(small, 3).pixels);
    EXPECT_NEAR(darkIn(large), 9 * darkIn(small), 9 * darkIn(small) / 5);
}

TEST_F(QuickDrawScale, TextUnderAMenuAndInScrolledPartsIsNotCoarsened)
{
    useScale(2);
    MoveTo(5, 40);
    DrawString(P("Frequency"));
    const Picture before = shown();
    const toolbox::quickdraw::SavedBits bits = toolbox::quickdraw::saveBits({top, left, top + 60, left + 100});
    EraseRect(&port.portRect);
    EXPECT_NE(shown().pixels, before.pixels);
    ASSERT_TRUE(toolbox::quickdraw::restoreBits(bits));
    EXPECT_EQ(shown().pixels, before.pixels);
    ScrollRect(&port.portRect, 7, -9, nullptr);
    EXPECT_NE(shown().pixels, before.pixels);
    ScrollRect(&port.portRect, -7, 9, nullptr);
    EXPECT_EQ(shown().pixels, before.pixels);
}

TEST_F(QuickDrawScale, WhatWasSavedOfOtherDisplaysIsNotRestored)
{
    const Rect mark{10, 10, 20, 20};
    PaintRect(&mark);
    const toolbox::quickdraw::SavedBits bits = toolbox::quickdraw::saveBits({top, left, top + 60, left + 100});
    closeCanvas();
    useScale(2);
    EXPECT_FALSE(toolbox::quickdraw::restoreBits(bits));
    EXPECT_EQ(darkIn(shown()), 0);
}

TEST_F(QuickDrawScale, ScrollsBetweenDisplaysOfDifferentScales)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8, 1}, {{0, 640, 480, 1280}, 8, 2}});
    GetMainDevice();
    SetPort(toolbox::quickdraw::desktopPort());
    const Rect all{0, 0, 480, 1280}, mark{100, 630, 110, 638}, strip{90, 600, 130, 680};
    EraseRect(&all);
    PaintRect(&mark);
    ScrollRect(&strip, 12, 0, nullptr);
    EXPECT_EQ(darkIn(toolbox::displayPicture(0)), 0);
    EXPECT_EQ(darkIn(toolbox::displayPicture(1)), 8 * 10 * 4);
    ScrollRect(&strip, -6, 0, nullptr);
    EXPECT_EQ(darkIn(toolbox::displayPicture(0)), 4 * 10);
    EXPECT_EQ(darkIn(toolbox::displayPicture(1)), 4 * 10 * 4);
    SetPort(&port);
}

TEST_F(QuickDrawScale, ADisplayIsPresentedOnlyWhenSomethingWasDrawn)
{
    useScale(2);
    Delay(1, nullptr);
    int presented = 0;
    machine.setWatcher([&](int, const Picture &) { ++presented; });
    Delay(1, nullptr);
    EXPECT_EQ(presented, 0);
    const Rect mark{10, 10, 20, 20};
    PaintRect(&mark);
    Delay(1, nullptr);
    EXPECT_EQ(presented, 1);
    machine.setWatcher({});
}
