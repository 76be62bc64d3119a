// Taking a riders file out of a job again: exactly, or not at all.
#include <cstdint>
#include <random>

#include "apply/job_structure.h"
#include "apply/markers.h"
#include "fuzz/job_structure_fuzz.cpp"
#include "host/apply_support.h"

namespace {

using Strip = ApplyTest;

TEST_F(Strip, GivesBackTheJobByteForByte)
{
    for (const std::string &bytes :
         {plainJob, std::string("%!"), std::string("%!PS\r\n\0\n\r%%EndSetup", 18),
          std::string("%!PS\r%%Page: 1 1\r"), std::string("\x04%!PS\n\x04"), "%!" + std::string(5 << 20, '\n')})
        EXPECT_TRUE(stripped(applied(bytes)) == bytes);
}

TEST_F(Strip, FragmentWithoutLineEndLeavesNoTrace)
{
    writeFile(riders, "%!Zu3_Riders\n%Zu3_RidersEnd");
    for (const std::string &bytes : {plainJob, std::string("%!PS")})
        EXPECT_EQ(stripped(applied(bytes)), bytes);
}

TEST_F(Strip, FragmentWithMarkersOfItsOwnComesOutWhole)
{
    writeFile(riders,
              fragment + "%RidersEnd\n%%EndSetup\n%RidersBegin: 3 bytes\n%%BeginDocument\n%Zu3_RidersEnd\n");
    EXPECT_EQ(stripped(applied(plainJob)), plainJob);
}

TEST_F(Strip, MarkerAtTheVeryLimitIsFound)
{
    for (size_t short_ : {0, 1, 2, 3}) {
        std::string bytes = "%!PS\n%%EndProlog\n";
        bytes += std::string(riders::apply::kJobHeadLimit - bytes.size() - 8 - short_, 'x') + "\n%%Page:\n";
        bytes += std::string(300, 'y') + "\n";
        const std::string both = applied(bytes);
        EXPECT_TRUE(stripped(both) == bytes) << short_;
        writeFile(job, both);
        EXPECT_EQ(apply(out), job.string() + ": has a riders file in it already; strip it first");
    }
}

TEST_F(Strip, JobWithoutAFragmentIsRefusedAndNothingWritten)
{
    EXPECT_EQ(strip(job, out), job.string() + ": has no riders file in it");
    EXPECT_FALSE(std::filesystem::exists(out));
    EXPECT_EQ(filesInFolder(), 2u);
}

TEST_F(Strip, FragmentInALandscapeJobComesOutWhole)
{
    EXPECT_EQ(stripped(applied(landscapeJob)), landscapeJob);
}

// The marker lines and what they say about the fragment, with each byte changed in turn.
TEST_F(Strip, DamagedFragmentIsRefused)
{
    const std::string whole = applied(landscapeJob);
    const size_t start = whole.find("%RidersBegin"), end = whole.find("showpage");
    const size_t body = whole.find("\n/x 1 def"), bodyEnd = whole.find("%RidersEnd");
    for (size_t at = start; at < end; ++at) {
        if (at >= body && at < bodyEnd)
            continue;  // the fragment's own text is not checked
        std::string damaged = whole;
        damaged[at] = damaged[at] == '7' ? '8' : '7';
        writeFile(job, damaged);
        const std::string message = strip(job, folder / "stripped");
        EXPECT_TRUE(message.ends_with("damaged; nothing was taken out") ||
                    message.ends_with("has no riders file in it"))
            << at << ": " << message;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "stripped"));
}

TEST_F(Strip, CutOffFragmentIsRefused)
{
    const std::string whole = applied("%!PS\n%%Orientation: Landscape\n%%EndComments");
    for (size_t length = 0; length < whole.size(); ++length) {
        writeFile(job, whole.substr(0, length));
        EXPECT_NE(strip(job, folder / "stripped"), "done") << length;
    }
}

// As apply pads where that lets the job's blocks be shared, here wherever the test runs.
std::string paddedBy(const std::string &both, size_t padding)
{
    const size_t at = both.find("%RidersBegin"), body = both.find('\n', at), end = both.find("%RidersEnd");
    return both.substr(0, body) + ", padded: " + std::to_string(padding) + both.substr(body, end - body) +
           riders::apply::paddingLines(padding) + both.substr(end);
}

TEST_F(Strip, PaddedFragmentComesOutWhole)
{
    for (const std::string &bytes : {plainJob, landscapeJob})
        for (size_t padding : {1, 2, 127, 128, 129, 130, 4095, 131072})
            EXPECT_EQ(stripped(paddedBy(applied(bytes), padding)), bytes) << padding;
}

TEST_F(Strip, PaddingIsCommentsOfLessThan256Bytes)
{
    for (size_t padding = 1; padding < 400; ++padding) {
        const std::string lines = riders::apply::paddingLines(padding);
        ASSERT_EQ(lines.size(), padding);
        EXPECT_EQ(lines.back(), '\n');
        for (size_t at = 0, end; at < lines.size(); at = end + 1) {
            end = lines.find('\n', at);
            EXPECT_LT(end - at, 256u);
            EXPECT_TRUE(end == at || lines[at] == '%');
            EXPECT_EQ(lines.substr(at + 1, end - at).find_first_not_of(" \n"), std::string::npos);
        }
    }
}

TEST_F(Strip, DamagedPaddingIsRefused)
{
    const std::string both = applied(plainJob), padded = paddedBy(both, 200);
    std::vector<std::string> damaged = {padded, padded, paddedBy(both, 0), paddedBy(both, 131073), padded, padded};
    damaged[0].erase(padded.find("\n%   ") + 2, 1);
    damaged[1][padded.find("\n%   ") + 3] = 'x';
    damaged[4].replace(padded.find("200"), 3, "199");
    damaged[5].replace(padded.find("200"), 3, "0200");
    for (const std::string &bytes : damaged) {
        writeFile(job, bytes);
        EXPECT_TRUE(strip(job, out).ends_with("damaged; nothing was taken out")) << bytes;
    }
}

TEST_F(Strip, OtherLineEndsAreDamage)
{
    std::string changed;
    for (char byte : applied(plainJob))
        changed += byte == '\n' ? "\r\n" : std::string(1, byte);
    writeFile(job, changed);
    EXPECT_EQ(strip(job, out), job.string() + ": the riders file in it is damaged; nothing was taken out");
}

TEST_F(Strip, PipesAndTheJobItself)
{
    const std::string both = applied(plainJob);
    const Piped piped = runPiped(both, [] { riders::apply::stripRiders({}); });
    EXPECT_EQ(piped.output, plainJob);
    EXPECT_EQ(strip(out, out), "done");
    EXPECT_EQ(contentsOf(out), plainJob);
}

std::string randomJob(std::mt19937 &random)
{
    static const std::string lines[] = {"%%EndComments",
                                        "%%BeginProlog",
                                        "%%EndProlog",
                                        "%%BeginSetup",
                                        "%%EndSetup",
                                        "%%Page: 1 1",
                                        "%%Trailer",
                                        "%%EOF",
                                        "%%BeginDocument: x",
                                        "%%EndDocument",
                                        "%%BeginData: 20 Hex Bytes",
                                        "%%BeginData: 2 ASCII Lines",
                                        "%%BeginData:",
                                        "%%EndData",
                                        "%%BeginBinary: 7",
                                        "%%EndBinary",
                                        "",
                                        "showpage",
                                        "% RidersBegin",
                                        "\x04",
                                        "/x (%!Zu3_Riders) def",
                                        "\033%-12345X",
                                        "%%",
                                        "%%+"};
    static const std::string ends[] = {"\n", "\r", "\r\n", "\n", ""};
    std::string job = "%!PS-Adobe-3.0";
    job += ends[random() % 5];
    for (unsigned count = random() % 30; count > 0; --count)
        job += lines[random() % std::size(lines)] + ends[random() % 5];
    return job;
}

TEST_F(Strip, RandomJobsComeBackAsTheyWere)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int turn = 0; turn < 200; ++turn) {
        const std::string bytes = randomJob(random);
        ASSERT_EQ(stripped(applied(bytes)), bytes);
    }
}

TEST(StripFuzz, RandomBytesNeverLoseTheMarker)
{
    std::mt19937 random(1);
    for (int turn = 0; turn < 20000; ++turn) {
        std::string bytes = randomJob(random);
        for (unsigned count = random() % 4; count > 0; --count)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size()), 0);
    }
}

}  // namespace
