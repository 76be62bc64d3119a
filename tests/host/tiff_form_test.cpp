// Films as TIFF: what is in the file, and when there is one.
#include "film/forms/tiff_form.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <tiffio.h>

#include "io/refusal.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

namespace film = riders::film;

using Row = std::vector<std::uint8_t>;

film::PlateSheet sheetFor(const fs::path &file, std::size_t columns = 21, std::size_t rows = 30)
{
    return {"a job", "PANTONE 300 C", 7, file, columns, rows, {1440, 720}};
}

// A pattern that no row shares with its neighbours.
Row rowOf(std::size_t y, std::size_t columns)
{
    Row row((columns + 7) / 8);
    for (std::size_t x = 0; x < columns; ++x)
        if ((x * 7 + y * y) % 5 < 2)
            row[x / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
    return row;
}

void write(film::Form &form, const film::PlateSheet &sheet)
{
    const std::unique_ptr<film::PlateWriter> writer = form.plate(sheet);
    for (std::size_t y = 0; y < sheet.rows; ++y)
        writer->row(rowOf(y, sheet.columns).data());
    writer->end();
}

template <typename Value>
Value field(TIFF *tiff, std::uint32_t tag)
{
    Value value{};
    EXPECT_EQ(TIFFGetField(tiff, tag, &value), 1) << tag;
    return value;
}

class TiffFormTest : public ::testing::TestWithParam<film::Compression> {
protected:
    TemporaryFolder folder;
    const fs::path file = folder / "plate.tif";
};

TEST_P(TiffFormTest, HoldsTheRowsAndWhatTheyAre)
{
    film::TiffForm form(GetParam());
    write(form, sheetFor(file));
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), TIFFClose);
    ASSERT_TRUE(tiff);
    EXPECT_EQ(field<std::uint32_t>(tiff.get(), TIFFTAG_IMAGEWIDTH), 21U);
    EXPECT_EQ(field<std::uint32_t>(tiff.get(), TIFFTAG_IMAGELENGTH), 30U);
    EXPECT_EQ(field<std::uint16_t>(tiff.get(), TIFFTAG_COMPRESSION),
              GetParam() == film::Compression::group4 ? COMPRESSION_CCITTFAX4 : COMPRESSION_NONE);
    EXPECT_EQ(field<std::uint16_t>(tiff.get(), TIFFTAG_PHOTOMETRIC), PHOTOMETRIC_MINISWHITE);
    EXPECT_EQ(field<std::uint16_t>(tiff.get(), TIFFTAG_RESOLUTIONUNIT), RESUNIT_INCH);
    EXPECT_EQ(field<float>(tiff.get(), TIFFTAG_XRESOLUTION), 1440);
    EXPECT_EQ(field<float>(tiff.get(), TIFFTAG_YRESOLUTION), 720);
    EXPECT_STREQ(field<const char *>(tiff.get(), TIFFTAG_SOFTWARE), "riders");
    EXPECT_STREQ(field<const char *>(tiff.get(), TIFFTAG_DOCUMENTNAME), "a job");
    EXPECT_STREQ(field<const char *>(tiff.get(), TIFFTAG_PAGENAME), "page 7, PANTONE 300 C");
    EXPECT_EQ(TIFFNumberOfStrips(tiff.get()), 1U);
    for (std::size_t y = 0; y < 30; ++y) {
        Row row(3);
        ASSERT_EQ(TIFFReadScanline(tiff.get(), row.data(), static_cast<std::uint32_t>(y)), 1);
        EXPECT_EQ(row, rowOf(y, 21)) << y;
    }
}

// More than the buffer holds.
TEST_P(TiffFormTest, HoldsAPlateOfManyMegabytes)
{
    film::TiffForm form(GetParam());
    write(form, sheetFor(file, 20001, 500));
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), TIFFClose);
    ASSERT_TRUE(tiff);
    for (std::size_t y = 0; y < 500; ++y) {
        Row row(2501);
        ASSERT_EQ(TIFFReadScanline(tiff.get(), row.data(), static_cast<std::uint32_t>(y)), 1);
        ASSERT_EQ(row, rowOf(y, 20001)) << y;
    }
}

TEST_P(TiffFormTest, IsThereOnceItIsWhole)
{
    writeFile(file, "earlier");
    chmod(file.c_str(), 0640);
    film::TiffForm form(GetParam());
    {
        const std::unique_ptr<film::PlateWriter> writer = form.plate(sheetFor(file));
        writer->row(rowOf(0, 21).data());
    }
    EXPECT_EQ(contentsOf(file), "earlier");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
    write(form, sheetFor(file));
    EXPECT_NE(contentsOf(file), "earlier");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}

TEST_P(TiffFormTest, SaysWhyItCannotBeWritten)
{
    film::TiffForm form(GetParam());
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit little{64 << 10, old.rlim_max};
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &little);
    std::string said;
    try {
        write(form, sheetFor(file, 20001, 500));
    } catch (const riders::io::Refusal &refusal) {
        said = refusal.message;
    }
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, handler);
    EXPECT_EQ(said, file.string() + ": File too large");
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

INSTANTIATE_TEST_SUITE_P(Both, TiffFormTest,
                         ::testing::Values(film::Compression::group4, film::Compression::none));

TEST(OwnTiff, IsOneThatSaysSo)
{
    TemporaryFolder folder;
    film::TiffForm form(film::Compression::group4);
    write(form, sheetFor(folder / "ours.tif"));
    EXPECT_TRUE(film::isOwnTiff(folder / "ours.tif"));
    const auto writeTiff = [&](const std::string &name, const char *software) {
        const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen((folder / name).c_str(), "w"), TIFFClose);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, 8);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, 1);
        if (software != nullptr)
            TIFFSetField(tiff.get(), TIFFTAG_SOFTWARE, software);
        std::uint8_t byte = 0;
        TIFFWriteScanline(tiff.get(), &byte, 0);
    };
    writeTiff("none.tif", nullptr);
    writeTiff("other.tif", "Another program");
    writeFile(folder / "text.tif", "riders");
    for (const char *foreign : {"none.tif", "other.tif", "text.tif", "missing.tif"})
        EXPECT_FALSE(film::isOwnTiff(folder / foreign)) << foreign;
}

}  // namespace
