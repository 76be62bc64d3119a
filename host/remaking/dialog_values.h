// What a riders file chooses, as the settings dialog holds it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "reading/choices.h"

namespace riders::remaking {

// The items of the dialog's menus, UTF-8, as the plug-in has them.
struct DialogMenus {
    std::vector<std::string> frequencies, angles, shapes, flatnesses, fonts;
};

// Items count from 1; 1 in a popup: nothing of that kind is chosen. Texts are Mac OS Roman; an empty one, and font
// 0, stay as they are saved.
struct DialogValues {
    std::int16_t frequency = 1, angle = 1, shape = 1, flatness = 1, annotation = 1, errorHandler = 1, font = 0;
    std::string frequencyText, angleText, flatnessText, sizeText, annotationText;
    std::string shapeName, shapeBody;  // of one that is not in the menu
    // What the dialog cannot hold, in words, such as "the frequency 1200". Screens of single plates, which it has
    // not, are not among these.
    std::vector<std::string> leftOut;
};

// Numbers get that decimal separator.
DialogValues dialogValuesOf(const reading::Choices &choices, const DialogMenus &menus, char decimalPoint);

}  // namespace riders::remaking
