// One plate's screen as it is written on the command line.
#include <gtest/gtest.h>

#include "io/refusal.h"
#include "screens/plate_spelling.h"

namespace {

namespace screens = riders::screens;

std::string refusalOf(const std::string &text)
{
    try {
        return "taken: " + textFromPlate(screens::plateFromText(text));
    } catch (const riders::io::Refusal &refusal) {
        return refusal.message;
    }
}

void expectPlate(const std::string &text, const std::string &plate, std::optional<double> frequency,
                 std::optional<double> angle, const std::string &shape)
{
    const screens::PlateScreen read = screens::plateFromText(text);
    EXPECT_EQ(read.plate, plate) << text;
    EXPECT_EQ(read.frequency, frequency) << text;
    EXPECT_EQ(read.angle, angle) << text;
    EXPECT_EQ(read.shape, shape) << text;
}

}  // namespace

TEST(PlateSpelling, AnyPartAfterTheNameMayBeLeftOut)
{
    expectPlate("Cyan:133@15,Round", "Cyan", 133, 15, "Round");
    expectPlate("Cyan:133.5@-7.5", "Cyan", 133.5, -7.5, "");
    expectPlate("Cyan:133", "Cyan", 133, {}, "");
    expectPlate("Cyan:@15", "Cyan", {}, 15, "");
    expectPlate("Cyan:,Round", "Cyan", {}, {}, "Round");
    expectPlate("Cyan:133,./a,b@c:d", "Cyan", 133, {}, "./a,b@c:d");
    expectPlate("*:133@15", "*", 133, 15, "");
    expectPlate(" PANTONE 300 C : 133 @ -15 , Round ", "PANTONE 300 C", 133, -15, "Round");
    expectPlate("Cyan: spot-133-15-round ", "Cyan", 133, 15, "round");
}

TEST(PlateSpelling, ACommaBetweenDigitsIsADecimalComma)
{
    expectPlate("Cyan:133,5@15,Round", "Cyan", 133.5, 15, "Round");
    expectPlate("Cyan:133,5@-22,5,Round", "Cyan", 133.5, -22.5, "Round");
    expectPlate("Cyan:@22,5", "Cyan", {}, 22.5, "");
    expectPlate("Cyan:133,5", "Cyan", 133.5, {}, "");
    expectPlate("Cyan:133,5,5", "Cyan", 133.5, {}, "5");
    expectPlate("Cyan:133, 5", "Cyan", 133, {}, "5");
    expectPlate("Cyan:133.5,5", "Cyan", 133.5, {}, "5");
    expectPlate("Cyan:133,5dots", "Cyan", 133, {}, "5dots");
    expectPlate("Cyan:spot-60,5-22,5-round", "Cyan", 60.5, 22.5, "round");
    EXPECT_EQ(screens::textFromPlate({"Cyan", 133, {}, "5"}), "Cyan:133, 5");
}

TEST(PlateSpelling, OfQueuesIsUnderstoodToo)
{
    expectPlate("Cyan:spot-133-15-round", "Cyan", 133, 15, "round");
    expectPlate("Cyan:spot-133.5-22.5", "Cyan", 133.5, 22.5, "");
    expectPlate("Cyan:spot-133--7.5-./my-own.spot", "Cyan", 133, -7.5, "./my-own.spot");
}

TEST(PlateSpelling, NamesHoldWhatInksAreCalled)
{
    expectPlate("PANTONE 300 C:133", "PANTONE 300 C", 133, {}, "");
    expectPlate("a@b,c:133", "a@b,c", 133, {}, "");
    expectPlate("Gold:: matt:133", "Gold: matt", 133, {}, "");
    expectPlate("Größe:133", "Größe", 133, {}, "");
    expectPlate("CYAN:133", "Cyan", 133, {}, "");
    expectPlate("gold:133", "gold", 133, {}, "");
}

TEST(PlateSpelling, AWrongOneIsRefusedWithWhatWasExpected)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "\"\": expected a colon after the plate's name, as in NAME:LPI@ANGLE,SHAPE"},
        {"Cyan", "\"Cyan\": expected a colon after the plate's name"},
        {"Cyan::133", "\"Cyan::133\": expected a colon after the plate's name"},
        {":133", "\":133\": expected the name of a plate, 1 to 127 bytes long"},
        {"a\nb:133", "\"a\nb:133\": expected the name of a plate in UTF-8 without control characters"},
        {"Gr\xFCn:133", "\"Gr\xFCn:133\": expected the name of a plate in UTF-8 without control characters"},
        {"Default:133",
         "\"Default:133\": expected the name of a plate (the rest of the plates is *), not Default"},
        {"All:133", "\"All:133\": expected the name of a plate (the rest of the plates is *), not All"},
        {"None:133", "\"None:133\": expected the name of a plate (the rest of the plates is *), not None"},
        {" : 133", "\" : 133\": expected the name of a plate, 1 to 127 bytes long"},
        {"Cyan: ", "\"Cyan: \": expected a frequency, an angle or a dot shape"},
        {"Cyan:", "\"Cyan:\": expected a frequency, an angle or a dot shape, as in NAME:LPI@ANGLE,SHAPE"},
        {"Cyan:,", "\"Cyan:,\": expected a frequency, an angle or a dot shape"},
        {"Cyan:0.5", "\"Cyan:0.5\": expected a frequency from 1 to 999 lines per inch, not \"0.5\""},
        {"Cyan:1000", "\"Cyan:1000\": expected a frequency from 1 to 999 lines per inch"},
        {"Cyan:nan", "\"Cyan:nan\": expected a frequency from 1 to 999 lines per inch, not \"nan\""},
        {"Cyan:133@", "\"Cyan:133@\": expected an angle from -360 to 360 degrees, not \"\""},
        {"Cyan:133@inf", "\"Cyan:133@inf\": expected an angle from -360 to 360 degrees, not \"inf\""},
        {"Cyan:133@361", "\"Cyan:133@361\": expected an angle from -360 to 360 degrees"},
        {"Cyan:133lpi", "\"Cyan:133lpi\": expected a frequency from 1 to 999 lines per inch, not \"133lpi\""},
        {"Cyan:133,a\tb", "\"Cyan:133,a\tb\": expected a dot shape in UTF-8 without control characters"},
        {"Cyan:spot-133", "\"Cyan:spot-133\": expected an angle from -360 to 360 degrees, not \"\""},
        {"Cyan:spot--15", "\"Cyan:spot--15\": expected a frequency from 1 to 999 lines per inch, not \"\""},
    };
    for (const auto &[text, words] : cases)
        EXPECT_EQ(refusalOf(text).substr(0, words.size()), words) << text;
}

TEST(PlateSpelling, IsReadBackAsItIsWritten)
{
    for (const char *text : {"Cyan:133@15,Round", "a::b:@-7.5", "*:1", "x:,y,z", "Cyan:133.1234@0"})
        EXPECT_EQ(textFromPlate(screens::plateFromText(text)), text);
}

TEST(PlateSpelling, IsSaidInWords)
{
    EXPECT_EQ(plateInWords(screens::plateFromText("Cyan:133@15,Round")), "Cyan 133 lpi at 15°, Round");
    EXPECT_EQ(plateInWords(screens::plateFromText("Cyan:,Round")), "Cyan Round");
    EXPECT_EQ(plateInWords(screens::plateFromText("Cyan:@15.00001")), "Cyan at 15°");
    EXPECT_EQ(plateInWords(screens::plateFromText("*:133")), "133 lpi");
}
