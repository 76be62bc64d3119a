// Pages in continuous tone are read while the interpreter writes them, and their room is given back.
#include "plates/tones/ink_files.h"

#include "support/toolbox_test.h"

namespace {

using namespace riders;

constexpr std::size_t kSide = 100, kPlates = 4;

std::uint8_t toneAt(std::size_t plate, std::size_t y)
{
    return static_cast<std::uint8_t>(plate * 50 + y % 40 + 1);
}

class RowsReader : public plates::ToneReader {
public:
    void beginPage(const plates::TonePage &) override {}
    void row(std::size_t y, const std::vector<const std::uint8_t *> &tones) override
    {
        for (std::size_t plate = 0; plate < kPlates; ++plate)
            for (std::size_t x = 0; x < kSide; ++x)
                wrong += tones[plate][x] != toneAt(plate, y);
        ++rows;
    }
    void endPage() override { whole = true; }

    std::size_t rows = 0, wrong = 0;
    bool whole = false;
};

// As the interpreter's device writes it, up to that row of the last plate; the others are there already, as far as
// they ever may be.
std::string fileUpTo(std::size_t rows)
{
    const auto number = [](std::size_t value, int bytes) {
        std::string text;
        for (int i = bytes - 1; i >= 0; --i)
            text += static_cast<char>(value >> (8 * i) & 255);
        return text;
    };
    std::string bytes = "8BPS" + number(1, 2) + std::string(6, '\0') + number(kPlates, 2) + number(kSide, 4) +
                        number(kSide, 4) + number(8, 2) + number(4, 2) + number(0, 4) + number(0, 4) +
                        number(0, 4) + number(0, 2);
    for (std::size_t plate = 0; plate < kPlates; ++plate)
        for (std::size_t y = 0; y < (plate + 1 == kPlates ? rows : kSide); ++y)
            bytes += std::string(kSide, static_cast<char>(255 - toneAt(plate, y)));
    return bytes;
}

// Adds to the file what it does not have yet, and leaves the rest as it is.
void growTo(const std::filesystem::path &file, std::size_t rows)
{
    const std::string bytes = fileUpTo(rows);
    const std::size_t there = std::filesystem::exists(file) ? std::filesystem::file_size(file) : 0;
    std::FILE *out = std::fopen(file.c_str(), "ab");
    std::fwrite(bytes.data() + there, 1, bytes.size() - there, out);
    std::fclose(out);
}

}  // namespace

// The holes of a small page end within blocks that hold rows of the plate before.
TEST(InkFiles, GiveBackOnlyWhatHasBeenRead)
{
    const TemporaryFolder folder;
    plates::PreparedJob job;
    job.name = "job.ps";
    plates::Survey survey;
    survey.pages.resize(1);
    survey.pages[0].number = 1;
    survey.pages[0].width = survey.pages[0].height = 1;
    const plates::TonesRun run{.job = job,
                               .survey = survey,
                               .pages = {1},
                               .dpiAcross = kSide,
                               .dpiDown = kSide,
                               .limits = {},
                               .work = folder.path()};
    const plates::PageBoxes boxes;
    RowsReader reader;
    plates::TonePages pages(run, boxes, reader);
    plates::InkFiles files(folder.path(), {1}, pages);
    for (const std::size_t rows : {5, 10, 30, 60}) {
        growTo(folder / "1.psd", rows);
        files.take();
        EXPECT_EQ(reader.rows, rows);
    }
    growTo(folder / "1.psd", kSide);
    files.ended();
    EXPECT_EQ(reader.rows, kSide);
    EXPECT_EQ(reader.wrong, 0u);
    EXPECT_TRUE(reader.whole);
    EXPECT_FALSE(std::filesystem::exists(folder / "1.psd"));
}
