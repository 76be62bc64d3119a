// Plates to measure: jobs in colour, printed in several ways, each plate's tints and images read on its own.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "meter/meter.h"
#include "screens/plate_screen.h"

enum class PlateDevice {
    separations,  // tiffsep1: a file for each ink
    composite,    // bitcmyk: four inks in one file
    oneInk,       // pbmraw: each page is one plate
};
enum class PlateJob {
    photograph,    // a CMYK image with a little noise
    fills,         // CMYK tints
    spotArt,       // tints and images of two spot inks, on two pages that name them in different order
    preseparated,  // four pages in black, each named by a comment
};

struct PlateFilm {
    PlateDevice device;
    PlateJob job;
    int dpi;
};
std::string nameOf(const PlateFilm &film);
// Where that job can be printed so that its plates are apart.
std::vector<PlateFilm> plateFilms(int dpi);

struct PlateReading {
    std::string plate;
    riders::meter::ScreenReading reading;
};

// Runs a program with these words; throws when it fails.
using RunProgram = std::function<void(const std::vector<std::string> &command)>;

inline constexpr const char *kSpotInks[] = {"PANTONE 300 C", "Gold"};

// Prints the job after what `riders` names, a riders file, in the folder, and reads its plates.
std::vector<PlateReading> readPlates(const PlateFilm &film, const std::filesystem::path &riders,
                                     const std::filesystem::path &folder, const RunProgram &run);

// What a set asks for on a plate: its own screen, or that of the rest.
struct PlateError {
    double frequency = 0, angle = 0;  // %, degrees
};
PlateError errorOf(const PlateReading &reading, const std::vector<riders::screens::PlateScreen> &set);
// Whether the set says what the plate's screen is.
bool asksFor(const std::string &plate, const std::vector<riders::screens::PlateScreen> &set);
