// The page that zooms, in a real browser without a display: how soon it shows the sheet, and how smoothly dots
// move.
#include <chrono>
#include <fstream>
#include <stdexcept>

#include "benches.h"
#include "printed/chromium.h"
#include "processes.h"

namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 1280, kHeight = 800;
constexpr double kSeconds = 3;  // of dragging

void writeSheet(const fs::path &file, int width, int height)
{
    std::ofstream(file) << "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\n<</PageSize [" << width << " "
                        << height << "]>> setpagedevice\n.5 .3 .2 .1 setcmykcolor 20 20 " << width - 40 << " "
                        << height - 40 << " rectfill\nshowpage\n%%EOF\n";
}

// Milliseconds for a picture while dots at 1 to 1 are dragged from side to side.
double draggedPicture(Chromium &browser)
{
    browser.valueOf("(location.hash = '#page-1-dots', loupe.map.setZoom(0, {animate: false}), 1)");
    browser.await("document.getElementById('sheet').getAttribute('aria-busy') === 'false'");
    browser.valueOf(
        "(window.pictures = 0, (function count() { ++window.pictures; requestAnimationFrame(count); })(),"
        " window.began = performance.now(), 1)");
    const auto began = std::chrono::steady_clock::now();
    const auto seconds = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    };
    browser.mouse("mousePressed", 500, 400);
    int x = 500, step = 6;
    while (seconds() < kSeconds) {
        x += step;
        if (x < 100 || x > 900)
            step = -step;
        browser.mouse("mouseMoved", x, 400 + x / 4);
    }
    const double each = std::stod(browser.valueOf("(performance.now() - window.began) / window.pictures"));
    browser.mouse("mouseReleased", x, 400);
    return each;
}

void measureSheet(const fs::path &riders, const char *name, int width, int height, const char *dpi)
{
    const Workplace place;
    writeSheet(place / "sheet.ps", width, height);
    fs::create_directory(place / "browser");
    const ProcessRun made =
        runProcess({riders, "film", place / "sheet.ps", "--screens", "offset", "--frequency", "133", "--dpi", dpi,
                    "--look", "--loupe", "--quiet", "-o", place / "films"},
                   place / "said");
    if (made.status != 0)
        throw std::runtime_error("no films were made");
    printFigure(std::string(name) + ": films and tiles", made.seconds, "s", 1e9);
    printFigure("  its memory besides the interpreter's", static_cast<double>(made.peakKiB) / 1024, "MiB", 400);
    Chromium browser(place / "browser", "file://" + (place / "films-look/loupe.html").string(), kWidth, kHeight);
    browser.await("performance.getEntriesByName('loupe-shown').length > 0");
    printFigure("  until the sheet is shown",
                std::stod(browser.valueOf("performance.getEntriesByName('loupe-shown')[0].startTime")), "ms",
                1000);
    printFigure("  for a picture while four inks are dragged", draggedPicture(browser), "ms", 17);
}

}  // namespace

void measureLoupeSample(const fs::path &riders)
{
    printHeading("The page that zooms, in Chromium without a graphics card");
    measureSheet(riders, "A4 at 1200 dpi", 595, 842, "1200");
}

void measureLoupe(const fs::path &riders)
{
    measureLoupeSample(riders);
    measureSheet(riders, "A0 at 2400 dpi", 2384, 3370, "2400");
}
