// Mac OS Roman and UTF-8.
#include <gtest/gtest.h>

#include "toolbox/host/text.h"

using namespace toolbox;

namespace {

std::string everyByte()
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    return bytes;
}

}  // namespace

TEST(TextRoman, EveryByteComesBackFromUtf8)
{
    for (char c : everyByte()) {
        std::string roman(1, c);
        EXPECT_EQ(romanFromUtf8(utf8FromRoman(roman)), roman) << static_cast<int>(static_cast<unsigned char>(c));
    }
    EXPECT_EQ(romanFromUtf8(utf8FromRoman(everyByte())), everyByte());
}

TEST(TextRoman, UpperHalfHasTheDocumentedCodes)
{
    EXPECT_EQ(utf8FromRoman("\x80\x9F"), "Äü");
    EXPECT_EQ(utf8FromRoman("\xA0\xAE\xB0\xBD"), "†Æ∞Ω");
    EXPECT_EQ(utf8FromRoman("\xC9\xCA\xD2\xD3\xDB"), "…\u00A0“”€");
    EXPECT_EQ(utf8FromRoman("\xDE\xDF\xF0\xF5\xFF"), "ﬁﬂ\uF8FFıˇ");
}

TEST(TextRoman, DecomposedLettersAreComposed)
{
    const char *const letters[][2] = {
        {"A\u0300", "À"}, {"e\u0301", "é"}, {"o\u0302", "ô"}, {"n\u0303", "ñ"}, {"u\u0308", "ü"},
        {"Y\u0308", "Ÿ"}, {"a\u030A", "å"}, {"C\u0327", "Ç"}, {"=\u0338", "≠"},
    };
    for (auto [decomposed, composed] : letters) {
        ASSERT_TRUE(romanFromUtf8(decomposed)) << composed;
        EXPECT_EQ(romanFromUtf8(decomposed), romanFromUtf8(composed));
        EXPECT_EQ(romanFromUtf8(decomposed)->size(), 1u);
    }
    EXPECT_EQ(romanFromUtf8("cafe\u0301s"), "caf\x8Es");
}

TEST(TextRoman, MarksOverOtherLettersHaveNoCode)
{
    EXPECT_FALSE(romanFromUtf8("x\u0301"));
    EXPECT_FALSE(romanFromUtf8("\u0301"));
    EXPECT_FALSE(romanFromUtf8("e\u0301\u0302"));
    EXPECT_FALSE(romanFromUtf8(std::string_view("\0\u0301", 3)));
    EXPECT_EQ(romanFromUtf8Lossy("x\u0301y"), "x?y");
}

TEST(TextRoman, OtherCodePointsOfTheSameSignAreAccepted)
{
    EXPECT_EQ(romanFromUtf8("\u2126"), "\xBD");
    EXPECT_EQ(romanFromUtf8("\u03BC"), "\xB5");
    EXPECT_EQ(romanFromUtf8("\u0394"), "\xC6");
    EXPECT_EQ(romanFromUtf8("\u212B"), "\x81");
}

TEST(TextRoman, WhatHasNoCodeIsRefusedOrAQuestionMark)
{
    EXPECT_FALSE(romanFromUtf8("a日b"));
    EXPECT_FALSE(romanFromUtf8("\U0001F600"));
    EXPECT_EQ(romanFromUtf8Lossy("a日b\U0001F600"), "a?b?");
}

TEST(TextRoman, BytesThatAreNotUtf8AreRefused)
{
    for (const char *bytes : {"\x80", "\xC3", "\xC3(", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF0\x80\x80\x80", "\xFF", "\xE2\x82"})
        EXPECT_FALSE(romanFromUtf8(bytes)) << static_cast<int>(static_cast<unsigned char>(bytes[0]));
    EXPECT_EQ(romanFromUtf8Lossy("a\xC3(b\xFF"), "a?(b?");
}

TEST(TextPascal, CutsToTheCapacity)
{
    unsigned char text[256];
    setPascal(text, std::string(300, 'x'));
    EXPECT_EQ(text[0], 255);
    setPascal(text, "abcdef", 3);
    EXPECT_EQ(pascalView(text), "abc");
    setPascal(text, "", 15);
    EXPECT_EQ(text[0], 0);
}

TEST(TextPascal, TakesAPartOfItself)
{
    unsigned char text[256];
    setPascal(text, "hello");
    setPascal(text, pascalView(text).substr(1));
    EXPECT_EQ(pascalView(text), "ello");
}

TEST(TextPascal, BecomesUtf8)
{
    unsigned char text[] = {2, 0x8E, 'a', 'x'};
    EXPECT_EQ(utf8FromPascal(text), "éa");
}
