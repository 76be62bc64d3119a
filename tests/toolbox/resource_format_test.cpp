#include <gtest/gtest.h>

#include <random>

#include "support/hex.h"
#include "toolbox/host/resource_fork.h"

using toolbox::resources::ForkEntry;
using toolbox::resources::forkBytes;
using toolbox::resources::parseFork;

extern "C" int fuzzResourceFork(const uint8_t *bytes, size_t count);

namespace {

// One 'STR ' 128 named "greet", purgeable, "Hi".
std::string greeting()
{
    return fromHex("00000100 00000107 00000007 00000038") + std::string(0xF0, '\0') +
           fromHex("00000003 024869"
                   "00000100 00000107 00000007 00000038 00000000 0000 0000 001C 0032"
                   "0000 53545220 0000 000A"
                   "0080 0000 20 000000 00000000"
                   "05 6772656574");
}

OSErr parsed(const std::string &bytes, std::vector<ForkEntry> &entries)
{
    return parseFork(bytes, entries);
}

OSErr parsed(const std::string &bytes)
{
    std::vector<ForkEntry> entries;
    return parseFork(bytes, entries);
}

}  // namespace

TEST(ResourceFormat, WritesTheDocumentedBytes)
{
    auto bytes = forkBytes({{'STR ', 128, 0x20, "greet", std::string_view("\x02Hi", 3)}});
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 0x13Fu);
    EXPECT_EQ(*bytes, greeting());
}

TEST(ResourceFormat, ReadsTheDocumentedBytes)
{
    std::string fork = greeting();
    std::vector<ForkEntry> entries;
    ASSERT_EQ(parsed(fork, entries), noErr);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].type, ResType{'STR '});
    EXPECT_EQ(entries[0].id, 128);
    EXPECT_EQ(entries[0].attributes, 0x20);
    EXPECT_EQ(entries[0].name, "greet");
    EXPECT_EQ(entries[0].data, std::string_view("\x02Hi", 3));
}

TEST(ResourceFormat, AnEmptyMapHasNoTypes)
{
    auto bytes = forkBytes({});
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 0x100u + 30);
    EXPECT_EQ(bytes->substr(0x118), fromHex("001C 001E FFFF"));
    std::vector<ForkEntry> entries;
    EXPECT_EQ(parsed(*bytes, entries), noErr);
    EXPECT_TRUE(entries.empty());
}

TEST(ResourceFormat, AnEmptyForkGivesEndOfFile)
{
    EXPECT_EQ(parsed(""), eofErr);
}

TEST(ResourceFormat, MemoryOnlyAttributesAreNotWritten)
{
    auto bytes = forkBytes({{'A   ', 1, 0xFF, std::nullopt, ""}});
    std::vector<ForkEntry> entries;
    ASSERT_EQ(parsed(*bytes, entries), noErr);
    EXPECT_EQ(entries[0].attributes, 0x7D);
}

TEST(ResourceFormat, TypesAreGroupedInOrderOfAppearance)
{
    auto bytes = forkBytes({{'B   ', 2, 0, {}, "b2"}, {'A   ', 9, 0, {}, "a9"}, {'B   ', 1, 0, {}, "b1"}});
    std::vector<ForkEntry> entries;
    ASSERT_EQ(parsed(*bytes, entries), noErr);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].data, "b2");
    EXPECT_EQ(entries[1].data, "b1");
    EXPECT_EQ(entries[2].data, "a9");
}

TEST(ResourceFormat, AnEmptyNameIsAName)
{
    auto bytes = forkBytes({{'A   ', 1, 0, "", ""}, {'A   ', 2, 0, std::nullopt, ""}});
    std::vector<ForkEntry> entries;
    ASSERT_EQ(parsed(*bytes, entries), noErr);
    EXPECT_EQ(entries[0].name, "");
    EXPECT_FALSE(entries[1].name);
}

TEST(ResourceFormat, AcceptsATypeListElsewhereGarbageAndTrailingBytes)
{
    std::string fork = greeting();
    // Two bytes between the fixed part and the type list, scratch in the
    // reserved bytes, a stale copy of the header.
    fork.insert(0x107 + 28, "??");
    fork[15] = 0x3A;
    fork.replace(16, 240, std::string(240, '\xA5'));
    fork.replace(0x107, 24, std::string(24, '\x5A'));
    fork[0x107 + 25] = 0x1E;
    fork[0x107 + 27] = 0x34;
    fork += "and more";
    std::vector<ForkEntry> entries;
    ASSERT_EQ(parsed(fork, entries), noErr);
    EXPECT_EQ(entries[0].name, "greet");
}

TEST(ResourceFormat, TheMapMayComeBeforeTheData)
{
    std::string normal = greeting();
    std::string fork = fromHex("00000048 00000010 00000007 00000038");
    fork += normal.substr(0x107) + normal.substr(0x100, 7);
    std::vector<ForkEntry> entries;
    ASSERT_EQ(parsed(fork, entries), noErr);
    EXPECT_EQ(entries[0].data, std::string_view("\x02Hi", 3));
}

TEST(ResourceFormat, EveryTruncationIsRefused)
{
    std::string fork = greeting();
    for (size_t length = 1; length < fork.size(); ++length)
        EXPECT_EQ(parsed(fork.substr(0, length)), mapReadErr) << length;
}

TEST(ResourceFormat, EveryByteChangedIsReadOrRefused)
{
    std::string fork = greeting();
    for (size_t place = 0; place < fork.size(); ++place)
        for (int value = 0; value < 256; ++value) {
            std::string hostile = fork;
            hostile[place] = static_cast<char>(value);
            OSErr error = parsed(hostile);
            EXPECT_TRUE(error == noErr || error == mapReadErr);
        }
}

TEST(ResourceFormat, OffsetsBeyondTheForkAreRefused)
{
    for (size_t field : {0u, 4u, 8u, 12u}) {
        std::string hostile = greeting();
        hostile.replace(field, 4, "\xFF\xFF\xFF\xFF");
        EXPECT_EQ(parsed(hostile), mapReadErr) << field;
    }
}

TEST(ResourceFormat, ADataLengthBeyondTheAreaIsRefused)
{
    std::string hostile = greeting();
    hostile.replace(0x100, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(parsed(hostile), mapReadErr);
}

TEST(ResourceFormat, ListsThatOverlapAreRefused)
{
    // Many types that all point at the same long list.
    std::string map(28, '\0');
    map[25] = 28;
    std::string references, types;
    const int count = 200;
    for (int i = 0; i < count; ++i) {
        references += fromHex("0001 FFFF 00 000000 00000000");
        types += fromHex("54595045 00C7 0642");   // 200 of them at 2 + 8 * 200
    }
    map += fromHex("00C7") + types + references;
    std::string fork = fromHex("00000010 00000014 00000004") + std::string(2, '\0');
    fork += static_cast<char>(map.size() >> 8);
    fork += static_cast<char>(map.size() & 0xFF);
    fork += std::string(4, '\0') + map;
    EXPECT_EQ(parsed(fork), mapReadErr);
}

TEST(ResourceFormat, MoreThanAMapCanReachIsRefused)
{
    std::vector<ForkEntry> entries(2727, ForkEntry{'A   ', 0, 0, std::nullopt, ""});
    EXPECT_TRUE(forkBytes(entries));
    entries.push_back(entries.front());
    EXPECT_FALSE(forkBytes(entries));
}

TEST(ResourceFormat, DataMustBeginBelowSixteenMegabytes)
{
    std::string half(1 << 23, 'x');
    std::vector<ForkEntry> entries(2, ForkEntry{'A   ', 0, 0, std::nullopt, half});
    EXPECT_TRUE(forkBytes(entries));
    entries.push_back({'A   ', 1, 0, std::nullopt, ""});
    EXPECT_FALSE(forkBytes(entries));
}

TEST(ResourceFormat, RandomForksComeBackTheSame)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> texts;
        for (int i = 0; i < 40; ++i)
            texts.emplace_back(random() % 300, static_cast<char>(random()));
        std::vector<ForkEntry> entries;
        for (unsigned i = random() % 20; i > 0; --i) {
            ForkEntry entry{'AAAA', static_cast<int16_t>(random()), static_cast<uint8_t>(random() & 0x7D), {}, {}};
            entry.data = texts[random() % texts.size()];
            if (random() % 2)
                entry.name = std::string_view(texts[random() % texts.size()]).substr(0, 255);
            entries.push_back(entry);
        }
        auto bytes = forkBytes(entries);
        ASSERT_TRUE(bytes);
        std::vector<ForkEntry> back;
        ASSERT_EQ(parsed(*bytes, back), noErr);
        ASSERT_EQ(back.size(), entries.size());
        for (size_t i = 0; i < back.size(); ++i) {
            EXPECT_EQ(back[i].id, entries[i].id);
            EXPECT_EQ(back[i].attributes, entries[i].attributes);
            EXPECT_EQ(back[i].name, entries[i].name);
            EXPECT_EQ(back[i].data, entries[i].data);
        }
    }
}

TEST(ResourceFormat, RandomDamageIsReadOrRefused)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 20000; ++round) {
        std::string hostile = greeting();
        for (unsigned i = 1 + random() % 6; i > 0; --i)
            hostile[random() % hostile.size()] = static_cast<char>(random());
        EXPECT_EQ(fuzzResourceFork(reinterpret_cast<const uint8_t *>(hostile.data()), hostile.size()), 0);
    }
}

#define LLVMFuzzerTestOneInput fuzzResourceFork
#include "../fuzz/resource_fork_fuzz.cpp"
