// What a riders file costs a job, and the meter a plate.
#include <fstream>
#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

#include "benches.h"
#include "screen_film.h"

namespace {

namespace meter = riders::meter;

constexpr double dpi = 1200;
constexpr double pageWidth = 8.27, pageHeight = 11.69;  // inches, A4

// Text, rules and tints, as a brochure has them.
void writePages(const std::filesystem::path &file, int pages)
{
    std::ofstream out(file);
    out << "%!PS-Adobe-3.0\n%%EndComments\n/Times-Roman findfont 12 scalefont setfont\n";
    for (int page = 0; page < pages; ++page) {
        out << ".7 setgray 50 500 400 250 rectfill .3 setgray 50 400 200 80 rectfill 0 setgray\n";
        for (int line = 0; line < 25; ++line)
            out << "50 " << 50 + 14 * line << " moveto (Some words of page " << page
                << ", as many as a line can hold, and a few more of them) show\n";
        out << "showpage\n";
    }
}

// Photographs of 6 megapixels over most of a page.
void writePhotographs(const std::filesystem::path &file, int pages)
{
    constexpr int width = 2000, height = 3000;
    std::mt19937 random(1);
    std::ofstream out(file, std::ios::binary);
    out << "%!PS-Adobe-3.0\n%%EndComments\n/row " << width << " string def\n";
    for (int page = 0; page < pages; ++page) {
        out << "gsave 40 40 translate 500 750 scale " << width << " " << height << " 8 [" << width << " 0 0 "
            << height << " 0 0] {currentfile row readstring pop} image\n";
        std::string row(width, 0);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                row[x] = static_cast<char>((x / 12 + y / 20 + random() % 16) % 256);
            out << row;
        }
        out << "\ngrestore showpage\n";
    }
}

struct Chosen {
    std::string frequency, angle;
};

void makeFragment(const std::filesystem::path &riders, const std::string &file, const Chosen &pair)
{
    std::filesystem::remove(file);
    if (runProcess(
            {riders, "make", "-o", file, "--frequency", pair.frequency, "--angle", pair.angle, "--spot", "Round"})
            .status != 0)
        throw std::runtime_error("riders make failed");
}

// A page of photographs is quick to paint, so what the threshold array costs shows here most.
void measurePhotographs(const std::filesystem::path &riders, const Workplace &place, double at, const Chosen &pair)
{
    const std::string fragment = place / "photoscreen", plain = place / "plain.ps";
    makeFragment(riders, fragment, pair);
    std::ofstream(plain) << "%!PS\n"
                         << pair.frequency << " " << pair.angle
                         << " {dup mul exch dup mul add 1 exch sub} setscreen\n";
    long ours = 0, theirs = 0;
    const auto measured = [&](const std::string &screen, long &peak) {
        const ProcessRun result =
            runToFilm(place.path(), {screen, place / "photographs.ps"}, at, pageWidth, pageHeight);
        peak = std::max(peak, result.peakKiB);
        return result.seconds;
    };
    const std::string what = "4 photographs, " + pair.frequency + " lpi at " + std::to_string(int(at)) + " dpi";
    printRow(what + " : setscreen",
             sideBySide(
                 3, [&] { return measured(fragment, ours); }, [&] { return measured(plain, theirs); }),
             1.05);
    printFigure("  memory more than with setscreen", static_cast<double>(ours - theirs) / 1024, "MiB", 64);
}

}  // namespace

void measureScreenTime(const std::filesystem::path &riders)
{
    Workplace place;
    const std::string fragment = place / "fragment", job = place / "job.ps", nothing = place / "nothing.ps";
    makeFragment(riders, fragment, {"85", "37.5"});
    writePages(job, 10);
    writePhotographs(place / "photographs.ps", 4);
    std::ofstream(nothing) << "%!PS\n";
    const auto seconds = [&](const std::vector<std::string> &files) {
        return runToFilm(place.path(), files, dpi, pageWidth, pageHeight).seconds;
    };
    printHeading("Printing with a riders file, at 1200 dpi where nothing else is said");
    printRow("10 pages with a riders file : without",
             sideBySide(
                 5,
                 [&] {
                     return seconds({fragment, job});
                 },
                 [&] { return seconds({job}); }),
             1.02);
    const Pair empty = sideBySide(
        9,
        [&] {
            return seconds({fragment, nothing});
        },
        [&] { return seconds({nothing}); });
    printFigure("  a job of nothing takes longer by", (empty.ours - empty.theirs) * 1e3, "ms", 10);
    for (double at : {600.0, 1200.0, 2400.0})
        for (const Chosen &pair : {Chosen{"85", "37.5"}, Chosen{"133", "15"}})
            measurePhotographs(riders, place, at, pair);
}

namespace {

// A plate with marks all over and a tint of 4 by 5 inches low on it; 150 lines
// per inch at 0 degrees, so that rows repeat and painting is quick.
std::vector<std::uint8_t> plate(const meter::BitPage &size)
{
    std::vector<std::uint8_t> bits(size.rowBytes * static_cast<std::size_t>(size.height));
    std::mt19937 random(1);
    for (int y = 0; y < size.height; ++y) {
        std::uint8_t *row = &bits[static_cast<std::size_t>(y) * size.rowBytes];
        const bool tint = y > 15000 && y <= 27000;
        for (std::size_t x = 0; x < size.rowBytes; ++x)
            if (tint && x >= 600 && x < 1800)
                row[x] = y % 16 < 8 && x % 2 == 0 ? 0xff : 0;
            else if (y % 400 < 200 && random() % 3 == 0)
                row[x] = 0x7e;
    }
    return bits;
}

}  // namespace

void measureMeter()
{
    meter::BitPage page{nullptr, 19843, 28063, 2481, 2400};
    const std::vector<std::uint8_t> bits = plate(page);
    page.bits = bits.data();
    printHeading("Measuring a screen");
    meter::ScreenReading reading;
    const double seconds = secondsOf([&] { reading = meter::readScreen(page); });
    if (std::abs(reading.frequency - 150) > 0.1)
        throw std::runtime_error("the meter does not find the plate's screen");
    printFigure("a plate of A4 at 2400 dpi, its tint found", seconds * 1e3, "ms", 200);
}
