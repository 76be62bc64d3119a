// Runs many riders files through the interpreter in one go, each as in a job of its own, and says what is not as
// it should be.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/toolbox_test.h"

struct WatchedCase {
    std::string riders;                     // the riders file
    std::optional<std::string> font, text;  // what the interpreter must have read
};

struct WatchedFinding {
    size_t number = 0;  // of the case, from 1; 0: of none, or of what is run before them
    std::string words;
};

// The pixels of a page, a bit each, 38 bytes a row; row 0 is the top.
using WatchedPage = std::string;
inline constexpr size_t kWatchedRow = 38, kWatchedRows = 150;
// Rows from here on may hold an annotation.
inline constexpr size_t kWatchedFoot = 90;

// Whether the job's screen must be as it was.
enum class WatchedScreen { kept, replaced };

class WatchedCases {
public:
    // Runs them, without protection of files, for the canaries to mean something. No more than some hundred.
    explicit WatchedCases(const std::vector<WatchedCase> &cases, WatchedScreen screen = WatchedScreen::kept);

    const std::vector<WatchedFinding> &findings() const { return findings_; }
    // What is printed for that case, by the letters, line breaks and blanks left out; UTF-8.
    std::string letters(size_t number) const;

private:
    void run(const std::string &device, const std::string &page);
    void look(size_t count);
    void lookAtPage(size_t number, const WatchedPage &without);

    TemporaryFolder folder_;
    std::vector<WatchedFinding> findings_;
    std::string said_;
};
