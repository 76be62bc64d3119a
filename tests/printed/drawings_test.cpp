// The drawings in examples/films, exported by the programs that they are for: which plates films are made of.
// These programs are large, and so only asked for with RIDERS_DRAWINGS=1.
#include <cstdlib>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

struct Drawing {
    std::string program, file, plates;
};

// Of the films that were made, in their order.
std::string platesOf(const std::string &printed)
{
    std::string plates;
    const std::string before = ": page 1, ";
    for (size_t at = printed.find(before); at != std::string::npos; at = printed.find(before, at + 1)) {
        const size_t start = at + before.size();
        plates += (plates.empty() ? "" : ", ") + printed.substr(start, printed.find(':', start) - start);
    }
    return plates;
}

class DrawingsTest : public ::testing::TestWithParam<Drawing> {
protected:
    TemporaryFolder folder;
};

TEST_P(DrawingsTest, MakeFilmsOfThePlatesThatAreExpected)
{
    const Drawing &drawing = GetParam();
    if (std::getenv("RIDERS_DRAWINGS") == nullptr)
        GTEST_SKIP() << drawing.file << " of " << drawing.program << " is tried with RIDERS_DRAWINGS=1";
    const CommandResult exported =
        runProgram({RIDERS_SOURCE_DIR "/examples/films/export", "exports"}, "", folder.path());
    if (exported.err.find(drawing.program + " is not installed") != std::string::npos)
        GTEST_SKIP() << drawing.file << " is not tried: " << drawing.program << " is not installed";
    const fs::path file = folder / "exports" / drawing.file;
    ASSERT_TRUE(fs::exists(file)) << exported.out << exported.err;
    const CommandResult made =
        runRiders({"film", file.string(), "--dpi", "600", "--frequency", "45"}, "", folder.path());
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(platesOf(made.out), drawing.plates);
}

INSTANTIATE_TEST_SUITE_P(Of, DrawingsTest,
                         ::testing::Values(Drawing{"inkscape", "inkscape-black.ps", "Black"},
                                           Drawing{"inkscape", "inkscape-red.ps", "Black"},
                                           Drawing{"inkscape", "inkscape-rgb.pdf", "Cyan, Magenta, Yellow, Black"},
                                           Drawing{"scribus", "scribus.pdf", "Black, Red"},
                                           Drawing{"gimp", "gimp-grey.pdf", "Black"},
                                           Drawing{"gimp", "gimp-colour.pdf", "Cyan, Magenta, Yellow, Black"}));

}  // namespace
