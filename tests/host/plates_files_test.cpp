// Plates in files: those of the interpreter, and films.
#include <tiffio.h>

#include <algorithm>
#include <random>
#include <utility>

#include "host/proof_support.h"
#include "plates/files/film_file.h"
#include "plates/files/plate_files.h"
#include "plates/files/process_plates.h"

namespace {

namespace io = riders::io;
namespace plates = riders::plates;

using plates::BitPlate;

// A file as the interpreter writes it, of rows of four bits per pixel.
std::string bitsOf(int width, const std::vector<std::vector<int>> &rows)
{
    std::string file;
    for (const std::vector<int> &row : rows)
        for (int x = 0; x < width; x += 2) {
            const auto pixel = [&](int at) { return at < width ? row[static_cast<size_t>(at)] : 15; };
            file += static_cast<char>(pixel(x) << 4 | pixel(x + 1));
        }
    return file;
}

class PlatesFilesTest : public ProofTest {
protected:
    std::string messageOf(const std::string &bits, int columns, int rows)
    {
        writeFile(folder / "1.bits", bits);
        try {
            plates::readProcessPlates(folder / "1.bits", columns, rows);
            return "read";
        } catch (const io::Refusal &refusal) {
            return refusal.message;
        }
    }
};

TEST_F(PlatesFilesTest, ProcessPlatesAreDealtFromAPixelsFourBits)
{
    std::mt19937 random(20);
    for (const int width : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 33, 100}) {
        std::vector<std::vector<int>> rows(5, std::vector<int>(static_cast<size_t>(width)));
        for (std::vector<int> &row : rows)
            for (int &pixel : row)
                pixel = static_cast<int>(random() % 16);
        writeFile(folder / "1.bits", bitsOf(width, rows));
        const std::vector<BitPlate> plates = plates::readProcessPlates(folder / "1.bits", width, 5);
        ASSERT_EQ(plates.size(), 4u);
        EXPECT_EQ(plates::readBlackPlate(folder / "1.bits", width, 5).bits, plates[3].bits) << width;
        for (int plate = 0; plate < 4; ++plate) {
            const BitPlate &bits = plates[static_cast<size_t>(plate)];
            ASSERT_EQ(bits.width, width);
            ASSERT_EQ(bits.height, 5);
            for (int y = 0; y < 5; ++y) {
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(bits.at(x, y),
                              rows[static_cast<size_t>(y)][static_cast<size_t>(x)] >> (3 - plate) & 1)
                        << width << " " << plate << " " << x << " " << y;
                for (int x = width; x < static_cast<int>(bits.rowBytes) * 8; ++x)
                    ASSERT_FALSE(bits.at(x, y)) << width;
            }
        }
    }
}

// More than are read at a time.
TEST_F(PlatesFilesTest, AllRowsOfALongPageAreRead)
{
    std::vector<std::vector<int>> rows(5000, std::vector<int>(1001, 0));
    rows.front().back() = rows.back().back() = rows[4321][5] = 1;
    writeFile(folder / "1.bits", bitsOf(1001, rows));
    const BitPlate black = plates::readBlackPlate(folder / "1.bits", 1001, 5000);
    EXPECT_TRUE(black.at(1000, 0) && black.at(1000, 4999) && black.at(5, 4321));
    EXPECT_EQ(std::count(black.bits.begin(), black.bits.end(), 0), static_cast<long>(black.bits.size()) - 3);
}

TEST_F(PlatesFilesTest, AFileThatIsNotOfThePagesSizeIsRefused)
{
    const std::string good = bitsOf(9, {std::vector<int>(9, 5), std::vector<int>(9, 5)});
    EXPECT_EQ(messageOf(good, 9, 2), "read");
    const std::string refusal =
        (folder / "1.bits").string() + ": the interpreter has not written this picture whole; is the disk full?";
    EXPECT_EQ(messageOf("", 9, 2), refusal);
    EXPECT_EQ(messageOf(good.substr(0, good.size() - 1), 9, 2), refusal);
    EXPECT_EQ(messageOf(good + "x", 9, 2), refusal);
    for (const auto &[columns, rows] : {std::pair{0, 0}, {-9, 2}, {9, -2}, {9, 0}, {1 << 30, 1 << 30}, {9, 3}})
        EXPECT_EQ(messageOf(good, columns, rows), refusal) << columns << " " << rows;
}

TEST_F(PlatesFilesTest, AFilmIsReadBackAsItWasWritten)
{
    std::mt19937 random(21);
    BitPlate plate(77, 31);
    for (int y = 0; y < plate.height; ++y)
        for (int x = 0; x < plate.width; ++x)
            plate.row(y)[x / 8] |= static_cast<std::uint8_t>((random() % 2) << (7 - x % 8));
    plates::writeFilm(folder / "film.tif", plate, 1200);
    const Film film = readFilm(folder / "film.tif");
    EXPECT_EQ(film.bits.bits, plate.bits);
    EXPECT_EQ(film.dpi, 1200);
    EXPECT_THROW(plates::writeFilm(folder / "none/film.tif", plate, 1200), io::Refusal);
    // In the interpreter's files black and white are the other way round.
    EXPECT_THROW(plates::readPlate(folder / "film.tif"), io::Refusal);
    EXPECT_THROW(plates::readTints(folder / "film.tif"), io::Refusal);
}

TEST_F(PlatesFilesTest, AFilmHasOneSampleOfOneBitForEachPixel)
{
    plates::writeFilm(folder / "film.tif", BitPlate(77, 31), 1200);
    TIFF *film = TIFFOpen((folder / "film.tif").c_str(), "r");
    ASSERT_NE(film, nullptr);
    std::uint16_t samples = 0, bits = 0;
    TIFFGetField(film, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetField(film, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFClose(film);
    EXPECT_EQ(samples, 1);
    EXPECT_EQ(bits, 1);
}

TEST_F(PlatesFilesTest, PlatesOfAPageComeInTheirOrder)
{
    for (const char *name : {"1(Yellow).tif", "1(Gold).tif", "1(Black).tif", "1(Cyan).tif", "1(Magenta).tif",
                             "1(Blue (2)).tif", "11(Cyan).tif", "1.tif", "prolog.ps"})
        writeFile(folder / name, "");
    std::vector<std::string> plates;
    for (const plates::PlateFile &file : plates::plateFiles(folder.path(), 1))
        plates.push_back(file.plate);
    EXPECT_EQ(plates, (std::vector<std::string>{"Cyan", "Magenta", "Yellow", "Black", "Blue (2)", "Gold"}));
}

}  // namespace
