// Films made of pages that stream by: what is screened and written of each plate, and what is said when that
// fails.
#include "film/page_films.h"

#include <algorithm>
#include <map>

#include "film/film_rows.h"
#include "io/refusal.h"
#include "screening/compare.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

namespace film = riders::film;
namespace plates = riders::plates;

using Row = std::vector<std::uint8_t>;
using Rows = std::vector<Row>;
using Names = std::vector<std::string>;

// Keeps what is written; each plate's name in the order in which they were begun.
class KeptForm : public film::Form {
public:
    std::unique_ptr<film::PlateWriter> plate(const film::PlateSheet &sheet) override
    {
        const std::string name = std::to_string(sheet.page) + " " + sheet.plate;
        begun.push_back(name);
        sheets[name] = sheet;
        return std::make_unique<Writer>(*this, name, (sheet.columns + 7) / 8);
    }
    void finish() override {}

    std::vector<std::string> begun;
    std::map<std::string, film::PlateSheet> sheets;
    std::map<std::string, Rows> ended;
    std::string fails;  // the plate that cannot be written

private:
    class Writer : public film::PlateWriter {
    public:
        Writer(KeptForm &form, std::string name, std::size_t bytes)
            : form_(form), name_(std::move(name)), bytes_(bytes)
        {
        }
        void row(const std::uint8_t *bits) override
        {
            if (name_ == form_.fails && rows_.size() == 300)
                throw riders::io::Refusal("disk: no room");
            rows_.emplace_back(bits, bits + bytes_);
        }
        void end() override
        {
            static std::mutex mutex;
            const std::lock_guard lock(mutex);
            form_.ended[name_] = rows_;
        }

    private:
        KeptForm &form_;
        const std::string name_;
        const std::size_t bytes_;
        Rows rows_;
    };
};

constexpr std::size_t kColumns = 301, kRows = 600;

// A flat tint in the middle, a ramp around it.
std::uint8_t toneAt(std::size_t x, std::size_t y)
{
    const bool middle = x > 20 && x < 280 && y > 100 && y < 560;
    return static_cast<std::uint8_t>(middle ? 77 : (x + y) % 256);
}

class PageFilmsTest : public ::testing::Test {
protected:
    PageFilmsTest()
    {
        request.job = "job.ps";
        request.resolution = {300, 300};
        page.number = 3;
        page.columns = kColumns, page.rows = kRows;
        page.width = kColumns / 300.0, page.height = kRows / 300.0;
        page.plates = {"Cyan", "Magenta", "Yellow", "Black"};
        known.push_back({0, 3, page.width, page.height, {}});
        for (std::size_t i = 0; i < 4; ++i)
            known[0].plates.push_back({i,
                                       page.plates[i],
                                       folder / (page.plates[i] + ".tif"),
                                       {30 + 5.0 * double(i), 15 * double(i), {"Round", {}}, "you", false},
                                       i != 2});
    }

    // Magenta has ink in its last rows only, yellow none.
    static std::uint8_t toneOf(std::size_t plate, std::size_t x, std::size_t y)
    {
        return plate == 2 || (plate == 1 && y < 500) ? 0 : toneAt(x, y);
    }

    void make()
    {
        riders::io::Workers workers(2);
        film::Progress progress(false);
        film::PageOrder order;
        const film::PageFilmsRun run{
            .request = request,
            .pages = known,
            .further =
                [this](const film::FilmPage &, const std::string &name, const Names &) {
                    return film::PagePlate{{}, name, folder / name, {40, 0, {"Line", {}}, "you", false}, false};
                },
            .measuredAt =
                [](const film::FilmPage &, const film::PagePlate &plate) {
                    return plate.surveyed == 0U ? riders::plates::Place{0.1, 0.5, 0.8, 1.3}
                                                : riders::plates::Place{};
                },
            .skips = [this](const film::PagePlate &plate) { return plate.name == skipped; },
            .screens = screens,
            .form = form,
            .order = order,
            .date = "2001-02-03"};
        film::PageFilms films(run, workers, progress, made);
        films.beginPage(page);
        std::vector<Row> tones(4, Row(kColumns));
        for (std::size_t y = 0; y < kRows; ++y) {
            std::vector<const std::uint8_t *> row;
            for (std::size_t plate = 0; plate < 4; ++plate) {
                for (std::size_t x = 0; x < kColumns; ++x)
                    tones[plate][x] = toneOf(plate, x, y);
                row.push_back(tones[plate].data());
            }
            films.row(y, row);
        }
        films.endPage();
    }

    std::string said()
    {
        try {
            make();
            return "done";
        } catch (const riders::io::Refusal &refusal) {
            return refusal.message;
        }
    }

    // By the plain thresholds, pixel by pixel.
    Row expectedRow(std::size_t plate, std::size_t y, std::int64_t left = 0, std::int64_t top = 0)
    {
        const auto &thresholds = screens.of(known[0].plates[plate].dots)->thresholds;
        Row row((kColumns + 7) / 8);
        for (std::size_t x = 0; x < kColumns; ++x) {
            const auto column = static_cast<std::int64_t>(x) + left, line = static_cast<std::int64_t>(y) + top;
            if (toneOf(plate, x, y) >= thresholds.rowOf(line)[thresholds.placeIn(column, line)])
                row[x / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
        }
        return row;
    }

    TemporaryFolder folder;
    film::FilmRequest request;
    plates::TonePage page;
    std::vector<film::FilmPage> known;
    std::string skipped = "none";
    // The same screens in all tests: computing them takes longer than the films.
    static inline film::PlateScreens screens{{300, 300}, 0};
    KeptForm form;
    film::FilmsMade made;
};

std::vector<std::string> platesOf(const std::vector<film::PlateMade> &films)
{
    std::vector<std::string> names;
    for (const film::PlateMade &film : films)
        names.push_back(film.plate);
    return names;
}

TEST_F(PageFilmsTest, EachPlateHasItsScreen)
{
    make();
    EXPECT_EQ(form.begun, (Names{"3 Cyan", "3 Magenta", "3 Black"}));
    EXPECT_EQ(platesOf(made.films), (Names{"Cyan", "Magenta", "Black"}));
    for (const std::size_t plate : {0, 1, 3}) {
        const Rows &rows = form.ended.at("3 " + page.plates[plate]);
        ASSERT_EQ(rows.size(), kRows);
        for (std::size_t y = 0; y < kRows; ++y)
            ASSERT_EQ(rows[y], expectedRow(plate, y)) << page.plates[plate] << " row " << y;
    }
    ASSERT_EQ(made.blank.size(), 1U);
    EXPECT_EQ(made.blank[0].plate, "Yellow");
    EXPECT_EQ(made.blank[0].page, 3);
}

TEST_F(PageFilmsTest, AScreenIsMeasuredWhereThereIsATint)
{
    make();
    const film::PlateMade &cyan = made.films.at(0);
    ASSERT_TRUE(cyan.measured.found);
    EXPECT_NEAR(cyan.measured.frequency, 30, 0.1);
    EXPECT_NEAR(cyan.measured.ink, 77 / 255.0, 0.01);
    EXPECT_EQ(cyan.warnings, Names{});
    EXPECT_FALSE(made.films.at(1).measured.found);
    EXPECT_NEAR(cyan.frequency, 30, 0.01);
    EXPECT_EQ(cyan.columns, kColumns);
    EXPECT_EQ(cyan.file, folder / "Cyan.tif");
}

TEST_F(PageFilmsTest, InkThatTheSurveyMissedMakesAFilm)
{
    for (film::PagePlate &plate : known[0].plates)
        plate.ink = false;
    make();
    EXPECT_EQ(platesOf(made.films), (Names{"Cyan", "Magenta", "Black"}));
    for (std::size_t y = 0; y < kRows; ++y)
        ASSERT_EQ(form.ended.at("3 Magenta")[y], expectedRow(1, y)) << y;
}

TEST_F(PageFilmsTest, APlateThatTheSurveyDoesNotKnowIsMadeIfItHasInk)
{
    page.plates[1] = "Gold";
    page.plates[2] = "Silver";
    make();
    EXPECT_EQ(platesOf(made.films), (Names{"Cyan", "Gold", "Black"}));
    EXPECT_EQ(made.films[1].asked.shape.name, "Line");
    EXPECT_EQ(made.films[1].file, folder / "Gold");
    EXPECT_EQ(made.blank.at(0).plate, "Silver");
}

TEST_F(PageFilmsTest, BlankPlatesAreMadeWhereTheyAreAskedFor)
{
    request.blank = true;
    make();
    EXPECT_EQ(platesOf(made.films), (Names{"Cyan", "Magenta", "Yellow", "Black"}));
    EXPECT_EQ(form.ended.at("3 Yellow"), Rows(kRows, Row(38, 0)));
    EXPECT_TRUE(made.blank.empty());
}

TEST_F(PageFilmsTest, ASkippedPlateMakesNone)
{
    skipped = "Black";
    make();
    EXPECT_EQ(platesOf(made.films), (Names{"Cyan", "Magenta"}));
    EXPECT_EQ(made.blank.size(), 2U);
}

TEST_F(PageFilmsTest, ANegativeIsBlackForWhiteAndAMirroredFilmLeftForRight)
{
    request.side = {true, true};
    make();
    for (std::size_t y = 0; y < kRows; ++y) {
        Row expected = expectedRow(0, y), mirrored(expected.size());
        film::invertRow(expected.data(), kColumns);
        film::mirrorRow(expected.data(), kColumns, mirrored.data());
        ASSERT_EQ(form.ended.at("3 Cyan")[y], mirrored) << y;
    }
    EXPECT_NEAR(made.films.at(0).measured.ink, 77 / 255.0, 0.01);  // of what will print
}

TEST_F(PageFilmsTest, OnASheetThePageLiesWhereTheSheetHasIt)
{
    request.marks.cropMarks = request.marks.wedge = true;
    make();
    const film::Sheet sheet(page, request.resolution, request.marks);
    ASSERT_GT(sheet.left(), 0U);
    ASSERT_GT(sheet.top(), 0U);
    EXPECT_EQ(made.films.at(0).columns, sheet.columns());
    EXPECT_EQ(made.films.at(0).rows, sheet.rows());
    const Rows &rows = form.ended.at("3 Cyan");
    ASSERT_EQ(rows.size(), sheet.rows());
    for (std::size_t y = 0; y < kRows; ++y) {
        const Row expected =
            expectedRow(0, y, static_cast<std::int64_t>(sheet.left()), static_cast<std::int64_t>(sheet.top()));
        for (std::size_t x = 0; x < kColumns; ++x) {
            const std::size_t column = x + sheet.left();
            ASSERT_EQ(rows[y + sheet.top()][column / 8] >> (7 - column % 8) & 1,
                      expected[x / 8] >> (7 - x % 8) & 1)
                << x << ", " << y;
        }
    }
    EXPECT_NEAR(made.films.at(0).measured.ink, 77 / 255.0, 0.01);
}

TEST_F(PageFilmsTest, AFailureNamesPageAndPlate)
{
    form.fails = "3 Black";
    EXPECT_EQ(said(), "page 3, Black: disk: no room");
    EXPECT_TRUE(made.films.empty());
    EXPECT_TRUE(form.ended.empty());
}

TEST_F(PageFilmsTest, AScreenThatIsOffIsRefusedWhereThatIsAskedFor)
{
    known[0].plates[3].dots.shapeUnknown = true;
    make();
    EXPECT_EQ(made.films.at(2).warnings.size(), 1U);
    request.strict = true;
    made = {};
    form.ended.clear();
    EXPECT_EQ(said(),
              "page 3, Black: the job has a dot shape of its own; the dots are Round instead: name one with "
              "--spot");
    EXPECT_EQ(form.ended.count("3 Black"), 0U);
    EXPECT_EQ(platesOf(made.films).size(), form.ended.size());  // what is there is known
}

TEST_F(PageFilmsTest, AForeignFileIsNotReplacedUnlessForced)
{
    writeFile(folder / "Cyan.tif", "mine");
    EXPECT_EQ(said(), (folder / "Cyan.tif").string() +
                          ": exists and was not made by riders; name another place with -o, or replace it with "
                          "--force");
    request.force = true;
    EXPECT_EQ(said(), "done");
}

}  // namespace
