// Where the annotation stands on the sheet, and that it says what was typed.
#include <sstream>

#include "printed/postscript_support.h"
#include "support/command.h"

namespace {

struct Box {
    int left, bottom, right, top;  // in points from the lower left corner of what is read
};

// The box of the ink on a sheet that is read after that many quarter turns to the right.
Box inkOf(const Bitmap &page, int turns)
{
    Box box = {1 << 20, 1 << 20, -1, -1};
    for (int row = 0; row < page.height; ++row)
        for (int column = 0; column < page.width; ++column)
            if (page.at(column, row)) {
                int x = column, y = page.height - 1 - row, width = page.width, height = page.height;
                for (int turn = 0; turn < turns; ++turn) {
                    const int right = y;
                    y = width - 1 - x, x = right;
                    std::swap(width, height);
                }
                box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x + 1),
                       std::max(box.top, y + 1)};
            }
    return box;
}

struct Sheet {
    const char *setup;  // what the job does before it prints the sheet
    int turns = 0;
    Box margins = {};  // what else is to stay free
};

const std::vector<Sheet> kSheets = {
    {"<< /PageSize [612 792] >> setpagedevice"},
    {"<< /PageSize [595 842] >> setpagedevice"},
    {"<< /PageSize [842 1191] >> setpagedevice"},
    {"<< /PageSize [842 595] >> setpagedevice"},
    {"<< /PageSize [298 420] >> setpagedevice"},
    {"<< /PageSize [150 100] >> setpagedevice"},
    {"<< /PageSize [612 792] /ImagingBBox [30 40 500 700] >> setpagedevice", 0, {30, 40, 112, 92}},
    {"<< /PageSize [612 792] /ImagingBBox null >> setpagedevice 90 rotate 0 -612 translate", 1},
    {"180 rotate 0.5 0.5 scale", 2},
    {"-90 rotate 10 300 translate", 3},
    {"90 rotate 1 -1 scale", 1},
    {"0 792 translate 1 -1 scale"},
    {"-1 1 scale"},
    {"30 rotate"},
    {"300 300 translate 10 10 5 0 360 arc clip newpath 0.001 0.001 scale"},
    {"0 0 scale"},
};

class PostScriptAnnotation : public ::testing::Test {
protected:
    // Prints all the sheets with the annotation, to "page1" and so on.
    void print(const std::string &text, const std::string &size)
    {
        std::string job = "%!PS\n" + composeRiders({.annotation = text, .size = size});
        for (const Sheet &sheet : kSheets)
            job += std::string(sheet.setup) + " showpage\n";
        const auto result = runGhostscript(folder, job, "page%d", "-sDEVICE=pbmraw -r72");
        ASSERT_EQ(result.exitCode, 0) << result.output << result.errors;
    }
    // Checks that the ink is at the foot and over no margin; returns its box.
    Box inPlace(size_t index, double lowest)
    {
        const Sheet &sheet = kSheets[index];
        const Bitmap page = readBitmap(folder / ("page" + std::to_string(index + 1)));
        const bool lying = sheet.turns % 2;
        const int width = lying ? page.height : page.width, height = lying ? page.width : page.height;
        const int inset = std::min(18, std::min(width, height) / 12);
        const Box ink = inkOf(page, sheet.turns), &margins = sheet.margins;
        EXPECT_GE(ink.left, margins.left + inset - 1);
        EXPECT_LE(ink.left, margins.left + inset + 3) << "at the left";
        EXPECT_LE(ink.right, width - margins.right - inset + 1);
        EXPECT_GE(ink.bottom, margins.bottom + inset - 1);
        EXPECT_LE(ink.bottom, margins.bottom + inset + lowest) << "at the foot";
        return ink;
    }
    std::string printedText(const std::string &job)
    {
        const auto result = runGhostscript(folder, job, "page.pdf", "-sDEVICE=pdfwrite");
        EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
        return runProgram({"pdftotext", "-layout", "-enc", "UTF-8", (folder / "page.pdf").string(), "-"}, {},
                          folder.path())
            .out;
    }

    TemporaryFolder folder;
};

TEST_F(PostScriptAnnotation, IsUprightAtTheFootOfEverySheet)
{
    print("Hugging", "12");
    for (size_t index = 0; index < kSheets.size(); ++index) {
        SCOPED_TRACE(kSheets[index].setup);
        const Box ink = inPlace(index, 2);
        EXPECT_NEAR(ink.right - ink.left, 42, 3);
        EXPECT_NEAR(ink.top - ink.bottom, 11, 2);
    }
}

TEST_F(PostScriptAnnotation, OfAnyLengthStaysOnTheSheet)
{
    std::string text = "Long:";
    while (text.size() < 250)
        text += " words";
    print(text, "30");
    for (size_t index = 0; index < kSheets.size(); ++index) {
        SCOPED_TRACE(kSheets[index].setup);
        const Box ink = inPlace(index, 8);
        EXPECT_GT(ink.right - ink.left, 90);
        EXPECT_LT(ink.top - ink.bottom, 60);
    }
}

TEST_F(PostScriptAnnotation, TooLongForTheSheetIsAllThere)
{
    std::string text = "Long:";
    for (int number = 1; text.size() < 245; ++number)
        text += " word" + std::to_string(number);
    const std::string job = "%!PS\n<< /PageSize [120 200] >> setpagedevice\n" +
                            composeRiders({.annotation = text, .size = "30"}) + "showpage\n";
    std::istringstream printed(printedText(job)), typed(text);
    for (std::string one, other; typed >> one;) {
        printed >> other;
        EXPECT_EQ(one, other);
    }
}

TEST_F(PostScriptAnnotation, AccentsArePrintedAsTyped)
{
    const std::string text = "Épreuve n° 3: œuvre, Größe, smörgåsbord, piñata, ça va, Ångström, Øre, €5, ¿qué? "
                             "“quoted” ‘so’ – — … ™ © µ ≤ ≥ ≠ ∞ ∑ √ π ÿ Ÿ ı ‰ † ‡ • 'straight' `grave`";
    const auto made = runProgram({"env", "XDG_CONFIG_HOME=" + (folder / "config").string(),
                                  RIDERS_BINARY_DIR "/riders", "make", "-o", "made", "--annotation", text},
                                 {}, folder.path());
    ASSERT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(printedText("%!PS\n" + contentsOf(folder / "made") + "showpage\n"), text + "\n\f");
    const auto refused =
        runProgram({"env", "XDG_CONFIG_HOME=" + (folder / "config").string(), RIDERS_BINARY_DIR "/riders", "make",
                    "-o", "other", "--annotation", "Épreuve №"},
                   {}, folder.path());
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("№"), std::string::npos) << refused.err;
}

TEST_F(PostScriptAnnotation, AccentsAreInEveryFontButThoseOfSymbols)
{
    std::string job = "%!PS\n", expected;
    for (const char *font :
         {"Times-BoldItalic", "Helvetica", "Helvetica-BoldOblique", "Courier", "Courier-Bold"}) {
        job += "save\n" + composeRiders({.annotation = "\x83preuve \xBD", .font = font}) + "showpage restore\n";
        expected += "Épreuve \u2126\n\f";  // the name omega also means the ohm sign
    }
    job += composeRiders({.annotation = "abc", .font = "Symbol"}) + "showpage\n";
    EXPECT_EQ(printedText(job), expected + "αβχ\n\f");
}

TEST_F(PostScriptAnnotation, MissingFontIsReplacedAndReported)
{
    const auto result = runGhostscript(
        folder, "%!PS\n" + composeRiders({.annotation = "still here", .font = "Nowhere-Bold"}) + "showpage\n",
        "page", "-sDEVICE=txtwrite");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "%%[ riders: font Nowhere-Bold is not there; Helvetica is used ]%%\n");
    EXPECT_NE(contentsOf(folder / "page").find("still here"), std::string::npos);
}

TEST_F(PostScriptAnnotation, IsThereOncePerSheetHoweverManyPagesAreOnIt)
{
    std::string job = "%!PS-Adobe-3.0\n%%Pages: 5\n%%EndComments\n%%BeginSetup\n" +
                      composeRiders({.annotation = "NOTE"}) + "%%EndSetup\n";
    for (int page = 1; page <= 5; ++page)
        job += "%%Page: " + std::to_string(page) + " " + std::to_string(page) +
               "\nsave 50 50 100 100 rectstroke restore showpage\n";
    writeFile(folder / "five.ps", job + "%%Trailer\n%%EOF\n");
    const auto nup = runProgram({"psnup", "-q", "-2", "-pa4", "five.ps", "two.ps"}, {}, folder.path());
    ASSERT_EQ(nup.status, 0) << nup.err;
    EXPECT_EQ(printedText(contentsOf(folder / "two.ps")), "NOTE\n\fNOTE\n\fNOTE\n\f");
}

// The text contains lines that page-picking programs look for.
TEST_F(PostScriptAnnotation, IsNoPageForProgramsThatPickPages)
{
    const std::string text = "before\n%%Page: 7 7\n%%Trailer\nafter";
    std::string job = "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndComments\n%%BeginSetup\n" +
                      composeRiders({.annotation = text}) + "%%EndSetup\n%%Page: 1 1\nshowpage\n%%Page: 2 2\n" +
                      "userdict /Zu3_Riders get /riderText get print showpage\n%%Trailer\n%%EOF\n";
    writeFile(folder / "two.ps", job);
    const auto picked = runProgram({"psselect", "-q", "-p2", "two.ps", "one.ps"}, {}, folder.path());
    ASSERT_EQ(picked.status, 0) << picked.err;
    const auto result = runGhostscript(folder, contentsOf(folder / "one.ps"), "page%d", "-sDEVICE=txtwrite");
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    EXPECT_EQ(result.output, text);
    EXPECT_FALSE(std::filesystem::exists(folder / "page2"));
}

// Whatever stands before the riders file, and however the job reaches the interpreter.
TEST_F(PostScriptAnnotation, IsReadWhereverItStands)
{
    const std::string text = "\n(\\ ) quit \x04 %%EOF\n\r%%-";
    const std::string riders = composeRiders({.annotation = text});
    const std::string showText = "userdict /Zu3_Riders get /riderText get print showpage\n";
    for (const std::string &job : {riders + "%!PS\n" + showText, "%!PS\n" + riders + showText,
                                   "%!PS\r%%BeginSetup\r" + riders + "%%EndSetup\r" + showText,
                                   "%!PS\r\nsave\r\n" + riders + showText + "restore\r\n"}) {
        const auto asFile = runGhostscript(folder, job, "page", "-sDEVICE=nullpage");
        EXPECT_EQ(asFile.output, text) << asFile.errors;
        const auto asInput = runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=nullpage", "-"},
                                        job, folder.path());
        EXPECT_EQ(asInput.out, text) << asInput.err;
    }
}

}  // namespace
