// Programs in Debian that write PostScript, each asked for a job with a large grey area on every page.
#pragma once

#include <vector>

#include "support/command.h"
#include "support/toolbox_test.h"

struct Producer {
    const char *name;
    int pages;
    // Writes the job; its inputs go into the folder. Fails the test if the program fails.
    void (*make)(const TemporaryFolder &folder, const std::filesystem::path &job);
};
const std::vector<Producer> &jobProducers();

// The same two pages of grey as a PDF.
void makePdf(const TemporaryFolder &folder, const std::filesystem::path &pdf);
