// The printer keeps to the protocol: what comes with CUPS to try that, and what that does not try.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <regex>

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

    // A page of pixels, small, as the sheet of such a name would be large.
    fs::path pixels(const std::string &type) const
    {
        const fs::path file = folder / (type + ".pwg");
        const std::string space = type == "srgb-8" ? "19" : "18";
        const CommandResult result =
            runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pwgraster", "-dcupsColorSpace=" + space,
                        "-r150", "-o", file, folder / "job.ps"});
        EXPECT_EQ(result.status, 0) << result.err;
        return file;
    }

    // The tests look for what they print beside themselves, also for what they then skip. CUPS's samples are not
    // in Debian.
    void makeSamples(const std::string &tests) const
    {
        const fs::path grey = pixels("sgray-8"), colour = pixels("srgb-8");
        for (const char *sheet : {"a4", "letter"}) {
            fs::create_symlink(pdf(), folder / ("document-" + std::string(sheet) + ".pdf"));
            fs::create_symlink(folder / "job.ps", folder / ("document-" + std::string(sheet) + ".ps"));
        }
        for (const char *picture : {"color.jpg", "gray.jpg"})
            EXPECT_EQ(runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=jpeg", "-r72", "-o",
                                  folder / picture, folder / "job.ps"})
                          .status,
                      0);
        static const std::regex file("\n\tFILE (pwg-raster-samples-\\S+)");
        for (std::sregex_iterator at(tests.begin(), tests.end(), file), end; at != end; ++at) {
            const fs::path sample = folder / (*at)[1].str();
            fs::create_directories(sample.parent_path());
            if (!fs::exists(sample))
                fs::create_symlink(sample.string().find("/srgb-8/") == std::string::npos ? grey : colour, sample);
        }
    }

    fs::path pdf() const
    {
        EXPECT_EQ(runProgram({"ps2pdf", "job.ps", "job.pdf"}, "", folder.path()).status, 0);
        return folder / "job.pdf";
    }

    TemporaryFolder folder;
    const OwnService service{folder.path(), {"--queue", "films:dpi=150"}};
};

// Up to the samples at other resolutions than the lowest; with RIDERS_EVERY_SAMPLE the tests as they are.
TEST_F(ConformanceTest, IsAPrinterForIppEverywhere)
{
    for (const char *name : {"ipp-1.1.test", "ipp-2.0.test"})
        fs::copy_file(fs::path("/usr/share/cups/ipptool") / name, folder / name);
    std::string tests = contentsOf("/usr/share/cups/ipptool/ipp-everywhere.test");
    if (std::getenv("RIDERS_EVERY_SAMPLE") == nullptr) {
        const std::size_t other = tests.find("NAME \"Print color.jpg-4x6 @ 180dpi");
        ASSERT_NE(other, tests.npos);
        tests.resize(tests.rfind('{', other));
    }
    writeFile(folder / "ipp-everywhere.test", tests);
    makeSamples(tests);
    const CommandResult result =
        runProgram({"ipptool", "-tI", "-V", "2.0", "-f", folder / "job.ps", service.uri(), "ipp-everywhere.test"},
                   "", folder.path());
    EXPECT_EQ(result.out.find("[FAIL]"), std::string::npos) << result.out;
    EXPECT_EQ(result.err.find("cannot be read"), std::string::npos) << result.err;
    static const std::regex printed("\n    Print \\S+ @ [^\n]*\\[PASS\\]");
    const auto count = std::distance(std::sregex_iterator(result.out.begin(), result.out.end(), printed), {});
    // In grey and in colours, each as it is and compressed in two ways.
    EXPECT_GE(count, 6) << result.out;
    std::printf("%td samples were printed\n", count);
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
