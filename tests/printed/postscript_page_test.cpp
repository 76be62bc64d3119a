// What else a riders file does: flatness, annotation; and what it leaves as it was.
#include <random>

#include "printed/postscript_support.h"

namespace {

class PostScriptPage : public ::testing::Test {
protected:
    GhostscriptResult run(const std::string &job, const std::string &options = "-sDEVICE=pbmraw -r72 -g600x800")
    {
        return runGhostscript(folder, job, "page", options);
    }
    std::string outputOf(const std::string &job)
    {
        const auto result = run(job);
        EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
        return result.output;
    }

    TemporaryFolder folder;
};

// The text as the fragment read it, one number per byte.
std::string readAnnotation(const std::string &text)
{
    return composeRiders({.annotation = text}) + "userdict /Zu3_Riders get /riderText get {=} forall (end) =\n";
}

TEST_F(PostScriptPage, PiecesBeginAndEndWhereTheValuesStand)
{
    EXPECT_TRUE(pieceBytes(16499).starts_with("%!Zu3_Riders\n"));
    for (int id : {16499, 16500, 16502, 16504, 16507, 16561, 16511, 16135, 16520, 16600})
        EXPECT_TRUE(pieceBytes(id).ends_with("\n")) << id;
    EXPECT_TRUE(pieceBytes(16510).ends_with("riderReadText ")) << "one blank, no line end";
    for (int id : {16501, 16503, 16508, 16509})
        EXPECT_FALSE(pieceBytes(id).ends_with("\n")) << id;
    for (int id : {16499, 16500, 16135, 16520, 16600, 16510, 16511})
        EXPECT_EQ(pieceBytes(id).find('\r'), std::string::npos) << id;
}

TEST_F(PostScriptPage, AllCombinationsLeaveTheStacksAsTheyWere)
{
    std::string job = "%!PS\n1 [2] (three)\nuserdict begin\n", expected;
    for (int bits = 0; bits < 64; ++bits) {
        RidersChoice choice;
        if (bits & 1)
            choice.frequency = "12";
        if (bits & 2)
            choice.angle = "45";
        if (bits & 4)
            choice.spotBody = pieceBytes(16128 + bits % 7);
        if (bits & 8)
            choice.flatness = "0.5";
        if (bits & 16)
            choice.annotation = "page (of " + std::to_string(bits);
        choice.errorHandler = bits & 32;
        job += "save\n" + composeRiders(choice) + "(" + std::to_string(bits) +
               " ) print count =only ( ) print "
               "countdictstack =\nshowpage restore\n";
        expected += std::to_string(bits) + " 4 4\n";
    }
    const auto result = run(job + "count =only ( ) print countdictstack =\n");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, expected + "3 4\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(PostScriptPage, FlatnessIsSet)
{
    EXPECT_EQ(outputOf("%!PS\n" + composeRiders({.flatness = "0.5"}) + "currentflat =\n"), "0.5\n");
    EXPECT_EQ(outputOf("%!PS\n7 setflat " + composeRiders({.frequency = "12"}) + "currentflat =\n"), "7.0\n");
}

TEST_F(PostScriptPage, JobsNamesAreNeitherChangedNorUsed)
{
    const std::string job = "%!PS\n/add {(job's own add) =} def /riderSpot (job's) def /show 1 def\n" +
                            composeRiders({.frequency = "12",
                                           .angle = "5",
                                           .spotBody = pieceBytes(16128),
                                           .annotation = "x",
                                           .errorHandler = true}) +
                            "add riderSpot =\nshowpage\n";
    EXPECT_EQ(outputOf(job), "job's own add\njob's\n");
}

TEST_F(PostScriptPage, AnnotationIsAtTheFootOfEachPage)
{
    const std::string job = "%!PS\n" + composeRiders({.annotation = "Plate 7 for Anna"}) +
                            "showpage 10 10 translate save restore showpage\n";
    const auto result = runGhostscript(folder, job, "page%d", "-sDEVICE=pbmraw -r72 -g600x800");
    ASSERT_EQ(result.exitCode, 0) << result.output << result.errors;
    const Bitmap first = readBitmap(folder / "page1");
    EXPECT_GT(first.share(18, 800 - 30, 110, 800 - 16), 0.1);
    EXPECT_EQ(first.share(0, 0, 600, 800 - 40), 0);
    EXPECT_EQ(readBitmap(folder / "page2").ink, first.ink);
}

TEST_F(PostScriptPage, AnnotationIsText)
{
    const std::string job = "%!PS\n" + composeRiders({.annotation = "Plate 7 for Anna"}) + "showpage showpage\n";
    const auto result = runGhostscript(folder, job, "page%d", "-sDEVICE=txtwrite");
    ASSERT_EQ(result.exitCode, 0) << result.output << result.errors;
    for (const char *page : {"page1", "page2"})
        EXPECT_NE(contentsOf(folder / page).find("Plate 7 for Anna"), std::string::npos) << page;
}

TEST_F(PostScriptPage, JobWithoutAnnotationHasNone)
{
    ASSERT_EQ(run("%!PS\n" + composeRiders({.frequency = "12"}) + "showpage\n").exitCode, 0);
    EXPECT_EQ(readBitmap(folder / "page").share(0, 0, 600, 800), 0);
}

TEST_F(PostScriptPage, JobsOwnEndOfPageProcedureStillRuns)
{
    const std::string job = "%!PS\n<< /EndPage {exch pop 2 ne dup {(own end of page) =} if} >> setpagedevice\n" +
                            composeRiders({.annotation = "note"}) + "showpage\n";
    EXPECT_EQ(outputOf(job), "own end of page\n");
    EXPECT_GT(readBitmap(folder / "page").share(18, 770, 60, 784), 0.05);
}

TEST_F(PostScriptPage, AnnotationKeepsTheGraphicsStateOfTheJob)
{
    const std::string state =
        "2 3 scale 5 setlinewidth 1 setlinecap 2 setlinejoin 4 setmiterlimit [3 1] 2 setdash "
        "9 setflat {dup mul} settransfer 33 11 {pop} setscreen true setoverprint 0.5 setsmoothness "
        "true setstrokeadjust 1 0 0 setrgbcolor /Courier 7 selectfont\n";
    const std::string query = "matrix currentmatrix == currentlinewidth = currentlinecap = currentlinejoin = "
                              "currentmiterlimit = currentdash = == currentflat = currenttransfer == "
                              "currentscreen == = = currentoverprint = currentsmoothness = currentstrokeadjust = "
                              "[currentcolor] == currentcolorspace == currentfont /FontName get =\n";
    EXPECT_EQ(outputOf("%!PS\n" + state + composeRiders({.annotation = "x"}) + query),
              outputOf("%!PS\n" + state + query));
}

// Where there is no stack of clips, as on level 2, at least a clip of straight edges is kept.
TEST_F(PostScriptPage, AnnotationKeepsClipAndPathOfTheJob)
{
    const std::string ring = "300 100 60 0 360 arc closepath 300 100 30 0 360 arc closepath eoclip newpath\n";
    const std::string path = "200 0 moveto 400 200 lineto 400 0 lineto closepath\n";
    const std::string after = "gsave fill grestore initclip 30 setlinewidth stroke showpage\n";
    std::string levelTwo = composeRiders({.annotation = "note"});
    const size_t at = levelTwo.find("/clipsave riderHas");
    ASSERT_NE(at, std::string::npos);
    levelTwo.replace(at, 9, "/levelThreeOnly");
    for (const auto &[clip, riders] : {std::pair{"30 rotate " + ring, composeRiders({.annotation = "note"})},
                                       {"250 50 100 100 rectclip 30 rotate\n", levelTwo}}) {
        outputOf("%!PS\n" + clip + path + after);
        const Bitmap plain = readBitmap(folder / "page");
        outputOf("%!PS\n" + clip + path + riders + after);
        Bitmap page = readBitmap(folder / "page");
        EXPECT_GT(page.share(18, 770, 40, 784), 0.05);
        std::fill(page.ink.begin() + 760 * 600, page.ink.begin() + 790 * 600, false);
        EXPECT_TRUE(page.ink == plain.ink) << clip;
    }
}

// A negative's unpainted page stays as the job found it.
TEST_F(PostScriptPage, PageIsNotErasedThroughTheJobsTransfer)
{
    outputOf("%!PS\n{1 exch sub} settransfer\n" + composeRiders({.frequency = "12"}) +
             "1 setgray 0 400 600 400 rectfill showpage\n");
    EXPECT_EQ(readBitmap(folder / "page").share(0, 0, 600, 400), 1);
    EXPECT_EQ(readBitmap(folder / "page").share(0, 400, 600, 800), 0);
}

std::string numbers(const std::string &text)
{
    std::string lines;
    for (unsigned char byte : text)
        lines += std::to_string(byte) + "\n";
    return lines + "end\n";
}

TEST_F(PostScriptPage, AnnotationTextIsDataWhateverItsBytes)
{
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const std::string nearlyTheMark = pieceBytes(16511).substr(0, 255);
    for (const std::string &text :
         {std::string(), std::string("(unbalanced"), std::string(") quit ("), all, std::string("\\"),
          std::string("\n\r\n\r"), std::string("% comment"), std::string("\0\0", 2), nearlyTheMark,
          std::string("%-"), std::string("%%%-%-")})
        EXPECT_EQ(outputOf("%!PS\n" + readAnnotation(text)), numbers(text)) << text;
}

TEST_F(PostScriptPage, RandomAnnotationTextsAreData)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::string job = "%!PS\n", expected;
    for (int turn = 0; turn < 60; ++turn) {
        std::string text(random() % 256, 0);
        const std::string likely = "%-()\\\n\r ";
        for (char &byte : text)
            byte = static_cast<char>(random() % 2 ? likely[random() % likely.size()] : random());
        job += "save\n" + readAnnotation(text) + "restore\n";
        expected += numbers(text);
    }
    EXPECT_EQ(outputOf(job), expected);
}

// It does not matter what kind of line ends a transfer makes of those in the riders file.
TEST_F(PostScriptPage, RidersFileWorksWithOtherLineEnds)
{
    const std::string riders = composeRiders({.frequency = "12", .annotation = "(x", .errorHandler = true});
    for (const char *end : {"\r", "\r\n"}) {
        std::string other;
        for (char byte : riders)
            other += byte == '\n' ? end : std::string(1, byte);
        EXPECT_EQ(outputOf("%!PS\n" + other + "userdict /Zu3_Riders get /riderText get =\n"), "(x\n");
    }
}

TEST_F(PostScriptPage, Level1InterpreterAnnotatesAtShowpage)
{
    // An interpreter without page devices, colour screens and the like, as far as names can hide them.
    std::string riders = composeRiders({.frequency = "12", .annotation = "level one", .errorHandler = true});
    for (const char *name : {"/setpagedevice", "/currentcolorscreen", "/sethalftone"})
        for (const std::string before : {"", "systemdict "})
            for (const std::string after : {" known", " riderHas"})
                for (size_t at; (at = riders.find(before + name + after)) != std::string::npos;)
                    riders.replace(at, before.size() + std::string(name).size(), before + "/levelTwoOnly");
    EXPECT_EQ(riders.find("<<"), std::string::npos) << "a syntax error on level 1";
    EXPECT_EQ(riders.find("//"), std::string::npos);
    EXPECT_EQ(outputOf("%!PS\n" + riders + "currentscreen pop pop = showpage\n"), "12.0\n");
    EXPECT_GT(readBitmap(folder / "page").share(18, 770, 60, 784), 0.05);
}

}  // namespace
