// Where a PDF says that its pages are trimmed.
#include "plates/tones/page_boxes.h"
#include "printed/tones_support.h"

namespace {

using Box = riders::plates::TonePage::Box;

std::string words(const std::optional<Box> &box)
{
    std::ostringstream text;
    if (box)
        text << box->left << ' ' << box->bottom << ' ' << box->right << ' ' << box->top;
    return text.str();
}

// Its second page has no boxes, its third says them the wrong way round and lies turned on a larger unit.
const std::string kPdf =
    "%PDF-1.6\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
    "2 0 obj<</Type/Pages/Kids[3 0 R 4 0 R 5 0 R]/Count 3/MediaBox[10 20 110 170]>>endobj\n"
    "3 0 obj<</Type/Page/Parent 2 0 R/TrimBox[20 35 100 160]/BleedBox[0 30 103 165]/Contents 6 0 R>>endobj\n"
    "4 0 obj<</Type/Page/Parent 2 0 R/Contents 6 0 R>>endobj\n"
    "5 0 obj<</Type/Page/Parent 2 0 R/TrimBox[100 160 20 35]/Rotate 90/UserUnit 2/Contents 6 0 R>>endobj\n"
    "6 0 obj<</Length 28>>stream\n0 1 0 0 k 20 35 80 125 re f \nendstream endobj\n"
    "trailer<</Root 1 0 R/Size 7>>\n";

TEST_F(TonesTest, HaveTheBoxesOfAPdf)
{
    writeFile(folder / "job.pdf", kPdf);
    std::vector<TonesOfPage> pages = streamed(folder / "job.pdf", {.across = 72, .down = 72});
    ASSERT_EQ(pages.size(), 3u) << refused;
    EXPECT_EQ(words(pages[0].page.trim), "10 15 90 140");
    EXPECT_EQ(words(pages[0].page.bleed), "0 10 93 145");
    EXPECT_EQ(words(pages[1].page.trim), "");
    EXPECT_EQ(words(pages[2].page.trim), "30 20 280 180");
    EXPECT_EQ(words(pages[2].page.bleed), "");
    EXPECT_EQ(pages[2].page.columns, 300u);
}

// What the pages' boxes say is what is painted there.
TEST_F(TonesTest, HaveBoxesThatLieWhereThePageDoes)
{
    writeFile(folder / "job.pdf", kPdf);
    for (const int rotation : {90, 180, 270}) {
        const TonesAsked asked{.across = 72, .down = 72, .rotation = rotation, .pages = {1, 3}};
        std::vector<TonesOfPage> pages = streamed(folder / "job.pdf", asked);
        ASSERT_EQ(pages.size(), 2u) << refused;
        for (TonesOfPage &page : pages) {
            const riders::plates::TintPlate &ink = page.plates["Magenta"];
            Box inked{1e9, 1e9, 0, 0};
            for (int y = 0; y < ink.height; ++y)
                for (int x = 0; x < ink.width; ++x)
                    if (ink.row(y)[x] != 0)
                        inked = {std::min(inked.left, x * 1.), std::min(inked.bottom, ink.height - 1. - y),
                                 std::max(inked.right, x + 1.), std::max(inked.top, ink.height - y * 1.)};
            EXPECT_EQ(words(page.page.trim), words(inked)) << rotation;
        }
    }
}

TEST(PageBoxes, AreTakenFromLinesThatHoldThem)
{
    riders::plates::PageBoxes boxes;
    for (const char *line :
         {"", "1", "1 TrimBox 1 2 3", "x TrimBox 1 2 3 4 0 0 9 9 0 1 0 0", "0 TrimBox 1 2 3 4 0 0 9 9 0 1 0 0",
          "1 TrimBox 1 2 3 1e99 0 0 9 9 0 1 0 0", "1 TrimBox 1 2 3 4 0 0 9 9 45 1 0 0",
          "1 TrimBox 1 2 3 4 0 0 9 9 0 0 0 0", "1 ArtBox 1 2 3 4 0 0 9 9 0 1 0 0",
          "1 TrimBox 10 2 30 4 0 0 9 9 0 1 0 0", "1 TrimBox nan 2 3 4 0 0 9 9 0 1 0 0"})
        riders::plates::takeBoxLine(line, 0, boxes);
    for (const auto &[page, found] : boxes)
        EXPECT_TRUE(!found.trim && !found.bleed) << page;
    riders::plates::takeBoxLine("7 BleedBox 1 2 3 4 0 0 9 9 -270 1 0 0", 1, boxes);
    EXPECT_EQ(words(boxes[7].bleed), "1 2 3 4");
}

}  // namespace
