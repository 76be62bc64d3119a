#include "quickdraw/devices.h"
#include "quickdraw/fonts.h"
#include "quickdraw/pictures.h"
#include "quickdraw/surface.h"
#include "quickdraw_canvas.h"
#include "toolbox/events.h"

using QuickDrawPictures = CanvasTest;
using toolbox::Picture;
using toolbox::quickdraw::restoreBits;
using toolbox::quickdraw::saveBits;
using toolbox::quickdraw::SavedBits;

TEST_F(QuickDrawPictures, ArePutBackAsTheyWereTaken)
{
    const Rect mark{5, 5, 20, 20}, area{70, 90, 90, 130};
    ForeColor(greenColor);
    PaintRect(&mark);
    const auto before = pixels();
    const SavedBits bits = saveBits(area);
    ASSERT_EQ(bits.parts.size(), 1u);
    EXPECT_EQ(bits.parts[0].picture.width, 40);
    EXPECT_EQ(bits.parts[0].picture.height, 20);
    InvertRect(&port.portRect);
    EXPECT_TRUE(restoreBits(bits));
    InvertRect(&port.portRect);
    EXPECT_TRUE(restoreBits(bits));
    EXPECT_EQ(pixels(), before);
}

TEST_F(QuickDrawPictures, AreTakenAcrossDisplaysAndBesideThem)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 480, 1280}, 8}});
    GetMainDevice();
    SetPort(toolbox::quickdraw::desktopPort());
    const Rect across{100, 630, 110, 650}, beyond{470, 630, 490, 650};
    PaintRect(&across);
    const SavedBits bits = saveBits(across);
    ASSERT_EQ(bits.parts.size(), 2u);
    EXPECT_EQ(bits.parts[1].picture.pixels, std::vector<std::uint32_t>(100, 0));
    PaintRect(&beyond);
    const SavedBits edge = saveBits(beyond);
    EXPECT_EQ(edge.parts[0].picture.height, 10) << "there is no display below";
    EXPECT_TRUE(restoreBits(edge));
    EXPECT_TRUE(saveBits({500, 10, 510, 20}).parts.empty());
    EXPECT_EQ(toolbox::displayPicture(1).width, 640);
    EXPECT_THROW(toolbox::displayPicture(2), std::out_of_range);
}

TEST_F(QuickDrawPictures, AreWrittenAsPngAndReadBack)
{
    MoveTo(10, 40);
    ForeColor(magentaColor);
    DrawString(P("Riders"));
    const Picture display = toolbox::displayPicture(0);
    ASSERT_TRUE(toolbox::writePng(folder / "display.png", display));
    const Picture back = toolbox::readPng(folder / "display.png");
    EXPECT_EQ(back.width, display.width);
    EXPECT_EQ(back.height, display.height);
    EXPECT_EQ(back.pixels, display.pixels);
}

TEST_F(QuickDrawPictures, ThatCannotBeWrittenLeaveNoFile)
{
    EXPECT_FALSE(toolbox::writePng(folder / "missing" / "x.png", toolbox::displayPicture(0)));
    EXPECT_FALSE(toolbox::writePng(folder / "empty.png", Picture{}));
    EXPECT_FALSE(std::filesystem::exists(folder / "empty.png"));
    writeFile(folder / "no.png", "this is not a picture");
    EXPECT_EQ(toolbox::readPng(folder / "no.png").width, 0);
}

TEST_F(QuickDrawPictures, ChangedDisplaysAreNoticedOnce)
{
    machine.setDisplays({{{0, 0, 600, 800}, 32}});
    EXPECT_TRUE(toolbox::quickdraw::rebuildDevices());
    EXPECT_FALSE(toolbox::quickdraw::rebuildDevices());
    EXPECT_EQ(toolbox::displayPicture(0).width, 800);
}

TEST_F(QuickDrawPictures, ThatAreNotWantedAreNotKeptButTextIsMeasuredAndTraced)
{
    const int16_t seenWidth = StringWidth(P("Riders"));
    closeCanvas();
    toolbox::stop();
    machine.wantPictures(false);
    toolbox::start(configuration, machine);
    openCanvas();
    std::vector<std::string> drawing;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawing));
    RgnHandle update = NewRgn();
    const Rect r{0, 0, 40, 40};
    MoveTo(10, 30);
    DrawString(P("Riders"));
    InvertRect(&r);
    ScrollRect(&r, 0, -5, update);
    EXPECT_EQ(drawing.size(), 3u);
    EXPECT_FALSE(EmptyRgn(update));
    EXPECT_EQ(port.pnLoc.h, 10 + seenWidth);
    EXPECT_EQ(toolbox::displayPicture(0).pixels.size(), 0u);
    const SavedBits bits = saveBits({100, 100, 110, 110});
    EXPECT_TRUE(bits.parts.empty());
    EXPECT_TRUE(restoreBits(bits));
    machine.setDisplays({{{0, 0, 480, 640}, 1}});
    Delay(10, nullptr);
    EXPECT_EQ(machine.lastPicture(0).width, 0);
    DisposeRgn(update);
}

TEST(QuickDrawSurface, CoversSeveralDevicePixelsForEachAtAScale)
{
    namespace quick = toolbox::quickdraw;
    quick::Surface surface({10, 10, 20, 30}, 8, 3);
    EXPECT_EQ(surface.picture().width, 60);
    EXPECT_EQ(surface.picture().height, 30);
    GrafPort port{};
    port.fgColor = blackColor;
    port.bkColor = whiteColor;
    const Pattern solid = {{255, 255, 255, 255, 255, 255, 255, 255}};
    const Pattern gray = {{0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}};
    surface.takeChanged();
    surface.fill(surface.device(quick::Area(Rect{12, 14, 13, 16})), quick::Ink::of(port, solid, patCopy));
    const auto &pixels = surface.picture().pixels;
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0u), 2 * 9);
    EXPECT_EQ(pixels[6 * 60 + 12], 0u);
    EXPECT_EQ(pixels[8 * 60 + 17], 0u);
    const auto changed = surface.takeChanged();
    ASSERT_TRUE(changed);
    const Rect expected{6, 12, 9, 18};
    EXPECT_TRUE(EqualRect(&*changed, &expected));
    surface.fill(surface.deviceExtent(), quick::Ink::of(port, gray, patCopy));
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0u), 100 * 9);
    EXPECT_TRUE(surface.takeChanged());
    EXPECT_FALSE(surface.takeChanged());
}
