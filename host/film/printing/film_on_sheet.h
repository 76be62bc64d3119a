// Where on a sheet a film lies.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "film/printing/print_plan.h"

namespace riders::printing {

// Of the plates of a page, which are alike, in pixels: the size, and where any of them has ink.
struct FilmExtent {
    std::size_t columns = 0, rows = 0;
    std::size_t left = 0, top = 0, right = 0,
                bottom = 0;  // the last two beyond the ink; equal to the first for none

    void add(const FilmExtent &other);
};

struct FilmOnSheet {
    std::string choice;  // what the queue calls the sheet
    QueueSheet sheet;
    long x = 0, y = 0;  // of the film's upper left corner from that of the sheet, in pixels
};

// Throws Refusal where a sheet was asked for that the queue has not, which is said before films are made.
void checkSheet(const PrintPlan &plan);

// In the middle of the sheet that was asked for, or of the one that the queue has in use, or of the smallest that
// holds it, so that all ink lies where the printer prints. Throws Refusal.
FilmOnSheet layFilm(const PrintPlan &plan, const FilmExtent &film);

// A sheet's size as a driver's options have it: Custom.WIDTHxHEIGHT, in points or with in, cm or mm at the end.
// Nothing for anything else.
std::optional<QueueSheet> sheetFromText(std::string_view text);

}  // namespace riders::printing
