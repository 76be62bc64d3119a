#include "support/toolbox_test.h"

#include <cmath>
#include <random>

#include "source/initUtilities.h"
#include "source/strings.h"

namespace {

// The string routines read nothing of the environment but the decimal separator.
class Strings : public ::testing::Test {
protected:
    void SetUp() override { separator(','); }
    void TearDown() override { gEnvirInfo = nullptr; }
    void separator(char point)
    {
        environment.decimalPt = point;
        gEnvirInfo = &environment;
    }

    EnvirInfo environment{};
};

struct Parsed {
    int16_t status;
    double value;
};

Parsed parse(const std::string &text)
{
    double value = -1;
    int16_t status = PStrToDouble(P(text), &value);
    return {status, value};
}

// Runs a procedure on a text; returns its result, and puts the changed text in *text.
template <typename Procedure>
int apply(Procedure procedure, std::string *text)
{
    P buffer(*text);
    int result = procedure(buffer);
    *text = plain(buffer);
    return result;
}

// --- What the routines should do, written with std::string -------------------

constexpr const char *digits = "0123456789";

size_t separatorsIn(const std::string &text, char point)
{
    return static_cast<size_t>(std::count(text.begin(), text.end(), point));
}

Parsed modelParse(const std::string &text, char point)
{
    if (text.find_first_not_of(std::string(digits) + point) != std::string::npos)
        return {2, 0.0};
    size_t points = separatorsIn(text, point);
    if (points > 1)
        return {3, 0.0};
    std::string c = text;
    std::replace(c.begin(), c.end(), point, '.');
    return {static_cast<int16_t>(points ? 0 : 1), std::strtod(("0" + c).c_str(), nullptr)};
}

int modelPosition(const std::string &text, char point)
{
    return separatorsIn(text, point) == 1 ? static_cast<int>(text.find(point)) + 1 : -1;
}

int modelAddLeadingZero(std::string *text, char point)
{
    if (modelPosition(*text, point) != 1)
        return 0;
    text->insert(0, "0");
    return 1;
}

int modelRemoveLeadingZeros(std::string *text, char point)
{
    bool stays = text->size() < 2 || text->front() != '0' || (*text)[1] == point;
    if (stays)
        return 0;
    text->erase(0, std::min(text->find_first_not_of('0'), text->size()));
    return 1;
}

int modelRemoveTrailingZeros(std::string *text, char point)
{
    int position = modelPosition(*text, point);
    if (position < 0)
        return 0;
    std::string whole = text->substr(0, static_cast<size_t>(position) - 1);
    std::string fraction = text->substr(static_cast<size_t>(position));
    fraction.erase(fraction.find_last_not_of('0') + 1);
    *text = fraction.empty() ? whole : whole + point + fraction;
    return fraction.empty();
}

std::vector<std::string> randomTexts(int count, char point)
{
    unsigned seed = std::random_device{}();
    std::printf("random texts from seed %u\n", seed);
    std::mt19937 random(seed);
    const std::string letters = std::string("00000123456789") + point + point + (seed % 2 ? "" : "- x.e");
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i) {
        std::string text(random() % (i % 50 ? 12 : 250), ' ');
        for (char &letter : text)
            letter = letters[random() % letters.size()];
        texts.push_back(text);
    }
    return texts;
}

// Every text of up to five of the characters that matter, then random ones.
std::vector<std::string> manyTexts(char point)
{
    std::vector<std::string> texts{""};
    const std::string letters = std::string("019x") + point;
    for (size_t i = 0; texts[i].size() < 5; ++i)
        for (char letter : letters)
            texts.push_back(texts[i] + letter);
    for (const std::string &text : randomTexts(20000, point))
        texts.push_back(text);
    return texts;
}

TEST_F(Strings, CopyShortensALongSourceInPlace)
{
    P source("12345678901234567890"), copy("");
    CopyPStr(source, copy, 15);
    EXPECT_EQ(plain(source), "123456789012345");
    EXPECT_EQ(plain(copy), "123456789012345");
    EXPECT_EQ(source.bytes[16], '6') << "the characters after it stay";
}

TEST_F(Strings, CopyLeavesAShortSourceAlone)
{
    P source("abc"), copy("longer than that");
    CopyPStr(source, copy, 3);
    EXPECT_EQ(plain(source), "abc");
    EXPECT_EQ(plain(copy), "abc");
    EXPECT_EQ(copy.bytes[4], 'g') << "nothing is written after the copy";
}

TEST_F(Strings, CopyWritesExactlyLengthPlusOneBytes)
{
    for (int length = 0; length <= 255; ++length) {
        P source(std::string(static_cast<size_t>(length), 'x'));
        unsigned char copy[258];
        std::fill(std::begin(copy), std::end(copy), 0xEE);
        CopyPStr(source, copy, 255);
        ASSERT_EQ(copy[0], length);
        ASSERT_EQ(copy[length + 1], 0xEE);
    }
}

TEST_F(Strings, ConcatAppendsAndReturnsTheLength)
{
    P source(" lpi"), text("45");
    EXPECT_EQ(ConcatPStr(source, text, 15), 6);
    EXPECT_EQ(plain(text), "45 lpi");
    EXPECT_EQ(plain(source), " lpi");
}

TEST_F(Strings, ConcatShortensTheSourceToWhatFits)
{
    P source(" per inch"), text("1234567890");
    EXPECT_EQ(ConcatPStr(source, text, 15), 15);
    EXPECT_EQ(plain(text), "1234567890 per ");
    EXPECT_EQ(plain(source), " per ");
}

TEST_F(Strings, ConcatOntoAFullTextAddsNothing)
{
    P source("more"), text("123456789012345678");
    EXPECT_EQ(ConcatPStr(source, text, 15), 18);
    EXPECT_EQ(plain(source), "");
}

TEST_F(Strings, ConcatFillsUpTo255)
{
    P source(std::string(200, 'b')), text(std::string(100, 'a'));
    EXPECT_EQ(ConcatPStr(source, text, 255), 255);
    EXPECT_EQ(plain(text), std::string(100, 'a') + std::string(155, 'b'));
}

TEST_F(Strings, CompareMindsLengthAndCase)
{
    EXPECT_EQ(ComparePStr(P(""), P("")), 1);
    EXPECT_EQ(ComparePStr(P("Times"), P("Times")), 1);
    EXPECT_EQ(ComparePStr(P("Times"), P("times")), 0);
    EXPECT_EQ(ComparePStr(P("Times"), P("Times ")), 0);
    EXPECT_EQ(ComparePStr(P("Times"), P("Timer")), 0);
}

TEST_F(Strings, NumbersAreReadWithTheUsersSeparator)
{
    EXPECT_EQ(parse("2,50").status, kNumberWithDecimals);
    EXPECT_EQ(parse("2,50").value, 2.5);
    EXPECT_EQ(parse(",5").value, 0.5);
    EXPECT_EQ(parse("5,").status, kNumberWithDecimals);
    EXPECT_EQ(parse("5,").value, 5.0);
    EXPECT_EQ(parse("").status, kWholeNumber);
    EXPECT_EQ(parse("").value, 0.0);
    EXPECT_EQ(parse("1,2,3").status, kTooManySeparators);
    EXPECT_EQ(parse("1,2,3").value, 0.0);
    EXPECT_EQ(parse("-5").status, kNotANumber);
    EXPECT_EQ(parse("-5").value, 0.0);
    EXPECT_EQ(parse("2.5").status, kNotANumber);
    EXPECT_EQ(parse("1,2,x").status, kNotANumber) << "a wrong character counts before the separators";
}

TEST_F(Strings, SeparatorIsReadAtEachCall)
{
    EXPECT_EQ(parse("2.5").status, kNotANumber);
    separator('.');
    EXPECT_EQ(parse("2.5").value, 2.5);
    EXPECT_EQ(parse("2,5").status, kNotANumber);
}

TEST_F(Strings, SeparatorMayBeAnyByte)
{
    separator(static_cast<char>(0xE1));
    EXPECT_EQ(parse("2\xE1"
                    "5")
                  .value,
              2.5);
}

TEST_F(Strings, LeadingZerosGoExceptWhereOneIsNeeded)
{
    const std::vector<std::vector<std::string>> cases = {
        {"0", "0"},    {"0,25", "0,25"}, {"0025", "25"}, {"007", "7"}, {"00,5", ",5"},
        {"000", ""},   {"25", "25"},     {"", ""},       {",0", ",0"}, {"00", ""},
    };
    for (const auto &pair : cases) {
        std::string text = pair[0];
        int removed = apply(RemoveLeadingZeros, &text);
        EXPECT_EQ(text, pair[1]) << pair[0];
        EXPECT_EQ(removed, pair[0] != pair[1]) << pair[0];
    }
}

TEST_F(Strings, TrailingZerosGoAndTheSeparatorWithThem)
{
    struct Case {
        std::string from, to;
        int result;
    };
    for (const Case &each : std::vector<Case>{{"3,", "3", 1},
                                              {"3", "3", 0},
                                              {"12,000", "12", 1},
                                              {"12,500", "12,5", 0},
                                              {"100", "100", 0},
                                              {"100,", "100", 1},
                                              {",", "", 1},
                                              {"1,0,0", "1,0,0", 0},
                                              {"", "", 0}}) {
        std::string text = each.from;
        EXPECT_EQ(apply(RemoveTrailingZeros, &text), each.result) << each.from;
        EXPECT_EQ(text, each.to) << each.from;
    }
}

TEST_F(Strings, AddedZeroFillsABufferAndNoMore)
{
    P full("," + std::string(254, '1'));
    EXPECT_EQ(AddLeadingZero(full), 0) << "no room for another character";
    P nearly("," + std::string(253, '1'));
    EXPECT_EQ(AddLeadingZero(nearly), 1);
    EXPECT_EQ(plain(nearly), "0," + std::string(253, '1'));
}

TEST_F(Strings, AgreeWithTheModelOnManyTexts)
{
    for (char point : {',', '.'}) {
        separator(point);
        for (const std::string &text : manyTexts(point)) {
            Parsed is = parse(text), should = modelParse(text, point);
            ASSERT_EQ(is.status, should.status) << text;
            ASSERT_NEAR(is.value, should.value, std::abs(should.value) * 1e-13) << text;
            ASSERT_EQ(GetDecimalPosition(P(text)), modelPosition(text, point)) << text;
        }
    }
}

TEST_F(Strings, TidyingAgreesWithTheModelOnManyTexts)
{
    for (char point : {',', '.'}) {
        separator(point);
        for (const std::string &text : manyTexts(point)) {
            std::string is = text, should = text;
            ASSERT_EQ(apply(RemoveLeadingZeros, &is), modelRemoveLeadingZeros(&should, point)) << text;
            ASSERT_EQ(is, should) << text;
            is = should = text;
            ASSERT_EQ(apply(RemoveTrailingZeros, &is), modelRemoveTrailingZeros(&should, point)) << text;
            ASSERT_EQ(is, should) << text;
            is = should = text;
            ASSERT_EQ(apply(AddLeadingZero, &is), modelAddLeadingZero(&should, point)) << text;
            ASSERT_EQ(is, should) << text;
        }
    }
}

TEST_F(Strings, EverySeparatorBecomesAPeriod)
{
    P text("1,5,2 a,");
    ConvertDecimalToPeriod(text);
    EXPECT_EQ(plain(text), "1.5.2 a.");
    separator('.');
    P unchanged("1,5.2");
    ConvertDecimalToPeriod(unchanged);
    EXPECT_EQ(plain(unchanged), "1,5.2");
}

TEST_F(Strings, TrailingSpacesGo)
{
    P text("Round  "), spaces("    "), inner(" a b");
    RemoveTrailingSpaces(text);
    RemoveTrailingSpaces(spaces);
    RemoveTrailingSpaces(inner);
    EXPECT_EQ(plain(text), "Round");
    EXPECT_EQ(plain(spaces), "");
    EXPECT_EQ(plain(inner), " a b");
}

class Ellipsis : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        TextFont(systemFont);
        TextSize(12);
    }
    static std::string shortened(const std::string &text, int16_t width)
    {
        P buffer(text);
        ElipseString(buffer, width);
        return plain(buffer);
    }
    // Step by step, as by hand.
    static std::string byHand(std::string text, int width)
    {
        if (width < 20 || StringWidth(P(text)) <= width)
            return text;
        while (StringWidth(P(text)) > width - 11)
            text.pop_back();
        text.resize(text.size() < 2 ? 0 : text.size() - 2);
        if (!text.empty() && text.back() == ' ')
            text.pop_back();
        return text + '\xC9';
    }
};

TEST_F(Ellipsis, TextThatFitsStays)
{
    EXPECT_EQ(shortened("Round", StringWidth(P("Round"))), "Round");
}

TEST_F(Ellipsis, WidthsUnderTwentyNeverShorten)
{
    const std::string text(200, 'W');
    EXPECT_EQ(shortened(text, 19), text);
    EXPECT_EQ(shortened(text, 0), text);
    EXPECT_EQ(shortened(text, -5), text);
    EXPECT_LT(shortened(text, 20).size(), text.size());
}

TEST_F(Ellipsis, NeverFollowsASpace)
{
    const std::string text = "a b c d e f g h i j k l m n o p";
    for (int16_t width = 20; width < 200; ++width) {
        std::string is = shortened(text, width);
        ASSERT_EQ(is, byHand(text, width)) << width;
        ASSERT_EQ(is.find(" \xC9"), std::string::npos);
    }
}

TEST_F(Ellipsis, DropsOneSpaceOnly)
{
    const std::string text = "ab      cdefghijklmnopqrstuvwxyz";
    for (int16_t width = 20; width < 120; ++width)
        ASSERT_EQ(shortened(text, width), byHand(text, width)) << width;
}

TEST_F(Ellipsis, NarrowWidthsKeepAtLeastTheEllipsis)
{
    EXPECT_EQ(shortened("WWWW", 20), "\xC9");
}

}  // namespace
