// Films in every form are read by programs that others have written: each pixel is the plate's.
#include <cups/raster.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "film/forms/pdf_form.h"
#include "film/forms/postscript_form.h"
#include "film/forms/raster_form.h"
#include "io/bytes.h"
#include "io/refusal.h"
#include "io/shared_library.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

namespace fs = std::filesystem;
using namespace riders;

struct TestPlate {
    film::PlateSheet sheet;
    std::vector<std::uint8_t> bits;

    std::size_t rowBytes() const { return (sheet.columns + 7) / 8; }
};

// Dots, text and blank parts do not look like this, but every pixel counts: single ones and long runs, at the
// edges too.
TestPlate plateOf(const std::string &name, int page, std::size_t columns, std::size_t rows,
                  const screening::Resolution &resolution)
{
    TestPlate plate{.sheet = {.job = "Größe (1) \\ 日本.pdf",
                              .plate = name,
                              .page = page,
                              .file = {},
                              .columns = columns,
                              .rows = rows,
                              .resolution = resolution,
                              .place = 0},
                    .bits = {}};
    std::mt19937 random(
        static_cast<unsigned>(columns * 31 + rows + name.size() * 7 + static_cast<std::size_t>(page)));
    for (std::size_t y = 0; y < rows; ++y) {
        const unsigned kind = random() % 4;
        for (std::size_t byte = 0; byte < plate.rowBytes(); ++byte)
            plate.bits.push_back(static_cast<std::uint8_t>(kind == 0   ? random()
                                                           : kind == 1 ? (random() % 8 == 0 ? random() : 0xff)
                                                           : kind == 2 ? (random() % 8 == 0 ? random() : 0)
                                                                       : 0xaa << (y % 2)));
        if (columns % 8 != 0)
            plate.bits.back() &= static_cast<std::uint8_t>(0xff << (8 - columns % 8));
    }
    return plate;
}

// RIDERS_LARGE_FILMS=1 tries plates of 100 times the size.
const std::size_t kScale = std::getenv("RIDERS_LARGE_FILMS") ? 10 : 1;

// Two pages with two plates each, one blank.
std::vector<TestPlate> platesAt(const screening::Resolution &resolution)
{
    std::vector<TestPlate> plates = {plateOf("Cyan", 1, 233 * kScale, 117 * kScale, resolution),
                                     plateOf("PANTONE 300/C #1 é", 1, 233 * kScale, 117 * kScale, resolution),
                                     plateOf("Black", 2, 160 * kScale, 401 * kScale, resolution),
                                     plateOf("Yellow", 2, 160 * kScale, 401 * kScale, resolution)};
    plates[1].sheet.place = plates[3].sheet.place = 1;
    std::fill(plates[3].bits.begin(), plates[3].bits.end(), std::uint8_t(0));
    return plates;
}

// The plates of a page are written side by side, and end in the other order.
void write(film::Form &form, const std::vector<TestPlate> &plates)
{
    for (std::size_t first = 0; first < plates.size(); first += 2) {
        const TestPlate *const both[] = {&plates[first], &plates[first + 1]};
        std::unique_ptr<film::PlateWriter> writers[] = {form.plate(both[0]->sheet), form.plate(both[1]->sheet)};
        for (std::size_t y = 0; y < both[0]->sheet.rows; ++y)
            for (int i = 0; i < 2; ++i)
                writers[i]->row(both[i]->bits.data() + y * both[i]->rowBytes());
        writers[1]->end();
        writers[0]->end();
    }
    form.finish();
}

class FilmFormsTest : public testing::Test {
protected:
    void SetUp() override { fs::create_directory(folder / "work"); }

    std::string run(const std::vector<std::string> &command)
    {
        const CommandResult result = runProgram(command, "", folder.path());
        EXPECT_EQ(result.status, 0) << command[0] << "\n" << result.out << result.err;
        return result.out + result.err;
    }

    // A picture in PBM.
    void expectPixels(const fs::path &picture, const TestPlate &plate) const
    {
        const std::string bytes = io::contentsOf(picture);
        std::istringstream in(bytes);
        std::string magic, comment;
        std::size_t columns = 0, rows = 0;
        std::getline(in, magic);
        while (in.peek() == '#')
            std::getline(in, comment);
        in >> columns >> rows;
        ASSERT_TRUE(magic == "P4" && columns == plate.sheet.columns && rows == plate.sheet.rows)
            << picture << ": " << columns << " x " << rows;
        const std::string_view pixels = std::string_view(bytes).substr(static_cast<std::size_t>(in.tellg()) + 1);
        ASSERT_EQ(pixels.size(), plate.bits.size());
        std::size_t different = 0;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const bool last = (i + 1) % plate.rowBytes() == 0 && columns % 8 != 0;
            const unsigned counted = last ? 0xffU << (8 - columns % 8) & 0xff : 0xff;
            different += static_cast<std::size_t>(
                __builtin_popcount((static_cast<std::uint8_t>(pixels[i]) ^ plate.bits[i]) & counted));
        }
        EXPECT_EQ(different, 0u) << picture << " at " << plate.sheet.resolution.across;
    }

    // All pages as Ghostscript renders them at the film's resolution.
    void expectInGhostscript(const std::string &file, const std::vector<TestPlate> &plates)
    {
        run({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pbmraw", resolutionOption(plates),
             "-sOutputFile=gs-%d.pbm", file});
        for (std::size_t page = 0; page < plates.size(); ++page)
            expectPixels(folder / ("gs-" + std::to_string(page + 1) + ".pbm"), plates[page]);
        EXPECT_FALSE(fs::exists(folder / ("gs-" + std::to_string(plates.size() + 1) + ".pbm")));
    }

    template <class FileForm>
    void expectPlatesInGhostscript(const std::string &file,
                                   const std::function<void(const std::vector<TestPlate> &)> &elsewhere);

    static std::string resolutionOption(const std::vector<TestPlate> &plates)
    {
        const screening::Resolution &resolution = plates[0].sheet.resolution;
        return "-r" + std::to_string(int(resolution.across)) + "x" + std::to_string(int(resolution.down));
    }

    void expectNothingLeft() const { EXPECT_TRUE(fs::is_empty(folder / "work")); }

    TemporaryFolder folder;
};

const screening::Resolution kFormResolutions[] = {{300, 300}, {1440, 720}, {720, 1440}, {1200, 1200}, {601, 397}};

// At each of the resolutions, the file of that form is the plates in Ghostscript; `elsewhere` looks at it, too.
template <class FileForm>
void FilmFormsTest::expectPlatesInGhostscript(const std::string &file,
                                              const std::function<void(const std::vector<TestPlate> &)> &elsewhere)
{
    for (const screening::Resolution &resolution : kFormResolutions) {
        const std::vector<TestPlate> plates = platesAt(resolution);
        FileForm form(folder / file, folder / "work");
        write(form, plates);
        expectInGhostscript(file, plates);
        elsewhere(plates);
        expectNothingLeft();
    }
}

TEST_F(FilmFormsTest, PdfIsThePlatesInGhostscriptAndPoppler)
{
    expectPlatesInGhostscript<film::PdfForm>("film.pdf", [this](const std::vector<TestPlate> &plates) {
        const screening::Resolution &resolution = plates[0].sheet.resolution;
        run({"pdftoppm", "-mono", "-rx", std::to_string(int(resolution.across)), "-ry",
             std::to_string(int(resolution.down)), "film.pdf", "poppler"});
        for (std::size_t page = 0; page < plates.size(); ++page)
            expectPixels(folder / ("poppler-" + std::to_string(page + 1) + ".pbm"), plates[page]);
    });
}

TEST_F(FilmFormsTest, PdfIsValidAndSaysWhatItsPagesAre)
{
    film::PdfForm form(folder / "film.pdf", folder / "work");
    write(form, platesAt({300, 300}));
    EXPECT_NE(run({"qpdf", "--check", "film.pdf"}).find("No syntax or stream encoding errors"), std::string::npos);
    EXPECT_EQ(run({"mutool", "draw", "-q", "-o", "mutool-%d.png", "film.pdf"}).find("error"), std::string::npos);
    const std::string outline = run({"mutool", "show", "film.pdf", "outline"});
    EXPECT_NE(outline.find("Page 1, Cyan"), std::string::npos) << outline;
    EXPECT_NE(outline.find("Page 1, PANTONE 300/C #1 é"), std::string::npos) << outline;
    EXPECT_NE(outline.find("Page 2, Yellow"), std::string::npos) << outline;
    const std::string pages = run({"mutool", "show", "film.pdf", "pages/2"});
    EXPECT_NE(pages.find("/DeviceColorant /PANTONE#20300#2FC#20#231#20#C3#A9"), std::string::npos) << pages;
    const std::string about = run({"pdfinfo", "-l", "4", "film.pdf"});
    EXPECT_NE(about.find("Größe (1) \\ 日本.pdf"), std::string::npos) << about;
    EXPECT_NE(about.find("Page    1 size:  55.92 x 28.08 pts"), std::string::npos) << about;
    EXPECT_NE(about.find("Page    4 size:  38.4 x 96.24 pts"), std::string::npos) << about;
}

TEST_F(FilmFormsTest, PdfRefusesAPageThatIsTooLong)
{
    film::PdfForm form(folder / "film.pdf", folder / "work");
    EXPECT_THROW(form.plate(plateOf("Cyan", 1, 72 * 201, 1, {72, 72}).sheet), io::Refusal);
    EXPECT_THROW(form.finish(), io::Refusal);
    EXPECT_FALSE(fs::exists(folder / "film.pdf"));
}

TEST_F(FilmFormsTest, PostscriptIsThePlatesInGhostscript)
{
    expectPlatesInGhostscript<film::PostscriptForm>("film.ps", [](const std::vector<TestPlate> &) {});
}

TEST_F(FilmFormsTest, PostscriptAsksForItsResolution)
{
    const std::vector<TestPlate> plates = platesAt({1440, 720});
    film::PostscriptForm form(folder / "film.ps", folder / "work");
    write(form, plates);
    run({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pbmraw", "-sOutputFile=own-%d.pbm", "film.ps"});
    for (std::size_t page = 0; page < plates.size(); ++page)
        expectPixels(folder / ("own-" + std::to_string(page + 1) + ".pbm"), plates[page]);
}

TEST_F(FilmFormsTest, PostscriptKeepsToItsConventions)
{
    film::PostscriptForm form(folder / "film.ps", folder / "work");
    write(form, platesAt({300, 300}));
    const std::string text = io::contentsOf(folder / "film.ps");
    std::vector<std::string> comments;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 255u);
        if (line.starts_with("%%"))
            comments.push_back(line);
        for (const char letter : line)
            ASSERT_TRUE(letter >= ' ' && letter <= '~');
    }
    const std::vector<std::string> expected = {
        "%%Title: (Gr\\303\\266\\303\\237e \\(1\\) \\\\ \\346\\227\\245\\346\\234\\254.pdf)",
        "%%Creator: riders",
        "%%LanguageLevel: 2",
        "%%DocumentData: Clean7Bit",
        "%%BoundingBox: (atend)",
        "%%HiResBoundingBox: (atend)",
        "%%Pages: (atend)",
        "%%PageOrder: Ascend",
        "%%EndComments",
        "%%BeginProlog",
        "%%EndProlog",
        "%%Page: (page 1, Cyan) 1",
        "%%PageBoundingBox: 0 0 56 29",
        "%%BeginPageSetup",
        "%%EndPageSetup",
        "%%Page: (page 1, PANTONE 300/C #1 \\303\\251) 2",
        "%%PageBoundingBox: 0 0 56 29",
        "%%BeginPageSetup",
        "%%EndPageSetup",
        "%%Page: (page 2, Black) 3",
        "%%PageBoundingBox: 0 0 39 97",
        "%%BeginPageSetup",
        "%%EndPageSetup",
        "%%Page: (page 2, Yellow) 4",
        "%%PageBoundingBox: 0 0 39 97",
        "%%BeginPageSetup",
        "%%EndPageSetup",
        "%%Trailer",
        "%%BoundingBox: 0 0 56 97",
        "%%HiResBoundingBox: 0 0 55.92 96.24",
        "%%Pages: 4",
        "%%EOF"};
    EXPECT_EQ(comments, expected);
    // Each page stands for itself: any of them can be taken out.
    run({"psselect", "-q", "-p", "3", "film.ps", "one.ps"});
    run({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pbmraw", "-r300", "-sOutputFile=one.pbm",
         "one.ps"});
    expectPixels(folder / "one.pbm", platesAt({300, 300})[2]);
}

// Read by libcups.
class RasterFile {
public:
    explicit RasterFile(const fs::path &file)
        : in_(io::openOrdinaryFile(file)), raster_(open_(in_.descriptor(), CUPS_RASTER_READ))
    {
    }
    ~RasterFile() { close_(raster_); }
    RasterFile(const RasterFile &) = delete;
    RasterFile &operator=(const RasterFile &) = delete;

    bool header(cups_page_header2_t &header) const { return readHeader_(raster_, &header) != 0; }
    std::vector<std::uint8_t> page(const cups_page_header2_t &header) const
    {
        std::vector<std::uint8_t> bits(std::size_t(header.cupsBytesPerLine) * header.cupsHeight);
        for (unsigned y = 0; y < header.cupsHeight; ++y)
            EXPECT_EQ(readPixels_(raster_, bits.data() + std::size_t(y) * header.cupsBytesPerLine,
                                  header.cupsBytesPerLine),
                      header.cupsBytesPerLine);
        return bits;
    }

private:
    io::SharedLibrary library_{"libcups.so.2", "libcups2"};
    decltype(&::cupsRasterOpen) open_ = library_("cupsRasterOpen");
    decltype(&::cupsRasterClose) close_ = library_("cupsRasterClose");
    decltype(&::cupsRasterReadHeader2) readHeader_ = library_("cupsRasterReadHeader2");
    decltype(&::cupsRasterReadPixels) readPixels_ = library_("cupsRasterReadPixels");
    io::OpenFile in_;
    cups_raster_t *raster_;
};

TEST_F(FilmFormsTest, RastersAreThePlatesInLibcups)
{
    for (const film::RasterKind kind : {film::RasterKind::cups, film::RasterKind::pwg})
        for (const screening::Resolution &resolution : kFormResolutions) {
            const std::vector<TestPlate> plates = platesAt(resolution);
            film::RasterForm form(kind, folder / "film.ras", folder / "work");
            write(form, plates);
            expectNothingLeft();
            const RasterFile file(folder / "film.ras");
            cups_page_header2_t header{};
            for (const TestPlate &plate : plates) {
                ASSERT_TRUE(file.header(header));
                EXPECT_EQ(header.HWResolution[0], resolution.across);
                EXPECT_EQ(header.HWResolution[1], resolution.down);
                EXPECT_EQ(header.cupsWidth, plate.sheet.columns);
                EXPECT_EQ(header.cupsHeight, plate.sheet.rows);
                EXPECT_EQ(header.cupsBitsPerPixel, 1u);
                EXPECT_EQ(header.cupsColorSpace, CUPS_CSPACE_K);
                if (kind == film::RasterKind::cups) {
                    EXPECT_NEAR(header.cupsPageSize[0], double(plate.sheet.columns) * 72 / resolution.across,
                                1e-3);
                }
                EXPECT_EQ(header.PageSize[0], std::lround(double(plate.sheet.columns) * 72 / resolution.across));
                EXPECT_EQ(header.PageSize[1], std::lround(double(plate.sheet.rows) * 72 / resolution.down));
                EXPECT_EQ(std::string(header.MediaClass), kind == film::RasterKind::pwg ? "PwgRaster" : "");
                EXPECT_TRUE(file.page(header) == plate.bits);
            }
            EXPECT_FALSE(file.header(header));
        }
}

TEST_F(FilmFormsTest, RastersHaveWholeResolutions)
{
    film::RasterForm form(film::RasterKind::pwg, folder / "film.ras", folder / "work");
    EXPECT_THROW(form.plate(plateOf("Cyan", 1, 8, 8, {600.5, 600}).sheet), io::Refusal);
}

TEST_F(FilmFormsTest, APlateThatIsGivenUpIsLeftOut)
{
    const std::vector<TestPlate> plates = platesAt({300, 300});
    film::PdfForm form(folder / "film.pdf", folder / "work");
    {
        const std::unique_ptr<film::PlateWriter> first = form.plate(plates[0].sheet);
        first->row(plates[0].bits.data());
        const std::unique_ptr<film::PlateWriter> second = form.plate(plates[1].sheet);
        for (std::size_t y = 0; y < plates[1].sheet.rows; ++y)
            second->row(plates[1].bits.data() + y * plates[1].rowBytes());
        second->end();
    }
    EXPECT_FALSE(fs::exists(folder / "film.pdf"));
    form.finish();
    expectInGhostscript("film.pdf", {plates[1]});
    expectNothingLeft();
}

TEST_F(FilmFormsTest, AFileThatIsNotFinishedIsNotThere)
{
    const std::vector<TestPlate> plates = platesAt({300, 300});
    {
        film::PostscriptForm form(folder / "film.ps", folder / "work");
        const std::unique_ptr<film::PlateWriter> plate = form.plate(plates[0].sheet);
        for (std::size_t y = 0; y < plates[0].sheet.rows; ++y)
            plate->row(plates[0].bits.data() + y * plates[0].rowBytes());
        plate->end();
    }
    EXPECT_FALSE(fs::exists(folder / "film.ps"));
}

}  // namespace
