// UTF-8, one character at a time.
#include <gtest/gtest.h>

#include "toolbox/host/utf8.h"

using namespace toolbox;

namespace {

const std::string threeCharacters = "a\u00E9\u20AC";   // of 1, 2 and 3 bytes

}  // namespace

TEST(Utf8, CharactersOfEachLengthAreSplitAndJoined)
{
    const std::u32string points = {0x41, 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF};
    std::string utf8;
    for (char32_t point : points)
        appendUtf8(utf8, point);
    EXPECT_EQ(utf8.size(), 2u + 4u + 6u + 8u);
    EXPECT_EQ(codePoints(utf8), points);
    EXPECT_TRUE(isUtf8(utf8));
}

TEST(Utf8, OverlongFormsSurrogatesAndStrayBytesAreRefused)
{
    for (const char *bad : {"\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80",
                            "\xC3", "\xE2\x82", "\xC3z", "\xFF"}) {
        EXPECT_FALSE(isUtf8(bad)) << bad;
        EXPECT_FALSE(codePoints(std::string("good") + bad)) << bad;
    }
    std::string_view rest = "\xE2\x82z";
    EXPECT_EQ(takeCodePoint(rest), noCodePoint);
    EXPECT_EQ(rest, "\x82z") << "the bad byte alone is taken";
}

TEST(Utf8, EndsAndBeginningsOfCharacters)
{
    EXPECT_EQ(endOfCharacter(threeCharacters, 0), 1u);
    EXPECT_EQ(endOfCharacter(threeCharacters, 1), 3u);
    EXPECT_EQ(endOfCharacter(threeCharacters, 3), 6u);
    const std::size_t beginnings[] = {0, 1, 1, 3, 3, 3, 6};
    for (std::size_t offset = 0; offset <= threeCharacters.size(); ++offset)
        EXPECT_EQ(beginningOfCharacter(threeCharacters, offset), beginnings[offset]) << offset;
    EXPECT_EQ(beginningOfCharacter("\x80\x80", 1), 0u) << "no character at all";
}
