// What is refused before anything is sent, what a dry run says, and what a run that fails leaves.
#include <signal.h>
#include <sys/wait.h>

#include <string>

#include "printing/printing_test.h"

namespace printing_tests {
namespace {

class QueueTest : public PrintingTest {
protected:
    void expectRefusal(const std::vector<std::string> &options, const std::string &words)
    {
        std::vector<std::string> arguments = {"--printer", "inkjet"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const CommandResult result = film(arguments);
        EXPECT_EQ(result.status, 1) << words;
        EXPECT_NE(result.err.find(words), std::string::npos) << result.err;
        expectNothingSent();
    }

    void expectNothingSent() const
    {
        EXPECT_TRUE(pipe.isSilent());
        EXPECT_EQ(runProgram({"lpstat", "-o"}).out, "");
    }

    PrinterPipe pipe{folder / "printer"};
    OwnCupsd server{{{"inkjet", gutenprintPpd("escp2-1400"), pipe.uri()}, {"raw", "", "file:///dev/null"}}};
};

TEST_F(QueueTest, WhatWouldSpoilDotsIsRefused)
{
    expectRefusal({"--dpi", "1200"},
                  "inkjet cannot print at 1200 dpi; at 360x90, 360x180, 360, 720x360, 720, 1440x720, "
                  "1440 it keeps them");
    expectRefusal({"--dpi", "2880x1440"}, "leaves out droplets at 2880x1440 dpi; at ");
    for (const std::string option :
         {"number-up=2", "fit-to-page", "scaling=50", "print-scaling=fill", "StpDensity=500",
          "StpDensity=Custom.0.5", "StpDitherAlgorithm=Predithered", "StpiShrinkOutput=Shrink",
          "StpInkSet=quadtone", "StpGamma=1200", "StpFullBleed=True", "StpColorCorrection=Density",
          "ColorModel=RGB", "mirror", "gamma=900", "raw"})
        expectRefusal({"-O", option}, "inkjet is not asked for that: ");
    expectRefusal({"-O", "Resolution=720dpi"}, "say it with --dpi");
    expectRefusal({"-O", "media=A4"}, "say it with --media");
    expectRefusal({"-O", "copies=2"}, "say how many with --copies");
    expectRefusal({"-O", "MediaType=Glass"}, "has no such choice, but Plain, ");
    expectRefusal({"-o", "films.tif"}, "films go either to films.tif or to the printer inkjet");
}

TEST_F(QueueTest, WhatDoesNotFitOnTheSheetIsRefused)
{
    expectRefusal({"--dpi", "720", "--media", "A9"}, "--media A9: inkjet has ");
    expectRefusal({"--dpi", "720", "--media", "Custom.160x110"}, "--media Custom.160x110: inkjet has ");
    expectRefusal({"--dpi", "720", "--media", "Custom.160x200"},
                  "the driver misplaces rows on a sheet that is lower than 90 mm");
    expectRefusal({"--dpi", "720", "--media", "Custom.144x300"},
                  "the film has ink where the printer cannot print");
}

TEST_F(QueueTest, OtherQueuesAreRefusedWithTheirNames)
{
    const CommandResult unknown = film({"--printer", "nowhere"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.err, "riders film: there is no print queue nowhere; there are: inkjet, raw\n");
    const CommandResult raw = film({"--printer", "raw"});
    EXPECT_EQ(raw.status, 1);
    EXPECT_NE(raw.err.find("raw has no driver that says what the printer is"), std::string::npos) << raw.err;
}

TEST_F(QueueTest, ADryRunSaysWhatWouldBeSentAndSendsNothing)
{
    const CommandResult result = film(
        {"--printer", "inkjet", "--dry-run", "--copies", "2", "--media", "a5", "-O", "MediaType=Transparency"});
    EXPECT_EQ(result.status, 0) << result.err;
    for (const std::string line :
         {"keeps each pixel; it would be sent CUPS raster for the driver rastertogutenprint.5.3 "
          "(application/vnd.cups-raster), 1440x720 dpi\n",
          "  number-up=1\n", "  print-scaling=none\n", "  fit-to-page=false\n", "  StpDitherAlgorithm=Ordered\n",
          "  StpiShrinkOutput=Crop\n", "  ColorModel=Black\n", "  MediaType=Transparency\n",
          "  Resolution=1440x720dpi\n", "would print page 1 (Cyan, Black) on A5, 2 of each\n"})
        EXPECT_NE(result.out.find(line), std::string::npos) << line << "\nin\n" << result.out;
    EXPECT_NE(result.err.find("the driver does not say how near to the edge the printer prints"),
              std::string::npos);
    expectNothingSent();
}

TEST_F(QueueTest, CopiesFollowEachOtherAndJsonSaysWhatWasSent)
{
    const CommandResult result =
        film({"--printer", "inkjet", "--dpi", "720x360", "--media", "A6", "--copies", "2", "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    for (const std::string part :
         {R"("jobId": 1)", R"("title": "job film, page 1")", R"("plates": ["Cyan", "Black"])", R"("media": "A6")",
          R"("copies": 2)", R"("dpi": [720, 360])", R"("dryRun": false)",
          R"({"name": "StpDitherAlgorithm", "value": "Ordered"})"})
        EXPECT_NE(result.out.find(part), std::string::npos) << part << "\nin\n" << result.out;
    EXPECT_EQ(escp2::read(pipe.read()).size(), 4u);
}

TEST_F(QueueTest, AJobThatFailsSendsNothing)
{
    writeFile(folder / "job.ps",
              "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndComments\n%%Page: 1 1\n0 0 50 50 rectfill showpage\n"
              "%%Page: 2 2\nthis is no operator\n%%EOF\n");
    const CommandResult result = film({"--printer", "inkjet", "--dpi", "720"});
    EXPECT_EQ(result.status, 1);
    expectNothingSent();
}

// Before the film is whole at the server.
TEST_F(QueueTest, CtrlCCancelsWhatHasBegun)
{
    Started riders({RIDERS_BINARY_DIR "/riders", "film", folder / "job.ps", "--printer", "inkjet", "--dpi",
                    "1440x720", "--copies", "100", "--quiet"},
                   folder / "out");
    riders.waitFor([] { return !runProgram({"lpstat", "-o"}).out.empty(); });
    const int status = riders.end(SIGINT);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status << contentsOf(folder / "out");
    expectNothingSent();
}

class SmallServerTest : public PrintingTest {
protected:
    PrinterPipe pipe{folder / "printer"};
    OwnCupsd server{{{"inkjet", gutenprintPpd("escp2-1400"), pipe.uri()}}, "LimitRequestBody 20k\n"};
};

TEST_F(SmallServerTest, AJobThatItStopsTakingIsCancelled)
{
    const CommandResult result = film({"--printer", "inkjet", "--dpi", "720"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("job 1: "), std::string::npos) << result.err;
    EXPECT_EQ(runProgram({"lpstat", "-o"}).out, "");
    EXPECT_TRUE(pipe.isSilent());
}

TEST(NoServerTest, IsSaid)
{
    const TemporaryFolder folder;
    writeFile(folder / "job.ps", kJob);
    setenv("CUPS_SERVER", (folder / "none.sock").c_str(), 1);
    const CommandResult result = runRiders({"film", "job.ps", "--printer", "inkjet"}, "", folder.path());
    unsetenv("CUPS_SERVER");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.find("riders film: no print server at " + (folder / "none.sock").string() + ": "), 0u)
        << result.err;
}

}  // namespace
}  // namespace printing_tests
