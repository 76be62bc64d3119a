// A screen for each plate: how close the dots of every plate come to what its set says, and what that costs.
#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>

#include "benches.h"
#include "processes.h"
#include "screens/plate_films.h"
#include "screens/set_file.h"
#include "screens/set_names.h"
#include "screens/shapes.h"

namespace {

namespace fs = std::filesystem;
using riders::screens::PlateScreen;

struct Figures {
    std::vector<double> frequency, angle;  // errors, %, degrees
    std::string worst;

    void add(const PlateError &error, const std::string &of)
    {
        if (frequency.empty() || error.frequency / 0.2 + error.angle / 0.3 > most_) {
            most_ = error.frequency / 0.2 + error.angle / 0.3;
            worst = of;
        }
        frequency.push_back(error.frequency);
        angle.push_back(error.angle);
    }
    void print(const char *what) const
    {
        const auto median = [](std::vector<double> values) {
            std::sort(values.begin(), values.end());
            return values[values.size() / 2];
        };
        const double figures[] = {*std::max_element(frequency.begin(), frequency.end()), median(frequency),
                                  *std::max_element(angle.begin(), angle.end()), median(angle)};
        const bool reached = figures[0] <= 0.2 && figures[1] <= 0.05 && figures[2] <= 0.3 && figures[3] <= 0.03;
        std::printf("  %-34s %4zu %7.3f %7.3f %7.3f %7.3f  %s", what, frequency.size(), figures[0], figures[1],
                    figures[2], figures[3], reached ? "reached\n" : "missed: ");
        if (!reached)
            std::printf("%s\n", worst.c_str());
        std::fflush(stdout);
    }

private:
    double most_ = 0;
};

// Quietly: Ghostscript names the spot inks of each page on standard error.
void runOrThrow(const std::vector<std::string> &command)
{
    std::vector<std::string> quiet = {"sh", "-c", "exec \"$0\" \"$@\" 2>/dev/null"};
    quiet.insert(quiet.end(), command.begin(), command.end());
    if (runProcess(quiet, "/dev/null").status != 0)
        throw std::runtime_error(command.front() + " failed");
}

fs::path madeFrom(const fs::path &riders, const std::string &set, const Workplace &place)
{
    const fs::path file = place / "riders-file";
    fs::remove(file);
    runOrThrow({riders, "make", "-o", file, "--screens", set});
    return file;
}

// With the two spot inks on screens of their own, so that they can be told from the rest.
fs::path withSpotInks(const fs::path &riders, const std::string &set, const Workplace &place,
                      std::vector<PlateScreen> &screens)
{
    std::vector<std::string> command = {riders, "make", "-o", place / "riders-file", "--screens", set};
    const double frequency = screens.front().frequency.value_or(60);
    for (int i = 0; i < 2; ++i) {
        const PlateScreen own{kSpotInks[i], frequency, i == 0 ? 37.5 : 67.5, {}};
        command.insert(command.end(), {"--plate", own.plate + ":" + std::to_string(frequency) + "@" +
                                                      (i == 0 ? "37.5" : "67.5")});
        riders::screens::setPlate(screens, own);
    }
    fs::remove(place / "riders-file");
    runOrThrow(command);
    return place / "riders-file";
}

void measureSet(const fs::path &riders, const std::string &name, const fs::path &file, int dpi,
                const Workplace &place, Figures &all)
{
    Figures figures;
    for (const PlateFilm &film : plateFilms(dpi)) {
        std::vector<PlateScreen> screens = riders::screens::screensOf(riders::screens::setFromFile(file));
        const fs::path made = film.job == PlateJob::spotArt ? withSpotInks(riders, name, place, screens)
                                                            : madeFrom(riders, name, place);
        for (const PlateReading &reading : readPlates(film, made, place.path(), runOrThrow)) {
            if (!asksFor(reading.plate, screens))
                continue;
            const PlateError error = errorOf(reading, screens);
            const std::string of = name + ", " + reading.plate + ", " + nameOf(film);
            figures.add(error, of);
            all.add(error, of);
        }
    }
    figures.print(name.c_str());
}

// A page of a photograph of 2 megapixels in four inks, a tint and words.
void writeColourJob(const fs::path &file)
{
    constexpr int width = 1200, height = 1600;
    std::mt19937 random(1);
    std::ofstream out(file, std::ios::binary);
    out << "%!PS-Adobe-3.0\n%%EndComments\n/row " << width * 4 << " string def\n"
        << "gsave 40 40 translate 500 660 scale " << width << " " << height << " 8 [" << width << " 0 0 " << height
        << " 0 0] {currentfile row readstring pop} false 4 colorimage\n";
    std::string row(width * 4, 0);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width * 4; ++x)
            row[static_cast<size_t>(x)] =
                static_cast<char>((x / 48 * (1 + x % 4) + y / 20 * 3 + random() % 16) % 256);
        out << row;
    }
    out << "\ngrestore .2 .4 .6 .1 setcmykcolor 40 705 500 50 rectfill /Times-Roman findfont 24 scalefont "
           "setfont\n"
           "0 0 0 1 setcmykcolor 40 770 moveto (Words above the photograph) show showpage\n";
}

// With the screens of the offset set by setcolorscreen.
void writeColorScreens(const fs::path &file, const std::vector<PlateScreen> &screens,
                       const riders::screens::Shape &shape)
{
    std::ofstream out(file);
    out << "%!PS\n";
    for (const char *plate : {"Cyan", "Magenta", "Yellow", "Black"})
        for (const PlateScreen &screen : screens)
            if (screen.plate == plate)
                out << *screen.frequency << " " << *screen.angle << " {" << shape.body << "}\n";
    out << "setcolorscreen\n";
}

void measureTime(const fs::path &riders, const fs::path &sets)
{
    const Workplace place;
    const auto screens = riders::screens::screensOf(riders::screens::setFromFile(sets / "offset.toml"));
    writeColourJob(place / "colour.ps");
    // The file of the shape that the set asks for, Euclidean, has the name that Ghostscript gives it.
    const auto shape = riders::screens::shapeIn(riders.parent_path() / "shapes" / "Round");
    writeColorScreens(place / "plain.ps", screens, shape);
    const fs::path ours = madeFrom(riders, "offset", place);
    printHeading("A CMYK job with four screens : with setcolorscreen, A4");
    for (const char *device : {"pcxcmyk", "tiffsep1"})
        for (int dpi : {600, 1270, 2400}) {
            const auto seconds = [&](const fs::path &before) {
                return secondsOf([&] {
                    runOrThrow({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sPAPERSIZE=a4",
                                std::string("-sDEVICE=") + device, "-r" + std::to_string(dpi),
                                "-sOutputFile=" + (place / "page%d.film").string(), before, place / "colour.ps"});
                });
            };
            printRow(std::string(device) + " at " + std::to_string(dpi) + " dpi",
                     // Short runs differ by a tenth from one to the next.
                     sideBySide(
                         dpi == 600 ? 15 : 5, [&] { return seconds(ours); },
                         [&] { return seconds(place / "plain.ps"); }),
                     1.15);
        }
}

fs::path setsBeside(const fs::path &riders)
{
    return riders.parent_path() / "screens";
}

void measureSets(const fs::path &riders, int step)
{
    const Workplace place;
    const fs::path sets = setsBeside(riders);
    const auto files = riders::screens::setFiles({{}, sets});
    if (files.empty())
        throw std::runtime_error("no sets of screens in " + sets.string());
    for (int dpi : {600, 1270, 2400}) {
        std::printf(
            "\nA screen for each plate at %d dpi: errors, worst and median; aim 0.2, 0.05 %%, 0.3, 0.03 degrees\n"
            "  %-34s %4s %15s %15s\n",
            dpi, "set", "", "frequency, %", "angle, degrees");
        Figures all;
        int at = 0;
        for (const auto &[name, file] : files)
            if (at++ % step == 0)
                measureSet(riders, name, file, dpi, place, all);
        all.print("all");
    }
    measureTime(riders, sets);
}

}  // namespace

void measurePlates(const fs::path &riders)
{
    measureSets(riders, 1);
}

void measurePlatesSample(const fs::path &riders)
{
    measureSets(riders, 5);
}

void measurePlatesTime(const fs::path &riders)
{
    measureTime(riders, setsBeside(riders));
}
