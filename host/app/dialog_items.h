// Items of the program's own dialogs.
#pragma once

#include <string>

#include "toolbox/dialogs.h"

namespace riders::app {

// A dialog is the current port for as long as one of these exists.
class PortOf {
public:
    explicit PortOf(DialogPtr dialog)
    {
        GetPort(&before_);
        SetPort(dialog);
    }
    ~PortOf() { SetPort(before_); }
    PortOf(const PortOf &) = delete;
    PortOf &operator=(const PortOf &) = delete;

private:
    GrafPtr before_ = nullptr;
};

void setUserItem(DialogPtr dialog, int16_t item, UserItemProcPtr draw);
// UTF-8; cut, with an ellipsis, where it is wider than the item.
void setItemText(DialogPtr dialog, int16_t item, const std::string &text);
// The same with CR or LF between lines, wrapped at the item's width; 255 characters at most.
void setParagraph(DialogPtr dialog, int16_t item, const std::string &text);
// Local. A control is moved and sized, too; the window is not redrawn.
Rect itemBox(DialogPtr dialog, int16_t item);
void placeItem(DialogPtr dialog, int16_t item, const Rect &box);
bool isButton(DialogPtr dialog, int16_t item);
void setTitle(DialogPtr dialog, int16_t item, const std::string &title);
// False for a dimmed button.
bool canBePressed(DialogPtr dialog, int16_t item);
void enableButton(DialogPtr dialog, int16_t item, bool enabled);
void setCheckbox(DialogPtr dialog, int16_t item, bool on);
// Draws the outline of the default button, grey while the button is dimmed.
// Nothing while the dialog is hidden.
void drawOutline(DialogPtr dialog, int16_t outline, int16_t button);

// The button that a key stands for: Return and Enter the default one, Escape
// and Command-period the one that cancels; 0 for other events.
int16_t buttonForKey(const EventRecord &event, int16_t byDefault, int16_t toCancel);
// Shows the button pressed for 8 ticks. A dimmed one beeps: false.
bool pressByKey(DialogPtr dialog, int16_t button);

}  // namespace riders::app
