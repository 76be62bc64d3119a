#include "screens/plate_films.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "plates/files/plate_files.h"
#include "plates/files/process_plates.h"

namespace {

namespace fs = std::filesystem;
namespace meter = riders::meter;
using riders::plates::BitPlate;
using riders::plates::kProcessPlates;
using riders::screens::PlateScreen;

constexpr double kSide = 1.5;  // inches of each tint; a page holds one, or two side by side
constexpr int kPoints = 108;

int pixels(const PlateFilm &film)
{
    return static_cast<int>(kSide * film.dpi);
}

// An image of that many inks around half ink, as a scanner's noise makes it.
std::string noisyImage(int inks)
{
    constexpr int side = 90;
    std::mt19937 random(1);
    std::string text = std::to_string(side) + " " + std::to_string(side) + " 8 [" + std::to_string(side) +
                       " 0 0 " + std::to_string(side) + " 0 0] currentfile /ASCIIHexDecode filter ";
    text += inks == 1 ? "image\n" : "false " + std::to_string(inks) + " colorimage\n";
    for (int i = 0; i < side * side * inks; ++i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x%s", static_cast<unsigned>(124 + random() % 8),
                      i % 40 == 39 ? "\n" : "");
        text += digits;
    }
    return text + ">\n";
}

std::string fillAt(int left)
{
    return std::to_string(left) + " 0 108 108 rectfill\n";
}

std::string imageAt(int left, int inks)
{
    return "gsave " + std::to_string(left) + " 0 translate 108 108 scale " + noisyImage(inks) + "grestore\n";
}

std::string spot(const std::string &name)
{
    return "[/Separation (" + name + ") cvn /DeviceCMYK {dup 0 exch 0 exch 0 mul}] setcolorspace .5 setcolor\n";
}

std::string textOf(PlateJob job)
{
    const std::string first = kSpotInks[0], second = kSpotInks[1];
    std::string text = "%!PS-Adobe-3.0\n%%EndComments\n{} settransfer\n";
    switch (job) {
    case PlateJob::photograph:
        return text + imageAt(0, 4) + "showpage\n";
    case PlateJob::fills:
        return text + ".5 .5 .5 .5 setcmykcolor " + fillAt(0) + "showpage\n";
    case PlateJob::spotArt:
        text += spot(first) + fillAt(0) + spot(second) + fillAt(kPoints) + "showpage\n";
        return text + spot(second) + fillAt(kPoints) + spot(first) + fillAt(0) + "showpage\n";
    case PlateJob::preseparated:
        break;
    }
    for (int page = 1; page <= 4; ++page)
        text += "%%Page: " + std::to_string(page) + " " + std::to_string(page) +
                "\n%%PlateColor: " + kProcessPlates[page - 1] + "\nsave .5 setgray " + fillAt(0) +
                imageAt(kPoints, 1) + "restore showpage\n";
    return text;
}

BitPlate readBitmapPlate(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::string magic, comment;
    int width = 0, height = 0;
    std::getline(in, magic);
    while (in.peek() == '#')
        std::getline(in, comment);
    in >> width >> height;
    in.get();
    if (magic != "P4" || !in)
        throw std::runtime_error("no bitmap: " + file.string());
    BitPlate plate(width, height);
    in.read(reinterpret_cast<char *>(plate.bits.data()), static_cast<std::streamsize>(plate.bits.size()));
    return plate;
}

struct NamedPlate {
    std::string plate;
    BitPlate bits;
};

// All plates of a page; of a page that is one plate, only that one.
std::vector<NamedPlate> platesOf(const PlateFilm &film, const fs::path &folder, int page, int of)
{
    const std::string number = std::to_string(page);
    std::vector<NamedPlate> plates;
    if (film.device == PlateDevice::composite) {
        std::vector<BitPlate> four =
            riders::plates::readProcessPlates(folder / (number + ".film"), of * pixels(film), pixels(film));
        for (int i = 0; i < 4; ++i)
            plates.push_back({kProcessPlates[i], std::move(four[static_cast<size_t>(i)])});
    } else if (film.device == PlateDevice::separations) {
        for (const riders::plates::PlateFile &file : riders::plates::plateFiles(folder, page))
            plates.push_back({file.plate, riders::plates::readPlate(file.file)});
    } else {
        plates.push_back({"Black", readBitmapPlate(folder / (number + ".film"))});
    }
    if (film.job != PlateJob::preseparated)
        return plates;
    for (NamedPlate &plate : plates)
        if (plate.plate == "Black")
            return {{kProcessPlates[page - 1], std::move(plate.bits)}};
    throw std::runtime_error("no black plate");
}

meter::ScreenReading readAt(const NamedPlate &plate, const PlateFilm &film, int place)
{
    const meter::BitPage page{plate.bits.bits.data(), plate.bits.width, plate.bits.height, plate.bits.rowBytes,
                              static_cast<double>(film.dpi)};
    return meter::readScreen(page, meter::PageWindow{place * pixels(film), 0, pixels(film), pixels(film)});
}

void readPage(const PlateFilm &film, const fs::path &folder, int page, std::vector<PlateReading> &readings)
{
    const bool two = film.job == PlateJob::spotArt || film.job == PlateJob::preseparated;
    for (const NamedPlate &plate : platesOf(film, folder, page, two ? 2 : 1)) {
        if (film.job == PlateJob::spotArt) {
            for (int i = 0; i < 2; ++i)
                if (plate.plate == kSpotInks[i])
                    readings.push_back({plate.plate, readAt(plate, film, i)});
            continue;
        }
        if (!riders::plates::isProcessPlate(plate.plate))
            continue;  // the inks that the riders file names have plates on every page
        for (int place = 0; place < (two ? 2 : 1); ++place)
            readings.push_back({plate.plate, readAt(plate, film, place)});
    }
}

void print(const PlateFilm &film, const fs::path &riders, const fs::path &folder, const RunProgram &run)
{
    const bool two = film.job == PlateJob::spotArt || film.job == PlateJob::preseparated;
    const fs::path job = folder / "job.ps";
    std::ofstream(job) << textOf(film.job);
    std::vector<std::string> command = {"gs",
                                        "-q",
                                        "-dSAFER",
                                        "-dBATCH",
                                        "-dNOPAUSE",
                                        "-r" + std::to_string(film.dpi),
                                        "-g" + std::to_string((two ? 2 : 1) * pixels(film)) + "x" +
                                            std::to_string(pixels(film))};
    const auto device = [&](const char *name, const char *file) {
        command.insert(command.end(),
                       {std::string("-sDEVICE=") + name, "-sOutputFile=" + (folder / file).string()});
    };
    switch (film.device) {
    case PlateDevice::separations:
        device("tiffsep1", "%d.tif");
        command.emplace_back("-sCompression=none");
        break;
    case PlateDevice::composite:
        device("bitcmyk", "%d.film");
        break;
    case PlateDevice::oneInk:
        device("pbmraw", "%d.film");
        break;
    }
    command.insert(command.end(), {riders.string(), job.string()});
    run(command);
}

int pagesOf(PlateJob job)
{
    return job == PlateJob::preseparated ? 4 : job == PlateJob::spotArt ? 2 : 1;
}

const PlateScreen *screenFor(const std::string &plate, const std::vector<PlateScreen> &set)
{
    for (const std::string &name : {plate, std::string(riders::screens::kRestOfPlates)})
        for (const PlateScreen &screen : set)
            if (screen.plate == name)
                return &screen;
    return nullptr;
}

}  // namespace

std::string nameOf(const PlateFilm &film)
{
    const char *const jobs[] = {"photograph", "fills", "two spot inks", "pre-separated"};
    const char *const devices[] = {"tiffsep1", "bitcmyk", "one ink"};
    return std::string(jobs[static_cast<int>(film.job)]) + ", " + devices[static_cast<int>(film.device)] + ", " +
           std::to_string(film.dpi) + " dpi";
}

std::vector<PlateFilm> plateFilms(int dpi)
{
    std::vector<PlateFilm> films;
    for (PlateDevice device : {PlateDevice::separations, PlateDevice::composite})
        for (PlateJob job : {PlateJob::photograph, PlateJob::fills, PlateJob::preseparated})
            films.push_back({device, job, dpi});
    films.push_back({PlateDevice::separations, PlateJob::spotArt, dpi});
    films.push_back({PlateDevice::oneInk, PlateJob::preseparated, dpi});
    return films;
}

std::vector<PlateReading> readPlates(const PlateFilm &film, const fs::path &riders, const fs::path &folder,
                                     const RunProgram &run)
{
    print(film, riders, folder, run);
    std::vector<PlateReading> readings;
    for (int page = 1; page <= pagesOf(film.job); ++page)
        readPage(film, folder, page, readings);
    for (const fs::directory_entry &file : fs::directory_iterator(folder))
        if (file.path().extension() == ".tif" || file.path().extension() == ".film")
            fs::remove(file.path());
    return readings;
}

bool asksFor(const std::string &plate, const std::vector<PlateScreen> &set)
{
    const PlateScreen *screen = screenFor(plate, set);
    return screen && screen->frequency && screen->angle;
}

PlateError errorOf(const PlateReading &reading, const std::vector<PlateScreen> &set)
{
    const PlateScreen *screen = screenFor(reading.plate, set);
    if (reading.reading.kind == meter::ScreenKind::none)
        return {100, 45};
    const double turn = reading.reading.kind == meter::ScreenKind::lines ? 180 : 90;
    return {100 * std::abs(reading.reading.frequency / *screen->frequency - 1),
            std::abs(std::remainder(reading.reading.angle - *screen->angle, turn))};
}
