// The page that zooms: its tiles against the films, and itself in a browser.
#include <cmath>

#include "host/proof_support.h"
#include "looking/look_folder.h"
#include "looking/tiles/tile_set.h"
#include "printed/chromium.h"
#include "support/command.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

namespace {

using riders::plates::BitPlate;
using Names = std::vector<std::string>;

// Three inks and a spot ink, each with an angle of its own, 2.5 by 2 inches.
constexpr const char *kZoomedJob =
    "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\n"
    "<< /PageSize [180 144] >> setpagedevice\n"
    ".5 .3 0 .1 setcmykcolor 6 6 110 132 rectfill\n"
    "[/Separation (Gold Ink) /DeviceCMYK {dup .2 mul exch dup .4 mul exch .8 mul 0}]\n"
    "setcolorspace .4 setcolor 120 6 54 132 rectfill\n"
    "showpage\n%%EOF\n";
const Names kInks = {"Cyan", "Magenta", "Black", "Gold-Ink"};

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return std::tolower(c); });
    return text;
}

// What the film prints: not mirrored and not negative, in square pixels; of its page alone.
BitPlate upright(const BitPlate &film, bool negativeAndMirrored, int rowTimes)
{
    BitPlate plate(film.width, film.height * rowTimes);
    for (int y = 0; y < plate.height; ++y)
        for (int x = 0; x < plate.width; ++x)
            if (film.at(negativeAndMirrored ? film.width - 1 - x : x, y / rowTimes) != negativeAndMirrored)
                plate.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
    return plate;
}

// How many pixels of the plate the tiles of level 0 in the folder show otherwise, and how many tiles there are.
std::pair<int, int> wrongPixels(const BitPlate &plate, const fs::path &folder)
{
    int wrong = 0, count = 0;
    for (int y = 0; y < plate.height; y += riders::looking::kTileSide)
        for (int x = 0; x < plate.width; x += riders::looking::kTileSide) {
            const fs::path file = folder / riders::looking::tileName(0, x / riders::looking::kTileSide,
                                                                     y / riders::looking::kTileSide);
            const bool there = fs::exists(file);
            const toolbox::Picture tile = there ? toolbox::readPng(file) : toolbox::Picture{};
            count += there ? 1 : 0;
            for (int down = 0; down < std::min(riders::looking::kTileSide, plate.height - y); ++down)
                for (int across = 0; across < std::min(riders::looking::kTileSide, plate.width - x); ++across) {
                    const bool inked = there && (tile.pixels[static_cast<size_t>(down * tile.width + across)] &
                                                 0xFFFFFF) != 0xFFFFFF;
                    wrong += inked != plate.at(x + across, y + down) ? 1 : 0;
                }
        }
    return {wrong, count};
}

class LoupeTest : public ::testing::Test {
protected:
    LoupeTest() { writeFile(folder / "job.ps", kZoomedJob); }

    CommandResult riders(const Names &words) { return runRiders(words, "", folder.path()); }
    TemporaryFolder folder;
};

TEST_F(LoupeTest, TilesOfAProofAreItsFilms)
{
    ASSERT_EQ(riders({"proof", "job.ps", "--loupe", "--dpi", "300", "-o", "out", "-q"}).err, "");
    for (const std::string &ink : kInks) {
        const std::string name = "page-1-" + lowered(ink);
        const auto [wrong, count] =
            wrongPixels(readFilm(folder / ("out/films/" + name + ".tif")).bits, folder / "out/loupe" / name);
        EXPECT_EQ(wrong, 0) << ink;
        EXPECT_GT(count, 1) << ink;
    }
    EXPECT_TRUE(riders::looking::isLookFolder(folder / "out"));
    // Replaced like any other.
    ASSERT_EQ(riders({"proof", "job.ps", "--dpi", "100", "-o", "out", "-q"}).err, "");
    EXPECT_FALSE(fs::exists(folder / "out/loupe"));
    EXPECT_FALSE(fs::exists(folder / "out/loupe.html"));
}

// Of any pixels, and however the film is to be exposed.
TEST_F(LoupeTest, TilesOfFilmsAreWhatTheyPrint)
{
    struct {
        Names words;
        bool negativeAndMirrored;
        int rowTimes;
    } const all[] = {{{"--dpi", "400x200"}, false, 2},
                     {{"--dpi", "401", "--negative", "--emulsion", "down"}, true, 1}};
    for (const auto &one : all) {
        Names words = {"film", "job.ps", "-o", "films", "--look", "--loupe", "--frequency", "30", "--quiet"};
        words.insert(words.end(), one.words.begin(), one.words.end());
        const CommandResult made = riders(words);
        ASSERT_EQ(made.out + made.err, "");
        for (const std::string &ink : kInks) {
            const BitPlate film = readFilm(folder / ("films/job_p01_" + ink + ".tif")).bits;
            const auto [wrong, count] = wrongPixels(upright(film, one.negativeAndMirrored, one.rowTimes),
                                                    folder / "films-look/loupe" / ("page-1-" + lowered(ink)));
            EXPECT_EQ(wrong, 0) << ink << " at " << one.words[1];
            EXPECT_GT(count, 1) << ink;
        }
        fs::remove_all(folder / "films");
    }
}

// The page lies somewhere on the sheet, at no whole byte; marks are not shown.
TEST_F(LoupeTest, TilesBeginWhereThePageDoes)
{
    ASSERT_EQ(riders({"film", "job.ps", "-o", "marked", "--look", "--loupe", "--dpi", "400", "--frequency", "30",
                      "--crop", "--register", "-q"})
                  .err,
              "");
    const std::string loupe = contentsOf(folder / "marked-look/loupe.html");
    EXPECT_NE(loupe.find("\"width\": 1000, \"height\": 800"), std::string::npos);
    const BitPlate film = readFilm(folder / "marked/job_p01_Cyan.tif").bits;
    EXPECT_GT(film.width, 1000);
    for (int left = (film.width - 1000) / 2 - 1; left <= (film.width - 1000) / 2 + 1; ++left)
        for (int top = (film.height - 800) / 2 - 1; top <= (film.height - 800) / 2 + 1; ++top) {
            BitPlate part(1000, 800);
            for (int y = 0; y < 800; ++y)
                for (int x = 0; x < 1000; ++x)
                    if (film.at(left + x, top + y))
                        part.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
            if (wrongPixels(part, folder / "marked-look/loupe/page-1-cyan").first == 0)
                return;
        }
    FAIL() << "the page on the film is not what the tiles show";
}

TEST_F(LoupeTest, AFilmThatIsTurnedHasNone)
{
    const CommandResult refused = riders({"film", "job.ps", "--look", "--loupe", "--rotate", "90"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.err.find("--rotate excludes --loupe"), std::string::npos) << refused.err;
}

// A proof of films of 45 lines per inch, and the films, made once.
class LoupePageTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        made = new TemporaryFolder;
        writeFile(*made / "job.ps", kZoomedJob);
        const Names screens = {"--dpi", "600",     "--screens",      "offset", "--frequency",
                               "45",    "--plate", "Gold Ink:30@60", "-q"};
        for (Names words : {Names{"proof", "--film", "job.ps", "--loupe", "-o", "out"},
                            Names{"film", "job.ps", "-o", "films"}}) {
            words.insert(words.end(), screens.begin(), screens.end());
            ASSERT_EQ(runRiders(words, "", made->path()).err, "");
        }
    }
    static void TearDownTestSuite() { delete made; }

    static std::string page(const std::string &fragment)
    {
        return "file://" + (*made / "out/loupe.html").string() + fragment;
    }

    inline static TemporaryFolder *made = nullptr;
    TemporaryFolder browsers;
};

struct Rgb {
    int red, green, blue;
};

Rgb pixelOf(const toolbox::Picture &screen, int x, int y)
{
    const std::uint32_t pixel = screen.pixels[static_cast<size_t>(y * screen.width + x)];
    return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
            static_cast<int>(pixel & 255)};
}

toolbox::Picture seenIn(Chromium &browser)
{
    const TemporaryFolder folder;
    writeFile(folder / "screen.png", browser.screen());
    return toolbox::readPng(folder / "screen.png");
}

bool isAbout(const Rgb &one, const Rgb &other)
{
    return std::abs(one.red - other.red) <= 3 && std::abs(one.green - other.green) <= 3 &&
           std::abs(one.blue - other.blue) <= 3;
}

// Two hundred pixels of the browser's each way, in the middle of what it shows of the sheet.
class ZoomedPage {
public:
    explicit ZoomedPage(Chromium &browser)
        : screen_(seenIn(browser)), left_(std::stoi(browser.valueOf(kPlace + "left"))),
          top_(std::stoi(browser.valueOf(kPlace + "top"))),
          times_(1 << std::stoi(browser.valueOf("loupe.map.getZoom()"))),
          fromX_(std::stoi(browser.valueOf("loupe.map.getPixelBounds().min.x"))),
          fromY_(std::stoi(browser.valueOf("loupe.map.getPixelBounds().min.y")))
    {
    }

    // How many are others than those inks over each other are.
    int wrong(const std::vector<std::pair<BitPlate, Rgb>> &inks) const
    {
        int count = 0;
        for (int y = 100; y < 300; ++y)
            for (int x = 100; x < 300; ++x) {
                Rgb colour{255, 255, 255};
                for (const auto &[plate, ink] : inks)
                    if (plate.at((fromX_ + x) / times_, (fromY_ + y) / times_))
                        colour = {colour.red * ink.red / 255, colour.green * ink.green / 255,
                                  colour.blue * ink.blue / 255};
                count += isAbout(pixelOf(screen_, left_ + x, top_ + y), colour) ? 0 : 1;
            }
        return count;
    }
    int times() const { return times_; }

private:
    const std::string kPlace = "document.getElementById('sheet').getBoundingClientRect().";
    const toolbox::Picture screen_;
    const int left_, top_, times_, fromX_, fromY_;
};

constexpr const char *kShown = "document.getElementById('sheet').getAttribute('aria-busy') === 'false'";

// Each pixel is the films' inks over each other, at any zoom that shows dots; by mouse, and by keys alone.
TEST_F(LoupePageTest, ABrowserShowsTheFilmsDots)
{
    const std::vector<std::pair<std::string, Rgb>> inks = {
        {"Cyan", {0, 158, 224}}, {"Magenta", {230, 0, 126}}, {"Black", {29, 29, 27}}};
    std::vector<std::pair<BitPlate, Rgb>> all;
    for (const auto &[ink, colour] : inks)
        all.emplace_back(readFilm(*made / ("films/job_p01_" + ink + ".tif")).bits, colour);
    Chromium browser(browsers.path(), page("#page-1-dots"), 900, 700);
    browser.valueOf("(loupe.map.setView([600, 480], 0, {animate: false}), 1)");
    browser.await(kShown);
    ZoomedPage dots(browser);
    EXPECT_EQ(dots.times(), 1);
    EXPECT_EQ(dots.wrong(all), 0);
    browser.valueOf("(loupe.map.options.inertia = false, 1)");  // it would go on moving while it is looked at
    browser.drag(500, 400, 380, 330);
    browser.await("loupe.map.getCenter().lng > 550");
    browser.await(kShown);
    EXPECT_EQ(ZoomedPage(browser).wrong(all), 0);
    // The sheet, then a plate off and on again.
    browser.valueOf("(document.getElementById('sheet').focus(), 1)");
    browser.press("+");
    browser.await("loupe.map.getZoom() === 1 && !document.querySelector('.leaflet-zoom-anim')");
    browser.await(kShown);
    EXPECT_EQ(ZoomedPage(browser).wrong(all), 0);
    browser.valueOf("(document.querySelector('#page').focus(), 1)");
    browser.press("Tab");
    EXPECT_EQ(browser.valueOf("document.activeElement.parentElement.textContent"), "Cyan");
    browser.press(" ");
    browser.await(kShown);
    EXPECT_EQ(ZoomedPage(browser).wrong({all[1], all[2]}), 0);
    browser.press(" ");
    browser.await(kShown);
    EXPECT_EQ(ZoomedPage(browser).wrong(all), 0);
    for (const std::string &url : browser.asked())
        EXPECT_TRUE(url.starts_with("file://" + (*made / "out").string()) || url == "about:blank") << url;
}

// In the middle of dots, where it was laid: on films, all over the sheet.
TEST_F(LoupePageTest, TheGridAskedForIsLaidThroughTheDots)
{
    Chromium browser(browsers.path(), page("#page-1-dots"), 900, 700);
    EXPECT_EQ(
        browser.valueOf("[...document.querySelectorAll('#grid option')].map(one => one.textContent).join('; ')"),
        "None; Cyan, 45 lpi, 15°; Magenta, 45 lpi, 75°; Black, 45 lpi, 45°; Gold Ink, 30 lpi, 60°");
    browser.valueOf("(document.querySelector('#grid').value = '0',"
                    " document.querySelector('#grid').dispatchEvent(new Event('change')), 1)");
    for (const char *box : {"1", "2", "3"})
        browser.valueOf(std::string("(document.querySelectorAll('#plates input')[") + box + "].click(), 1)");
    browser.valueOf("(loupe.map.setView([300, 250], 2, {animate: false}), 1)");
    browser.await(kShown);
    const toolbox::Picture screen = seenIn(browser);
    // Where lines cross there is ink on both sides of them, since this tint has dots.
    const double turn = 15 * 3.14159265 / 180, apart = 600 / 45.0 * 4;
    const std::string grid = "JSON.parse(document.getElementById('sheets').textContent).pages[0].plates[0].grid.";
    const double x = std::stod(browser.valueOf(grid + "x")) * 4 -
                     std::stod(browser.valueOf("loupe.map.getPixelBounds().min.x")),
                 y = std::stod(browser.valueOf(grid + "y")) * 4 -
                     std::stod(browser.valueOf("loupe.map.getPixelBounds().min.y"));
    const int top = std::stoi(browser.valueOf("document.getElementById('sheet').getBoundingClientRect().top"));
    int crossings = 0, onLines = 0, onDots = 0;
    for (int i = -60; i <= 60; ++i)
        for (int j = -60; j <= 60; ++j) {
            const double crossX = x + (i * std::cos(turn) - j * std::sin(turn)) * apart,
                         crossY = y + (i * std::sin(turn) + j * std::cos(turn)) * apart;
            if (crossX < 30 || crossX > 600 || crossY < 30 || crossY > 560)
                continue;
            ++crossings;
            const int atX = static_cast<int>(crossX), atY = static_cast<int>(crossY) + top;
            const Rgb middle = pixelOf(screen, atX, atY);
            onLines += middle.red > 150 && middle.green < 120 ? 1 : 0;
            // Between the lines, a little away from where they cross.
            const double aside = 6 * (std::cos(turn) - std::sin(turn)),
                         down = 6 * (std::cos(turn) + std::sin(turn));
            onDots +=
                isAbout(pixelOf(screen, static_cast<int>(crossX + aside), static_cast<int>(crossY + down) + top),
                        {0, 158, 224})
                    ? 1
                    : 0;
        }
    EXPECT_GT(crossings, 50);
    EXPECT_GT(onLines, crossings * 9 / 10);
    EXPECT_EQ(onDots, crossings);
}

TEST_F(LoupePageTest, TheWholeSheetFitsATelephoneAndIsDarkWhereTheDesktopIs)
{
    Chromium browser(browsers.path(), page(""), 360, 640);
    browser.await(kShown);
    EXPECT_EQ(browser.valueOf("document.documentElement.scrollWidth"), "360");
    EXPECT_EQ(browser.valueOf("loupe.map.getBounds().contains([[0, 0], [1200, 1500]])"), "true");
    EXPECT_EQ(browser.valueOf("getComputedStyle(document.body).backgroundColor"), "rgb(246, 244, 238)");
    browser.beDark();
    EXPECT_EQ(browser.valueOf("getComputedStyle(document.body).backgroundColor"), "rgb(36, 34, 30)");
    EXPECT_EQ(browser.valueOf("document.querySelectorAll('#plates input:checked').length"), "4");
    // 40 % of a gold on white paper, as light mixes.
    const int zoom = std::stoi(browser.valueOf("-loupe.map.getZoom()"));
    EXPECT_GE(zoom, 2);
}

TEST_F(LoupePageTest, ATileThatIsGoneIsSaid)
{
    fs::remove(*made / "out/loupe/page-1-cyan/0/0-0.png");
    Chromium browser(browsers.path(), page(""), 900, 700);
    browser.valueOf("(loupe.map.setView([200, 200], 0, {animate: false}), 1)");
    browser.await("document.getElementById('where').textContent === 'loupe/page-1-cyan/0/0-0.png cannot be read'");
}

}  // namespace
