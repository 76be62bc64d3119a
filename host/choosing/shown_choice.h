// What the settings dialog says is chosen, read as a person reads it: from the texts that its popups show, and
// from the check mark in the menu of dot shapes.
#pragma once

#include <array>
#include <string>

#include "toolbox/dialogs.h"

namespace riders::choosing {

// The texts in the boxes of frequency, angle and spot function; UTF-8, each empty until it has been drawn.
struct ShownChoice {
    std::string frequency, angle, shape;
    bool imported = false;  // the shape's menu has its mark at the last item: the text is a file's name

    bool complete() const { return !frequency.empty() && !angle.empty() && !shape.empty(); }
    bool operator==(const ShownChoice &) const = default;
};

// What the popup of dot shapes reads where the printer is left to decide: its menu's first item. Only while the
// dialog is open.
std::string printersOwnShape();

// Reads every text that is drawn in the dialog, as long as it exists. One at a time.
class ChoiceReader {
public:
    explicit ChoiceReader(DialogPtr dialog);
    ~ChoiceReader();
    ChoiceReader(const ChoiceReader &) = delete;
    ChoiceReader &operator=(const ChoiceReader &) = delete;

    // Only while the dialog is open.
    ShownChoice shown() const;

private:
    void read(GrafPtr port, Point pen, const std::string &text);

    DialogPtr dialog_;
    std::array<Rect, 3> boxes_;
    ShownChoice shown_;
};

}  // namespace riders::choosing
