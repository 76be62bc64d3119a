// Where screened plates go: what every form of film is written through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "screening/tile.h"

namespace riders::film {

// What a plate's file or page says of itself.
struct PlateSheet {
    std::string job;             // for people, UTF-8
    std::string plate;           // likewise: "Cyan", "PANTONE 300 C"
    int page = 1;                // in the job, from 1
    std::filesystem::path file;  // where it goes, if each plate has a file of its own
    std::size_t columns = 0, rows = 0;
    screening::Resolution resolution;
    std::size_t place = 0;  // among the page's plates
};

// One plate, written from the top. What was written is given up by one that goes without end().
class PlateWriter {
public:
    PlateWriter() = default;
    virtual ~PlateWriter() = default;
    PlateWriter(const PlateWriter &) = delete;
    PlateWriter &operator=(const PlateWriter &) = delete;

    // (columns + 7) / 8 bytes, valid during the call: 1 is black on the film, the leftmost pixel is in the highest
    // bit, the bits after the last pixel are 0. Throws Refusal when it cannot be written.
    virtual void row(const std::uint8_t *bits) = 0;
    // After the last row; the plate is then whole. Throws Refusal when it cannot be written.
    virtual void end() = 0;
};

// Files of a folder, or one file with a page for each plate.
class Form {
public:
    Form() = default;
    virtual ~Form() = default;
    Form(const Form &) = delete;
    Form &operator=(const Form &) = delete;

    // Plates are open side by side, those of several pages, too, each used by one thread at a time. They are begun
    // one at a time, in any order, but a page's end only when those of all pages before it have ended or are given
    // up, and no more of them are begun. Throws Refusal.
    virtual std::unique_ptr<PlateWriter> plate(const PlateSheet &sheet) = 0;
    // After the last plate has ended; plates are in the order of pages and of their places. A form that goes
    // without it gives up what is in one file. Throws Refusal.
    virtual void finish() = 0;
};

}  // namespace riders::film
