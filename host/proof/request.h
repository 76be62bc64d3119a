// What a user asks of a proof.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "plates/interpreter/limits.h"

namespace riders::looking {
struct LookFacts;
}

namespace riders::proof {

inline constexpr int kLeastProofDpi = 72;
inline constexpr int kMostProofDpi = 4800;

struct ProofRequest {
    std::filesystem::path job;          // PostScript, EPS or PDF, recognised by its first bytes
    std::filesystem::path riders = {};  // added to the job first; empty for none
    std::filesystem::path folder = {};  // where the proof goes; empty: the job's name and -proof, here
    std::string pages = {};             // as in 1,3-5; empty for all
    double mesh = 0;                    // threads per inch of the mesh it is for; 0 for none
    int dpi = 1200;                     // kLeastProofDpi to kMostProofDpi
    plates::InterpreterLimits limits = {};
    bool loupe = false;  // also make the page that zooms, and its tiles
    bool quiet = false;  // show no progress
    // Is given what is known of all pages, once the proof has its name.
    std::function<void(const looking::LookFacts &)> made = {};
    int cores = 0;  // interpreters and threads at a time; 0: as many as there are cores
};

}  // namespace riders::proof
