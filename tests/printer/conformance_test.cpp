// The printer keeps to the protocol: what comes with CUPS to try that, and what that does not try.
#include <cstdlib>
#include <ctime>

#include "printer/own_service.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

class ConformanceTest : public ::testing::Test {
protected:
    ConformanceTest()
    {
        writeFile(folder / "job.ps", kJob);
        // It says how long it has been there in whole seconds, and 0 is none.
        const std::time_t begin = std::time(nullptr);
        service.waitUntil([&] { return std::time(nullptr) > begin + 1; });
    }

    // One of the samples that the tests print where they are there: pixels of a page.
    void makeSample(const std::string &type, const std::string &name, const std::string &dpi) const
    {
        const fs::path place = folder / ("pwg-raster-samples-" + dpi + "dpi") / type;
        fs::create_directories(place);
        const std::string space = type == "sgray-8" ? "18" : "19";
        const CommandResult result =
            runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pwgraster", "-dcupsColorSpace=" + space,
                        "-r" + dpi, "-o", place / (name + "-" + type + "-" + dpi + "dpi.pwg"), folder / "job.ps"});
        ASSERT_EQ(result.status, 0) << result.err;
    }

    TemporaryFolder folder;
    const OwnService service{folder.path(), {"--queue", "films:dpi=150"}};
};

// The tests include each other, and look for their samples, beside themselves. CUPS's samples are not in Debian;
// these are smaller, and a few of them, or with RIDERS_EVERY_SAMPLE all that the queue's resolutions and kinds
// call for.
TEST_F(ConformanceTest, IsAPrinterForIppEverywhere)
{
    for (const char *name : {"ipp-1.1.test", "ipp-2.0.test", "ipp-everywhere.test"})
        fs::copy_file(fs::path("/usr/share/cups/ipptool") / name, folder / name);
    const bool every = std::getenv("RIDERS_EVERY_SAMPLE") != nullptr;
    const std::vector<std::string> names =
        every ? std::vector<std::string>{"color.jpg-4x6",   "gray.jpg-4x6", "document-a4",
                                         "document-letter", "onepage-a4",   "onepage-letter"}
              : std::vector<std::string>{"color.jpg-4x6"};
    const std::vector<std::string> resolutions =
        every ? std::vector<std::string>{"150", "300", "600"} : std::vector<std::string>{"150"};
    std::size_t samples = 0;
    for (const std::string &dpi : resolutions)
        for (const std::string &name : names)
            for (const char *type : {"sgray-8", "srgb-8"}) {
                if (type == std::string("srgb-8") && name == "gray.jpg-4x6")
                    continue;  // the tests have none
                ASSERT_NO_FATAL_FAILURE(makeSample(type, name, dpi));
                ++samples;
            }
    const CommandResult result = runProgram(
        {"ipptool", "-tI", "-V", "2.0", "-f", folder / "job.ps", service.uri(), folder / "ipp-everywhere.test"},
        "", folder.path());
    EXPECT_EQ(result.out.find("[FAIL]"), std::string::npos) << result.out;
    std::size_t printed = 0;
    for (std::size_t at = 0; (at = result.out.find("    Print ", at)) != result.out.npos; ++at)
        printed += result.out.substr(at, result.out.find('\n', at) - at).ends_with("[PASS]") ? 1 : 0;
    // Each also compressed, in two ways.
    EXPECT_GE(printed, 3 * samples) << result.out << result.err;
}

TEST_F(ConformanceTest, SaysBeforeAJobComesWhetherItsFormatIsTaken)
{
    for (const char *taken : {"application/pdf", "application/postscript", "image/jpeg", "image/png",
                              "image/pwg-raster", "application/octet-stream"})
        EXPECT_EQ(service.validate(taken), IPP_STATUS_OK) << taken;
    for (const char *unknown : {"text/html", "image/tiff", "application/x-odd"})
        EXPECT_EQ(service.validate(unknown), IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED) << unknown;
    // The filters' end, of which no document is.
    EXPECT_EQ(service.validate("application/vnd.riders-films"), IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED);
}

}  // namespace
}  // namespace printer_tests
