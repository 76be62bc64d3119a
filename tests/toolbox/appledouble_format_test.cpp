// The bytes of AppleDouble files, good and hostile.
#include <gtest/gtest.h>

#include <random>

#include "support/hex.h"
#include "toolbox/host/appledouble.h"

using namespace toolbox::files;

extern "C" int appleDoubleTarget(const uint8_t *data, size_t size);

namespace {

// Type TEXT, creator ttxt, an empty fork.
const std::string minimal = fromHex("00051607000200000000000000000000"
                                    "00000000000000000002000000090000"
                                    "00320000002000000002000000520000"
                                    "00005445585474747874000000000000"
                                    "00000000000000000000000000000000"
                                    "0000");

void putLong(std::string &bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (24 - 8 * i) & 0xFF);
}

// A comment between the fork and Finder information followed by attributes.
AppleDouble rich()
{
    AppleDouble file;
    file.filler = "Mac OS X        ";
    file.set(finderInfoEntry, "TEXTRIDR" + std::string(24 + 2, '\0') + "ATTR and so on");
    file.set(4, "a comment");
    file.set(resourceForkEntry, "the fork");
    return file;
}

}  // namespace

TEST(AppleDoubleFormat, MinimalFileHasTheDocumentedBytes)
{
    AppleDouble file = newAppleDouble();
    file.setFinderInfo("TEXTttxt");
    EXPECT_EQ(composeAppleDouble(file), minimal);
}

TEST(AppleDoubleFormat, MinimalFileIsRead)
{
    auto file = parseAppleDouble(minimal);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->finderInfo(), "TEXTttxt" + std::string(24, '\0'));
    EXPECT_EQ(file->bytes(resourceForkEntry), "");
    EXPECT_TRUE(file->find(resourceForkEntry));
    EXPECT_FALSE(file->find(3));
}

TEST(AppleDoubleFormat, WhatIsReadIsWrittenTheSame)
{
    std::string bytes = composeAppleDouble(rich());
    auto file = parseAppleDouble(bytes);
    ASSERT_TRUE(file);
    EXPECT_EQ(composeAppleDouble(*file), bytes);
    EXPECT_EQ(file->filler, "Mac OS X        ");
}

TEST(AppleDoubleFormat, OnlyTheForkMovesTheEnd)
{
    std::string before = composeAppleDouble(rich());
    auto file = parseAppleDouble(before);
    ASSERT_TRUE(file);
    file->set(resourceForkEntry, std::string(1000, 'f'));
    std::string after = composeAppleDouble(*file);
    std::size_t forkAt = before.size() - std::string("the fork").size();
    EXPECT_EQ(after.size(), forkAt + 1000);
    // Everything before the fork except its length in the table.
    putLong(after, 26 + 2 * 12 + 8, 8);
    EXPECT_EQ(after.substr(0, forkAt), before.substr(0, forkAt));
}

TEST(AppleDoubleFormat, ForkGoesLastEvenWhereItWasFirst)
{
    std::string bytes = minimal.substr(0, 50) + "fork" + std::string(32, 'i');
    putLong(bytes, 30, 54);           // Finder information after the fork
    putLong(bytes, 42, 50);
    putLong(bytes, 46, 4);
    auto file = parseAppleDouble(bytes);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->bytes(resourceForkEntry), "fork");
    file->set(resourceForkEntry, "a longer fork");
    std::string after = composeAppleDouble(*file);
    EXPECT_EQ(after.substr(54, 32), std::string(32, 'i'));
    EXPECT_EQ(after.substr(86), "a longer fork");
}

TEST(AppleDoubleFormat, AttributesAfterTheFinderInformationStay)
{
    AppleDouble file = rich();
    file.setFinderInfo("PICTabcd");
    EXPECT_EQ(file.finderInfo(), "PICTabcd" + std::string(24, '\0'));
    EXPECT_EQ(file.bytes(finderInfoEntry).substr(32), rich().bytes(finderInfoEntry).substr(32));
}

TEST(AppleDoubleFormat, EntryThatGrowsIntoTheNextIsMoved)
{
    auto file = parseAppleDouble(composeAppleDouble(rich()));
    ASSERT_TRUE(file);
    file->set(finderInfoEntry, std::string(500, 'i'));
    auto again = parseAppleDouble(composeAppleDouble(*file));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->bytes(finderInfoEntry), std::string(500, 'i'));
    EXPECT_EQ(again->bytes(4), "a comment");
    EXPECT_EQ(again->bytes(resourceForkEntry), "the fork");
}

TEST(AppleDoubleFormat, NewEntryMakesRoomForItselfInTheTable)
{
    auto file = parseAppleDouble(minimal);
    ASSERT_TRUE(file);
    file->set(4, "a comment");
    auto again = parseAppleDouble(composeAppleDouble(*file));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->bytes(4), "a comment");
    EXPECT_EQ(again->finderInfo(), file->finderInfo());
}

TEST(AppleDoubleFormat, EveryTruncationIsRefused)
{
    std::string bytes = composeAppleDouble(rich());
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(parseAppleDouble(bytes.substr(0, length))) << length;
    EXPECT_TRUE(parseAppleDouble(bytes + "trailing"));
}

TEST(AppleDoubleFormat, EveryByteFlippedIsReadOrRefused)
{
    std::string bytes = composeAppleDouble(rich());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = bytes;
            damaged[at] = static_cast<char>(damaged[at] ^ 1 << bit);
            appleDoubleTarget(reinterpret_cast<const uint8_t *>(damaged.data()), damaged.size());
            EXPECT_FALSE(at < 8 && parseAppleDouble(damaged)) << at;
        }
    }
}

TEST(AppleDoubleFormat, EntriesOutsideTheFileAreRefused)
{
    std::string bytes = minimal;
    putLong(bytes, 34, 33);
    EXPECT_FALSE(parseAppleDouble(bytes));
    bytes = minimal;
    putLong(bytes, 42, 0xFFFFFFFF);
    putLong(bytes, 46, 0xFFFFFFFF);
    EXPECT_FALSE(parseAppleDouble(bytes));
}

TEST(AppleDoubleFormat, EntriesThatOverlapOneAnotherOrTheHeaderAreRefused)
{
    std::string bytes = minimal + "1234";
    putLong(bytes, 42, 60);
    putLong(bytes, 46, 4);
    EXPECT_FALSE(parseAppleDouble(bytes));
    putLong(bytes, 42, 40);
    EXPECT_FALSE(parseAppleDouble(bytes));
    putLong(bytes, 42, 82);
    EXPECT_TRUE(parseAppleDouble(bytes));
}

TEST(AppleDoubleFormat, AnIdTwiceOrZeroIsRefused)
{
    std::string bytes = minimal;
    putLong(bytes, 38, 9);
    EXPECT_FALSE(parseAppleDouble(bytes));
    putLong(bytes, 38, 0);
    EXPECT_FALSE(parseAppleDouble(bytes));
}

TEST(AppleDoubleFormat, OtherMagicAndVersionsAreRefused)
{
    std::string bytes = minimal;
    putLong(bytes, 0, 0x00051600);   // AppleSingle
    EXPECT_FALSE(parseAppleDouble(bytes));
    bytes = minimal;
    putLong(bytes, 4, 0x00010000);
    EXPECT_FALSE(parseAppleDouble(bytes));
}

TEST(AppleDoubleFormat, ManyEntriesAreKept)
{
    AppleDouble file;
    for (std::uint32_t id = 1; id <= 1000; ++id)
        file.set(id, std::to_string(id));
    auto again = parseAppleDouble(composeAppleDouble(file));
    ASSERT_TRUE(again);
    for (std::uint32_t id = 1; id <= 1000; ++id)
        EXPECT_EQ(again->bytes(id), std::to_string(id));
}

TEST(AppleDoubleFormat, RandomDamageNeverGetsPast)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::string good = composeAppleDouble(rich());
    for (int turn = 0; turn < 20000; ++turn) {
        std::string bytes = good.substr(0, random() % (good.size() + 1));
        for (unsigned change = random() % 6; change > 0 && !bytes.empty(); --change)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 4 ? random() % 256 : random() % 3);
        appleDoubleTarget(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
    }
}

// The fuzz target itself, under another name.
#define LLVMFuzzerTestOneInput appleDoubleTarget
#include "../fuzz/appledouble_fuzz.cpp"
