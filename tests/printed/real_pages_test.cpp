// Jobs as programs write them, with an annotation added: it is where it belongs, and the rest of the page is
// what it was.
#include "apply/apply.h"
#include "printed/postscript_support.h"
#include "support/command.h"

namespace {

namespace fs = std::filesystem;

struct Written {
    const char *name;
    std::vector<std::string> command;
    int turns = 0;  // quarter turns to the left after which its pages are read
};

const std::vector<Written> kWritten = {
    {"groffLandscape", {"groff", "-Tps", "-P-pa4", "-P-l", "text"}, 1},
    {"enscriptLandscape", {"enscript", "-q", "-MA4", "-r", "-p-", "text"}, 1},
    {"a2ps", {"a2ps", "-q", "-MA4", "-1", "-o-", "text"}},
    {"a2psTwoUp", {"a2ps", "-q", "-MA4", "-2", "-o-", "text"}, 1},
    {"gnuplot",
     {"gnuplot", "-e",
      "set terminal postscript portrait; set ylabel 'turned label'; set y2label 'turned'; plot x"}},
    {"gnuplotLandscape",
     {"gnuplot", "-e", "set terminal postscript landscape; set ylabel 'turned label'; plot sin(x)"},
     1},
};

struct Box {
    int left, bottom, right, top;  // in points from the sheet's lower left corner
};

// The box of what is on one page and not on the other.
Box differenceOf(const Bitmap &one, const Bitmap &other)
{
    Box box = {1 << 20, 1 << 20, -1, -1};
    for (int y = 0; y < one.height; ++y)
        for (int x = 0; x < one.width; ++x)
            if (one.at(x, y) != other.at(x, y)) {
                const int up = one.height - 1 - y;
                box = {std::min(box.left, x), std::min(box.bottom, up), std::max(box.right, x + 1),
                       std::max(box.top, up + 1)};
            }
    return box;
}

class RealPages : public ::testing::TestWithParam<Written> {
protected:
    void SetUp() override
    {
        writeFile(folder / "text", "A page of text.\n");
        auto command = GetParam().command;
        for (std::string &word : command)
            if (word == "text")
                word = (folder / "text").string();
        const auto made = runProgram(command, {}, folder.path());
        ASSERT_EQ(made.status, 0) << made.err;
        writeFile(folder / "written.ps", made.out);
        writeFile(folder / "riders", composeRiders({.annotation = "Hugging", .errorHandler = true}));
    }
    std::vector<Bitmap> printed(const fs::path &job)
    {
        const auto result = runGhostscript(folder, contentsOf(job), "page%d", "-sDEVICE=pbmraw -r72");
        EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
        std::vector<Bitmap> pages;
        for (int page = 1; fs::exists(folder / ("page" + std::to_string(page))); ++page)
            pages.push_back(readBitmap(folder / ("page" + std::to_string(page))));
        return pages;
    }

    TemporaryFolder folder;
};

TEST_P(RealPages, HaveTheAnnotationAtTheReadersFootAndNothingElse)
{
    riders::apply::applyRiders({folder / "riders", folder / "written.ps", folder / "annotated.ps"});
    const auto plain = printed(folder / "written.ps"), annotated = printed(folder / "annotated.ps");
    ASSERT_EQ(plain.size(), 1u);
    ASSERT_EQ(annotated.size(), 1u);
    ASSERT_EQ(plain[0].width, 595);
    ASSERT_EQ(annotated[0].width, 595);
    const Box box = differenceOf(plain[0], annotated[0]);
    const bool turned = GetParam().turns == 1;
    EXPECT_NEAR(turned ? box.bottom : box.left, 18, 2) << "at the left";
    EXPECT_NEAR(turned ? 595 - box.right : box.bottom, 18, 3) << "at the foot";
    EXPECT_NEAR(turned ? box.top - box.bottom : box.right - box.left, 42, 3) << "along the line";
    EXPECT_NEAR(turned ? box.right - box.left : box.top - box.bottom, 11, 2) << "its height";
}

INSTANTIATE_TEST_SUITE_P(Debian, RealPages, ::testing::ValuesIn(kWritten),
                         [](const auto &info) { return std::string(info.param.name); });

}  // namespace
