// The small window beside the settings dialog: the dots of what is chosen there, and what is said about them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "choosing/sample.h"
#include "toolbox/dialogs.h"

namespace riders::choosing {

// One at a time. It lies directly behind the dialog, at its right where there is room, else at its left, else
// below; where there is room nowhere it is not shown. It is hidden with the dialog.
class DotsWindow {
public:
    // From the resources that are in use, hidden. It does nothing where there is no memory for it.
    explicit DotsWindow(DialogPtr beside);
    ~DotsWindow();
    DotsWindow(const DotsWindow &) = delete;
    DotsWindow &operator=(const DotsWindow &) = delete;

    // Lines of UTF-8 above the dots and one below; nothing in the dots' place where there are none.
    void show(const std::vector<std::string> &above, const std::string &below, std::optional<Sample> sample);
    // Goes where the dialog has gone.
    void follow();

private:
    static void drawProc(DialogPtr window, int16_t item);
    void draw() const;
    void drawDots(const Sample &sample) const;

    DialogPtr dialog_, window_;
    Rect dialogWas_{}, displayWas_{};
    std::vector<std::string> above_;
    std::string below_;
    std::optional<Sample> sample_;
};

}  // namespace riders::choosing
