// What becomes of a job outside the window: a proof, films on a printer. The program's own commands do it, as
// processes beside the window, which can be stopped and take their memory with them.
#pragma once

#include <filesystem>

namespace riders::app {

struct Output {
    std::filesystem::path program, job;
    std::filesystem::path riders;  // on it, but not in it; empty: none
    int dpi = 600;
    bool waits = false;  // for sessions in which no real time passes
};

// In a folder beside the job, as `riders proof` names it. Says where it is, or why there is none.
void makeProof(const Output &output);
// Asks for a printer and how many copies, and sends films of the job there, as `riders film --printer` does.
void printFilms(const Output &output);

}  // namespace riders::app
