// Ink counted in many columns, and by the bins of a cell: with and without vector instructions, and beside
// counting pixel by pixel.
#include <gtest/gtest.h>

#include <random>

#include "meter/bin_counts.h"
#include "meter/ink_of_columns.h"

namespace {

namespace meter = riders::meter;

std::vector<std::uint8_t> randomBytes(std::size_t count)
{
    std::mt19937 random(7);
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

TEST(MeterColumns, AreTheSameWithoutVectorInstructions)
{
    const std::vector<std::uint8_t> row = randomBytes(203);
    for (std::size_t bytes : {1U, 7U, 8U, 31U, 32U, 33U, 64U, 203U}) {
        std::vector<std::uint8_t> quick(bytes, 3), plain(bytes, 3), expected(bytes, 3);
        for (std::size_t i = 0; i < bytes; ++i)
            expected[i] = static_cast<std::uint8_t>(3 + __builtin_popcount(row[i]));
        meter::addOnes(row.data(), bytes, quick.data());
        meter::addOnesPlainly(row.data(), bytes, plain.data());
        EXPECT_EQ(quick, expected) << bytes;
        EXPECT_EQ(plain, expected) << bytes;
    }
}

// Columns of whole bytes and others, and more rows than a byte's count can hold.
TEST(MeterColumns, HoldTheInkOfTheirRows)
{
    constexpr int kWidth = 643, kHeight = 100, kRowBytes = 83;
    std::vector<std::uint8_t> bits = randomBytes(std::size_t(kRowBytes) * kHeight);
    std::fill_n(bits.begin() + 20 * kRowBytes, 60 * kRowBytes, std::uint8_t{0xff});
    const meter::BitPage page{bits.data(), kWidth, kHeight, kRowBytes, 600};
    for (int width : {8, 60, 61, 240}) {
        const int columns = kWidth / width;
        std::vector<std::int64_t> expected(static_cast<std::size_t>(columns));
        for (int y = 3; y < 97; ++y)
            for (int column = 0; column < columns; ++column)
                expected[static_cast<std::size_t>(column)] +=
                    meter::inkInRow(page, y, column * width, (column + 1) * width);
        EXPECT_EQ(meter::inkOfColumns(page, columns, width, 3, 97), expected) << width;
    }
}

// Pixels from within a byte to within another; at a phase that wraps around.
TEST(MeterBins, HoldThePixelsThatFallIntoThem)
{
    const std::vector<std::uint8_t> row = randomBytes(40);
    const meter::BitPage page{row.data(), 320, 1, 40, 600};
    const meter::Phases first{0xf0000000, 0x12345678, 0x0a3d70a4, 0xfb333333};
    for (const auto &[x, end] : {std::pair{0, 320}, {3, 5}, {5, 17}, {8, 16}, {9, 313}, {7, 8}, {4, 4}}) {
        meter::BinCounts expected{}, quick{}, plain{};
        std::uint32_t u = first.u, v = first.v;
        for (int at = x; at < end; ++at, u += first.stepU, v += first.stepV)
            ++expected[(v >> 27) * 32 + (u >> 27) + (page.at(at, 0) ? 1024 : 0)];
        meter::countBins(row.data(), x, end, first, quick);
        meter::countBinsPlainly(row.data(), x, end, first, plain);
        EXPECT_EQ(quick, expected) << x << " to " << end;
        EXPECT_EQ(plain, expected) << x << " to " << end;
    }
}

}  // namespace
