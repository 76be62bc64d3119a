// Films printed without a driver, and on a printer with an interpreter of PostScript: what the printer is sent is
// the film, pixel by pixel.
#include <algorithm>

#include "printing/ipp_printer.h"
#include "printing/printing_test.h"

namespace fs = std::filesystem;

namespace printing_tests {
namespace {

void expectFilms(const std::vector<BitPlate> &printed, const std::vector<BitPlate> &films)
{
    ASSERT_EQ(printed.size(), films.size());
    for (std::size_t i = 0; i < films.size(); ++i)
        EXPECT_EQ(differentPixels(printed[i], films[i]), 0) << "plate " << i;
}

// In the middle of the sheet, within a pixel.
void expectInTheMiddle(const BitPlate &printed, const BitPlate &film)
{
    const Ink onSheet = inkOf(printed), onFilm = inkOf(film);
    EXPECT_NEAR(onSheet.left - onFilm.left, (printed.width - film.width) / 2, 1);
    EXPECT_NEAR(onSheet.top - onFilm.top, (printed.height - film.height) / 2, 1);
}

class QueueWithoutDriver : public PrintingTest {
protected:
    // Its queue's description is made from what the printer says of itself.
    void addQueue(const IppPrinter &printer)
    {
        const CommandResult result = runProgram(
            {"lpadmin", "-p", "office", "-E", "-m", "everywhere", "-v", printer.uri()}, "", folder.path());
        ASSERT_EQ(result.status, 0) << result.err;
        server.waitForDescription("office");
    }

    OwnCupsd server{{}};
};

// A printer for each job: it takes its time before it has printed one.
class DriverlessTest : public QueueWithoutDriver, public ::testing::WithParamInterface<const char *> {};

class PdfPrinterTest : public QueueWithoutDriver {};

TEST_P(DriverlessTest, PwgRasterIsTheFilm)
{
    const IppPrinter printer("image/pwg-raster,application/pdf");
    addQueue(printer);
    const std::string dpi = GetParam();
    const CommandResult result = film({"--printer", "office", "--dpi", dpi});
    ASSERT_EQ(result.status, 0) << result.err;
    const std::vector<BitPlate> printed = readPwg(printer.document()), plates = films(dpi);
    expectFilms(printed, plates);
    expectInTheMiddle(printed.at(0), plates[0]);
    const CommandResult refused = film({"--printer", "office", "--dpi", "1200"});
    EXPECT_EQ(refused.err, "riders film: office cannot print at 1200 dpi; at 300, 600 it keeps them\n");
}

INSTANTIATE_TEST_SUITE_P(Dpi, DriverlessTest, ::testing::Values("600", "300"));

TEST_F(PdfPrinterTest, IsRefused)
{
    const IppPrinter printer("application/pdf,image/jpeg");
    addQueue(printer);
    const CommandResult result = film({"--printer", "office"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("it takes neither raster nor PostScript"), std::string::npos) << result.err;
}

class PostScriptTest : public PrintingTest, public ::testing::WithParamInterface<const char *> {
protected:
    std::vector<BitPlate> rendered(const fs::path &document, const std::string &dpi)
    {
        fs::remove_all(folder / "rendered");
        fs::create_directory(folder / "rendered");
        const CommandResult result = runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pbmraw",
                                                 "-r" + dpi, "-sOutputFile=rendered/%d.pbm", document},
                                                "", folder.path());
        EXPECT_EQ(result.status, 0) << result.out << result.err;
        std::vector<BitPlate> pages;
        for (int page = 1; fs::exists(folder / ("rendered/" + std::to_string(page) + ".pbm")); ++page)
            pages.push_back(
                readBitmap(withoutComment(contentsOf(folder / ("rendered/" + std::to_string(page) + ".pbm")))));
        return pages;
    }

    static std::string withoutComment(std::string bytes)
    {
        const std::size_t comment = bytes.find("\n#");
        if (comment < 10)
            bytes.erase(comment, bytes.find('\n', comment + 1) - comment);
        return bytes;
    }

    IppPrinter printer{"application/postscript"};
    OwnCupsd server{
        {{"proofer", contentsOf(RIDERS_SOURCE_DIR "/tests/printing/files/proofer.ppd"), printer.uri()}}};
};

TEST_P(PostScriptTest, WhatItsInterpreterPaintsIsTheFilm)
{
    const std::string dpi = GetParam();
    const CommandResult result = film({"--printer", "proofer", "--dpi", dpi});
    ASSERT_EQ(result.status, 0) << result.err;
    const std::vector<BitPlate> printed = rendered(printer.document(), dpi), plates = films(dpi);
    expectFilms(printed, plates);
    expectInTheMiddle(printed.at(0), plates[0]);
}

INSTANTIATE_TEST_SUITE_P(Dpi, PostScriptTest, ::testing::Values("600", "1200x600"));

}  // namespace
}  // namespace printing_tests
