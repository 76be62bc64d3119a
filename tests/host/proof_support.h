// For the tests of proof: small jobs, and what proof made of them.
#pragma once

#include <string>
#include <vector>

#include "io/refusal.h"
#include "plates/files/plate.h"
#include "proof/proof.h"
#include "support/toolbox_test.h"

class ProofTest : public ::testing::Test {
protected:
    // A job of these bytes, at a low resolution, on one core.
    riders::proof::ProofRequest request(const std::string &job, const std::string &name = "job.ps");
    // "done", or the message of the Refusal.
    std::string proofOf(const riders::proof::ProofRequest &request);
    // Expects "done", and returns the page.
    std::string pageOf(const std::string &job);
    // The names of all files in the proof, sorted.
    std::vector<std::string> files(const std::filesystem::path &of) const;
    std::vector<std::string> files() const { return files(out); }
    // What lies in the folder, sorted: nothing may be left over there.
    std::vector<std::string> left() const;

    TemporaryFolder folder;
    std::filesystem::path out = folder / "out";
};

// A page of 2 by 2 inches with its screen, painted by `painting`.
std::string smallPage(const std::string &painting, double lpi = 50, double angle = 30);
// A job of such pages.
std::string smallJob(const std::vector<std::string> &pages);

// A film as it was written.
struct Film {
    riders::plates::BitPlate bits;
    double dpi = 0;
    int compression = 0, photometric = 0;
    double ink() const;  // share of the sheet
};
Film readFilm(const std::filesystem::path &file);
