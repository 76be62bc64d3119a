// What is written in a riders file, as the bytes that are there.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace riders::reading {

struct WrittenAnnotation {
    std::string font, size, text;  // Mac OS Roman; blanks may follow the font's name
};

// A line of the piece for single plates.
struct WrittenEntry {
    enum Element { frequency, angle, shape };

    std::string plate;  // its bytes
    Element element = frequency;
    std::string value;  // a number, or the body of a spot function
};

// The file from which the body of a spot function is.
struct WrittenShapeName {
    std::string plate;  // "*": the dot shape of the rest
    std::string file;   // its name
};

// Numbers and bodies are as they stand there. What is not written was not chosen.
struct Written {
    std::optional<std::string> frequency, angle, shape, flatness;
    std::optional<WrittenAnnotation> annotation;
    bool errorHandler = false;
    std::optional<std::string> plates;  // how many there is room for, where the piece for single plates is there
    std::vector<WrittenEntry> entries;  // in their order
    std::vector<WrittenShapeName> shapeNames;
};

}  // namespace riders::reading
