// A blank port in the middle of the display, and its pixels by local coordinates.
#pragma once

#include "quickdraw/port.h"
#include "support/toolbox_test.h"
#include "toolbox/host/picture.h"
#include "toolbox/quickdraw.h"

constexpr std::uint32_t white = 0xFFFFFF, black = 0x000000;
constexpr int32_t eightColors[] = {blackColor, whiteColor,  redColor,     greenColor,
                                   blueColor,  yellowColor, magentaColor, cyanColor};

struct CanvasSize {
    static constexpr int width = 120, height = 90;
};

class CanvasTest : public ToolboxTest, protected CanvasSize {
protected:
    static constexpr int left = 100, top = 60;

    void SetUp() override
    {
        ToolboxTest::SetUp();
        openCanvas();
    }
    void TearDown() override
    {
        closeCanvas();
        ToolboxTest::TearDown();
    }

    // The display is blank, and nothing else draws on it.
    void openCanvas()
    {
        GrafPtr desktop = toolbox::quickdraw::desktopPort();
        SetPort(desktop);
        EraseRect(&desktop->portRect);
        toolbox::quickdraw::openPort(&port);
        toolbox::quickdraw::placePort(&port, {top, left}, width, height);
        SetRectRgn(port.visRgn, 0, 0, width, height);
        SetPort(&port);
    }
    // The canvas keeps its contents.
    void useDepth(int depth)
    {
        machine.setDisplays({{{0, 0, 480, 640}, depth}});
        GetMainDevice();
    }
    void closeCanvas() { toolbox::quickdraw::closePort(&port); }

    // The canvas with a rim of what is around it.
    std::vector<std::uint32_t> pixels() const
    {
        const toolbox::Picture display = toolbox::displayPicture(0);
        std::vector<std::uint32_t> result;
        for (int v = -rim; v < height + rim; ++v)
            for (int h = -rim; h < width + rim; ++h)
                result.push_back(display.pixels[std::size_t(v + top) * display.width + (h + left)]);
        return result;
    }
    static std::uint32_t at(const std::vector<std::uint32_t> &from, int h, int v)
    {
        return from[std::size_t(v + rim) * (width + 2 * rim) + (h + rim)];
    }
    std::uint32_t pixel(int h, int v) const { return at(pixels(), h, v); }
    // How many pixels of the canvas and its rim are not white.
    int inked() const
    {
        int count = 0;
        for (std::uint32_t value : pixels())
            count += value != white;
        return count;
    }

    static constexpr int rim = 20;
    GrafPort port{};
};
