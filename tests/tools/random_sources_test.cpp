#include <gtest/gtest.h>

#include <random>
#include <string>

#define LLVMFuzzerTestOneInput fuzzResourceSource
#include "../fuzz/resource_source_fuzz.cpp"

TEST(RandomSources, AreCompiledOrRefused)
{
    unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const char *pieces[] = {
        "string", "strings", "menu", "dialog", "alert", "items", "text", "data", "hex", "version",
        "colors", "picture", "sound", "include", "{", "}", ";", "\n", "\"x\"", "\"", "'DLOG'", "'", "1",
        "-1", "0x7F", "99999999999999999999", "size", "at", "kind", "dBox", "title", "part", "number",
        "short", "button", "disabled", "divider", "key", "file", "named", "fixed", "\\", "\xC3", "\0",
        "#", "00",
    };
    for (int round = 0; round < 5000; ++round) {
        std::string source;
        for (unsigned left = random() % 25; left > 0; --left)
            source += std::string(pieces[random() % std::size(pieces)]) + (random() % 4 ? " " : "");
        const auto *bytes = reinterpret_cast<const uint8_t *>(source.data());
        EXPECT_EQ(fuzzResourceSource(bytes, source.size()), 0);
    }
}
