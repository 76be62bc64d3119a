// Plates in files: those of the interpreter, and films.
#include <tiffio.h>

#include <random>

#include "host/proof_support.h"
#include "plates/files/film_file.h"
#include "plates/files/plate_files.h"
#include "plates/files/process_plates.h"

namespace {

namespace io = riders::io;
namespace plates = riders::plates;

using plates::BitPlate;

// A PCX file as the interpreter writes it, of rows of four bits per pixel.
std::string pcxOf(int width, const std::vector<std::vector<int>> &rows)
{
    std::string file(128, '\0');
    file[0] = 10, file[1] = 2, file[2] = 1, file[3] = 4, file[65] = 1;
    file[8] = static_cast<char>((width - 1) & 0xFF);
    file[9] = static_cast<char>((width - 1) >> 8 & 0xFF);
    for (const std::vector<int> &row : rows)
        for (int x = 0; x < (width + 3) / 4 * 4; x += 2) {
            const auto pixel = [&](int at) { return at < width ? row[static_cast<size_t>(at)] : 15; };
            const int byte = pixel(x) << 4 | pixel(x + 1);
            if (byte >= 0xC0)
                file += '\xC1';
            file += static_cast<char>(byte);
        }
    return file;
}

class PlatesFilesTest : public ProofTest {
protected:
    std::string messageOf(const std::string &pcx)
    {
        writeFile(folder / "1.pcx", pcx);
        try {
            plates::readProcessPlates(folder / "1.pcx", 10, 10);
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
        writeFile(folder / "1.pcx", pcxOf(width, rows));
        const std::vector<BitPlate> plates = plates::readProcessPlates(folder / "1.pcx", width, 5);
        ASSERT_EQ(plates.size(), 4u);
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

// The file has 16 bits for a width.
TEST_F(PlatesFilesTest, AWidePageIsDistinguishedFromANarrowOne)
{
    const int width = 65536 + 10;
    writeFile(folder / "1.pcx", pcxOf(width, {std::vector<int>(width, 8)}));
    const std::vector<BitPlate> plates = plates::readProcessPlates(folder / "1.pcx", width - 3, 1);
    EXPECT_EQ(plates[0].width, width);
    EXPECT_TRUE(plates[0].at(width - 1, 0));
    EXPECT_FALSE(plates[1].hasInk());
}

TEST_F(PlatesFilesTest, AFileThatIsNoPcxIsRefused)
{
    const std::string good = pcxOf(10, {std::vector<int>(10, 5)});
    EXPECT_EQ(messageOf(good), "read");
    EXPECT_EQ(messageOf(good.substr(0, good.size() - 1)), "read");  // a row that is cut short is left out
    const std::string refusal =
        (folder / "1.pcx").string() + ": the interpreter has not written this picture whole; is the disk full?";
    EXPECT_EQ(messageOf(""), refusal);
    EXPECT_EQ(messageOf(good.substr(0, 100)), refusal);
    for (const size_t at : {0, 2, 3, 65}) {
        std::string bad = good;
        bad[at] = 7;
        EXPECT_EQ(messageOf(bad), refusal) << at;
    }
}

TEST_F(PlatesFilesTest, AnyNumberOfEmptyRunsIsSkipped)
{
    const std::string good = pcxOf(10, {std::vector<int>(10, 5)});
    std::string nothing;
    for (int i = 0; i < 1 << 20; ++i)
        nothing += "\xC0\x55";
    EXPECT_EQ(messageOf(good.substr(0, 128) + nothing + good.substr(128)), "read");
    EXPECT_EQ(plates::readProcessPlates(folder / "1.pcx", 10, 10)[1].height, 1);
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
