// Programs in Debian that write PostScript, each asked for a job with a large tint on every page.
#pragma once

#include <vector>

#include "support/command.h"
#include "support/toolbox_test.h"

struct Fills;
struct Producer {
    const char *name;
    int pages;
    void (*write)(const TemporaryFolder &folder, const std::filesystem::path &job, const Fills &fills);
    bool colours = true;  // whether it can print them
    // Writes the job, with its areas grey or in a colour of three inks and more; its inputs go into the folder.
    // Fails the test if the program fails.
    void make(const TemporaryFolder &folder, const std::filesystem::path &job, bool inColour = false) const;
};
const std::vector<Producer> &jobProducers();

// The same two pages as a PDF.
void makePdf(const TemporaryFolder &folder, const std::filesystem::path &pdf, bool inColour = false);
