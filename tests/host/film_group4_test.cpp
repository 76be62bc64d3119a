// Group 4 compression against libtiff's: the same bytes, which give the same pixels.
#include <gtest/gtest.h>
#include <tiffio.h>

#include <algorithm>
#include <random>
#include <vector>

#include "film/forms/tiff_form.h"
#include "plates/files/bit_tiff.h"
#include "plates/files/group4.h"
#include "support/toolbox_test.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Plate {
    std::size_t columns, rows;
    Bytes bits;

    std::size_t rowBytes() const { return (columns + 7) / 8; }
};

Bytes compressed(const Plate &plate)
{
    riders::plates::Group4Encoder encoder(plate.columns);
    Bytes bytes;
    const auto take = [&] {
        bytes.insert(bytes.end(), encoder.bytes().begin(), encoder.bytes().end());
        encoder.taken();
    };
    for (std::size_t y = 0; y < plate.rows; ++y) {
        encoder.row(plate.bits.data() + y * plate.rowBytes());
        take();
    }
    encoder.end();
    take();
    return bytes;
}

class FilmGroup4 : public testing::Test {
protected:
    // As libtiff compresses it, and then what it reads again.
    void expectAsLibtiff(const Plate &plate) const
    {
        const std::string file = (folder / "plate.tif").string();
        TIFF *tiff = TIFFOpen(file.c_str(), "w");
        riders::plates::describeBits(tiff, static_cast<std::uint32_t>(plate.columns),
                                     static_cast<std::uint32_t>(plate.rows), 600, 600);
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
        for (std::size_t y = 0; y < plate.rows; ++y) {
            Bytes row(plate.bits.begin() + static_cast<std::ptrdiff_t>(y * plate.rowBytes()),
                      plate.bits.begin() + static_cast<std::ptrdiff_t>((y + 1) * plate.rowBytes()));
            ASSERT_EQ(TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y)), 1);
        }
        TIFFClose(tiff);
        tiff = TIFFOpen(file.c_str(), "r");
        Bytes bytes(static_cast<std::size_t>(TIFFRawStripSize64(tiff, 0)));
        TIFFReadRawStrip(tiff, 0, bytes.data(), static_cast<tmsize_t>(bytes.size()));
        TIFFClose(tiff);
        EXPECT_TRUE(compressed(plate) == bytes) << plate.columns << " x " << plate.rows;
    }

    TemporaryFolder folder;
};

// Rows of runs up to that length; some are nearly as the one above.
Plate plateOfRuns(std::size_t columns, std::size_t rows, unsigned longest, unsigned seed)
{
    std::mt19937 random(seed);
    Plate plate{columns, rows, {}};
    std::vector<bool> row(columns);
    for (std::size_t y = 0; y < rows; ++y) {
        if (random() % 3 == 0) {
            bool black = random() % 2 == 0;
            for (std::size_t x = 0; x < columns; black = !black)
                for (unsigned run = 1 + random() % longest; run > 0 && x < columns; --run)
                    row[x++] = black;
        } else {
            for (unsigned change = 0; change < 1 + columns / 20; ++change) {
                const std::size_t at = random() % columns,
                                  to = std::min<std::size_t>(columns, at + 1 + random() % 5);
                const bool black = random() % 2 == 0;
                std::fill(row.begin() + static_cast<std::ptrdiff_t>(at),
                          row.begin() + static_cast<std::ptrdiff_t>(to), black);
            }
        }
        for (std::size_t byte = 0; byte < plate.rowBytes(); ++byte) {
            unsigned bits = 0;
            for (std::size_t x = byte * 8; x < byte * 8 + 8; ++x)
                bits = bits << 1 | (x < columns && row[x] ? 1U : 0U);
            plate.bits.push_back(static_cast<std::uint8_t>(bits));
        }
    }
    return plate;
}

TEST_F(FilmGroup4, IsLibtiffsForRunsOfAllLengths)
{
    unsigned seed = 0;
    for (const std::size_t columns : {1, 2, 7, 8, 9, 63, 64, 65, 127, 333, 1728, 9001})
        for (const unsigned longest : {1U, 2U, 9U, 70U, 3000U, 9000U})
            expectAsLibtiff(plateOfRuns(columns, columns > 1000 ? 60 : 25, longest, ++seed));
}

// Every length of run, in both colours, each after a row in which nothing is near.
TEST_F(FilmGroup4, HasAWordForEachRun)
{
    const std::size_t columns = 6000;
    for (const std::uint8_t ground : {0x00, 0xff}) {
        Plate plate{columns, 0, {}};
        for (std::size_t length = 0; length < 5400; length += length < 2700 ? 1 : 7) {
            Bytes row(plate.rowBytes(), ground);
            for (std::size_t x = 300; x < 300 + length; ++x)
                row[x / 8] ^= static_cast<std::uint8_t>(0x80 >> x % 8);
            plate.bits.insert(plate.bits.end(), row.begin(), row.end());
            plate.bits.insert(plate.bits.end(), plate.rowBytes(), length % 2 == 0 ? 0x00 : 0xff);
            plate.rows += 2;
        }
        expectAsLibtiff(plate);
    }
}

TEST_F(FilmGroup4, IsLibtiffsForBlankAndSolidPlates)
{
    for (const std::size_t columns : {1, 8, 4000, 80000}) {
        expectAsLibtiff({columns, 5, Bytes(5 * ((columns + 7) / 8))});
        expectAsLibtiff(plateOfRuns(columns, 5, 1U << 20, 3));
    }
}

// More than is compressed at a time: the strip is written in several pieces.
TEST_F(FilmGroup4, TiffFilmsArePiecedTogether)
{
    Plate plate{4096, 4000, Bytes(4096 / 8 * 4000)};
    std::mt19937 random(4);
    std::generate(plate.bits.begin(), plate.bits.end(), [&] { return static_cast<std::uint8_t>(random()); });
    riders::film::TiffForm form(riders::film::Compression::group4);
    const auto writer = form.plate({.job = "job",
                                    .plate = "Cyan",
                                    .page = 1,
                                    .file = folder / "film.tif",
                                    .columns = plate.columns,
                                    .rows = plate.rows,
                                    .resolution = {600, 600}});
    for (std::size_t y = 0; y < plate.rows; ++y)
        writer->row(plate.bits.data() + y * plate.rowBytes());
    writer->end();
    TIFF *tiff = TIFFOpen((folder / "film.tif").c_str(), "r");
    ASSERT_TRUE(tiff);
    ASSERT_EQ(TIFFNumberOfStrips(tiff), 1u);
    ASSERT_GT(TIFFRawStripSize64(tiff, 0), std::uint64_t(2) << 20);
    Bytes read(plate.bits.size());
    EXPECT_EQ(TIFFReadEncodedStrip(tiff, 0, read.data(), static_cast<tmsize_t>(read.size())),
              static_cast<tmsize_t>(read.size()));
    TIFFClose(tiff);
    EXPECT_TRUE(read == plate.bits);
}

}  // namespace
