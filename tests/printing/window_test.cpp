// The whole way at the window, from a drawing program's PDF to films on a printer, as the kept sessions go it:
// with keys alone, and with the mouse alone.
#include "printing/ipp_printer.h"
#include "printing/printing_test.h"

namespace fs = std::filesystem;

namespace printing_tests {
namespace {

struct Way {
    const char *session;
    const char *screen;  // what it chooses
    int copies;
};

class WindowTest : public PrintingTest, public ::testing::WithParamInterface<Way> {
protected:
    void SetUp() override
    {
        const CommandResult made = runProgram(
            {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", "-o", "drawing.pdf", "job.ps"},
            "", folder.path());
        ASSERT_EQ(made.status, 0) << made.err;
    }

    CommandResult play()
    {
        return runRiders(
            {"play", RIDERS_SOURCE_DIR "/examples/sessions/printing/" + std::string(GetParam().session) + ".play",
             "--screen", "1024x768x32", "--preferences", "preferences", "--trace", "trace"},
            "", folder.path());
    }

    // The window leaves the resolution to the printer, which has this one.
    std::vector<BitPlate> rendered(const fs::path &document)
    {
        fs::create_directory(folder / "rendered");
        const CommandResult result = runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pbmraw",
                                                 "-r1200x600", "-sOutputFile=rendered/%d.pbm", document},
                                                "", folder.path());
        EXPECT_EQ(result.status, 0) << result.out << result.err;
        std::vector<BitPlate> pages;
        for (int page = 1; fs::exists(folder / ("rendered/" + std::to_string(page) + ".pbm")); ++page) {
            std::string bytes = contentsOf(folder / ("rendered/" + std::to_string(page) + ".pbm"));
            if (const std::size_t comment = bytes.find("\n#"); comment < 10)
                bytes.erase(comment, bytes.find('\n', comment + 1) - comment);
            pages.push_back(readBitmap(bytes));
        }
        return pages;
    }

    IppPrinter printer{"application/postscript"};
    OwnCupsd server{
        {{"proofer", contentsOf(RIDERS_SOURCE_DIR "/tests/printing/files/proofer.ppd"), printer.uri()}}};
};

TEST_P(WindowTest, LeadsFromADrawingToPrintedFilms)
{
    const CommandResult played = play();
    ASSERT_EQ(played.status, 0) << played.err << contentsOf(folder / "trace");
    const std::string trace = contentsOf(folder / "trace");
    EXPECT_NE(trace.find("params \"The films are on their way to proofer.\""), std::string::npos) << trace;
    const CommandResult shown = runRiders({"show", "drawing.riders"}, "", folder.path());
    EXPECT_EQ(shown.out, std::string("drawing.riders: a riders file\n  all plates ") + GetParam().screen + "\n");
    const CommandResult kept = runRiders(
        {"film", "drawing.pdf", "--riders", "drawing.riders", "--dpi", "1200x600", "-o", "kept", "--quiet"}, "",
        folder.path());
    ASSERT_EQ(kept.status, 0) << kept.err;
    const BitPlate films[] = {readFilm(folder / "kept/drawing_p01_Cyan.tif"),
                              readFilm(folder / "kept/drawing_p01_Black.tif")};
    const std::vector<BitPlate> printed = rendered(printer.document());
    const auto copies = static_cast<std::size_t>(GetParam().copies);
    ASSERT_EQ(printed.size(), 2 * copies);
    for (std::size_t i = 0; i < printed.size(); ++i)
        EXPECT_EQ(differentPixels(printed[i], films[i % 2]), 0) << "sheet " << i;
}

INSTANTIATE_TEST_SUITE_P(Ways, WindowTest,
                         ::testing::Values(Way{"by_keyboard", "45 lpi at 60°, Round", 2},
                                           Way{"by_mouse", "55 lpi at 60°, Round", 1}),
                         [](const auto &info) { return std::string(info.param.session); });

}  // namespace
}  // namespace printing_tests
