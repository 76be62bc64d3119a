// What a riders file chooses.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace riders::reading {

struct ChosenShape {
    enum Kind { menu, installed, own };

    std::string name;  // of one in the menu or an installed one; of another its file's name, empty where not known
    Kind kind = own;
    std::string about;  // what its own first comment says; often empty
    std::string body;   // of the spot function, PostScript
};

struct ChosenScreen {
    std::string plate;  // UTF-8, or screens::kRestOfPlates
    std::optional<double> frequency, angle;
    std::optional<ChosenShape> shape;
};

struct ChosenAnnotation {
    std::string text, font;  // UTF-8
    std::optional<double> size;
};

struct Choices {
    std::vector<ChosenScreen> screens;  // of single plates in their order, then of the rest
    std::optional<double> flatness;
    std::optional<ChosenAnnotation> annotation;
    bool errorHandler = false;

    bool whole = true;  // it was not cut off
    // Every byte of the file is as this version writes it for these choices, so there is nothing else in it;
    // otherwise these are the choices that could be read.
    bool exact = true;
    std::vector<std::string> notes;  // on what could not be read, sentences without their full stop
};

}  // namespace riders::reading
