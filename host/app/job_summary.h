// What a person wants to know of a PostScript job before doing anything to it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace riders {

struct JobSummary {
    std::string title;             // UTF-8; empty where the job states none
    std::optional<long> pages;     // as its comments state
    bool hasRiders = false;
};

// Reads no more than the job's head and its last 64 KiB. Throws Refusal where it
// cannot be read or is no PostScript.
JobSummary summaryOf(const std::filesystem::path &job);

}  // namespace riders
