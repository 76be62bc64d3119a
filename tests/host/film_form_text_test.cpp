// Text in the forms of films.
#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

#include "film/forms/ascii85.h"
#include "film/forms/pdf_text.h"

namespace {

using riders::film::Ascii85;

std::string encoded(const std::string &bytes, std::size_t piece)
{
    std::string text;
    Ascii85 encoder([&](std::string_view part) { text += part; });
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        encoder.add(std::string_view(bytes).substr(at, piece));
    encoder.end();
    return text;
}

// As the language's manual says it.
std::string decoded(const std::string &text)
{
    std::string bytes;
    std::string group;
    const auto take = [&](std::size_t count) {
        std::uint32_t value = 0;
        for (const char digit : group + std::string(5 - group.size(), 'u'))
            value = value * 85 + static_cast<std::uint32_t>(digit - '!');
        for (std::size_t i = 0; i < count; ++i)
            bytes += static_cast<char>(value >> (24 - 8 * i));
        group.clear();
    };
    for (const char letter : text.substr(0, text.find("~>"))) {
        if (letter == '\n' || letter == ' ')
            continue;
        if (letter == 'z' && group.empty()) {
            bytes.append(4, '\0');
            continue;
        }
        group += letter;
        if (group.size() == 5)
            take(4);
    }
    if (!group.empty())
        take(group.size() - 1);
    return bytes;
}

TEST(FilmFormText, IsBytesInBase85)
{
    std::mt19937 random(85);
    for (std::size_t length = 0; length < 120; ++length) {
        std::string bytes;
        for (std::size_t i = 0; i < length * 7; ++i)
            bytes += static_cast<char>(random() % 3 == 0 ? 0 : random());
        const std::string text = encoded(bytes, 1 + length % 9);
        ASSERT_EQ(decoded(text), bytes) << length;
        ASSERT_TRUE(text.ends_with("\n~>\n"));
    }
    EXPECT_EQ(encoded(std::string(8, '\0'), 3), "zz\n~>\n");
}

// Lines must not look like comments. The bytes are such that all digits are '%'.
TEST(FilmFormText, HasNoLineThatBeginsWithAPerCentSign)
{
    std::uint32_t value = 0;
    for (int digit = 0; digit < 5; ++digit)
        value = value * 85 + ('%' - '!');
    std::string bytes;
    for (int group = 0; group < 200; ++group)
        for (const int shift : {24, 16, 8, 0})
            bytes += static_cast<char>(value >> shift);
    const std::string text = encoded(bytes, 4);
    EXPECT_EQ(decoded(text), bytes);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_FALSE(line.starts_with('%'));
        EXPECT_LE(line.size(), 76u);
    }
}

TEST(FilmFormText, IsReadableInPdf)
{
    EXPECT_EQ(riders::film::pdfText("aé日😀"), "<FEFF006100E965E5D83DDE00>");
    EXPECT_EQ(riders::film::pdfText("\xff)"), "<FEFFFFFD0029>");
    EXPECT_EQ(riders::film::pdfName("A b/#(é"), "/A#20b#2F#23#28#C3#A9");
}

}  // namespace
