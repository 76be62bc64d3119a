// While the settings dialog is open, the dots of what is chosen are shown beside it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "choosing/chosen_screen.h"
#include "choosing/dots_window.h"
#include "choosing/sample.h"
#include "io/background.h"

namespace riders::choosing {

// Begins with the dialog's first event and ends with this. One at a time; the Toolbox must outlive it.
class WhileChoosing {
public:
    struct Surroundings {
        std::int16_t resources = 0;               // the file in which the program's own window and words are
        int dpi = 600;                            // of the device that the dots are for
        bool waits = false;                       // for dots, where no real time passes
        std::vector<KnownFile> *files = nullptr;  // those opened so far; what is opened meanwhile is added
    };
    explicit WhileChoosing(const Surroundings &surroundings);
    ~WhileChoosing();
    WhileChoosing(const WhileChoosing &) = delete;
    WhileChoosing &operator=(const WhileChoosing &) = delete;

private:
    void watch(DialogPtr dialog);
    void rememberFile();
    void choose(const ChosenScreen &screen);
    void showDots(const Sample &sample);
    void showNone(const std::string &why);
    void traceDots(const std::string &became) const;
    std::string words(int number, const std::vector<std::string> &parts = {}) const;
    std::string screenInWords() const;
    std::string assumed() const;

    Surroundings surroundings_;
    std::filesystem::path before_;  // the file that was opened last
    std::optional<ChoiceReader> reader_;
    std::optional<DotsWindow> window_;
    ShownChoice shown_;
    ChosenScreen chosen_;
    io::Background work_;
};

}  // namespace riders::choosing
