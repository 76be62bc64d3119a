// What tests of printing are based on: a job, its films, and a print server of the test's own.
#pragma once

#include "printing/own_cupsd.h"
#include "printing/printed_plate.h"
#include "support/command.h"

namespace printing_tests {

// A page of two inches and a second with one plate: tints, a ramp, lines, and a frame that shows where the page
// ends.
inline constexpr const char *kJob =
    "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n"
    "<< /PageSize [144 108] >> setpagedevice\n"
    "%%Page: 1 1\n"
    "0.5 0 0 0.1 setcmykcolor 6 6 60 95 rectfill\n"
    "0 1 50 {dup 50 div 0 0 0 4 -1 roll setcmykcolor 70 add 50 1 50 rectfill} for\n"
    "1 0 0 1 setcmykcolor 0.1 setlinewidth 3 3 138 102 rectstroke\n"
    "70 6 moveto 60 37 rlineto stroke showpage\n"
    "%%EOF\n";

class PrintingTest : public ::testing::Test {
protected:
    PrintingTest() { writeFile(folder / "job.ps", kJob); }

    CommandResult film(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"film", "job.ps"});
        return runRiders(arguments, "", folder.path());
    }

    // The same films, kept.
    std::vector<BitPlate> films(const std::string &dpi)
    {
        const CommandResult result = film({"--dpi", dpi, "-o", "kept", "--force", "--quiet"});
        EXPECT_EQ(result.status, 0) << result.err;
        return {readFilm(folder / "kept/job_p01_Cyan.tif"), readFilm(folder / "kept/job_p01_Black.tif")};
    }

    TemporaryFolder folder;
};

}  // namespace printing_tests
