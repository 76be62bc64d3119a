// Films of several pages are the same on any number of cores, and so is what is there and said when one fails.
#include <signal.h>

#include <map>
#include <thread>

#include "film/film.h"
#include "film/page_shares.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

namespace film = riders::film;

using Names = std::vector<std::string>;

std::string tintPage(const std::string &more = {})
{
    return "0.5 0.3 0 0.1 setcmykcolor 10 10 60 95 rectfill " + more + " showpage\n";
}

constexpr const char *kGold = "[/Separation (Gold) /DeviceCMYK {dup 0.2 mul exch dup 0.3 mul exch 0.9 mul 0}] "
                              "setcolorspace 0.4 setcolor 75 10 70 30 rectfill";

struct Outcome {
    std::string said;  // what it was refused with, or "done"
    std::map<std::string, std::string> files;
    Names made, blank;

    bool operator==(const Outcome &) const = default;
};

class FilmCoresTest : public ::testing::Test {
protected:
    void write(const Names &pages)
    {
        std::string job = "%!PS-Adobe-3.0\n<< /PageSize [158 115] >> setpagedevice\n";
        for (const std::string &page : pages)
            job += page;
        writeFile(folder / "job.ps", job);
    }

    Outcome on(
        int cores, const std::function<void(film::FilmRequest &)> &change = [](film::FilmRequest &) {})
    {
        film::FilmRequest request;
        request.job = folder / "job.ps";
        request.output = folder / "out";
        request.resolution = {300, 300};
        request.quiet = true;
        request.cores = cores;
        change(request);
        film::FilmsMade made;
        Outcome outcome{"done", {}, {}, {}};
        try {
            film::makeFilms(request, made);
        } catch (const riders::io::Refusal &refusal) {
            outcome.said = refusal.message;
        }
        for (const film::PlateMade &plate : made.films)
            outcome.made.push_back(std::to_string(plate.page) + " " + plate.plate);
        for (const film::BlankPlate &plate : made.blank)
            outcome.blank.push_back(std::to_string(plate.page) + " " + plate.plate);
        if (fs::is_directory(folder / "out"))
            for (const fs::directory_entry &file : fs::directory_iterator(folder / "out"))
                outcome.files[file.path().filename()] = contentsOf(file.path());
        if (fs::is_regular_file(folder / "out.pdf"))
            outcome.files["out.pdf"] = contentsOf(folder / "out.pdf");
        fs::remove_all(folder / "out");
        fs::remove(folder / "out.pdf");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "something is left";
        return outcome;
    }

    void expectAlikeOn(
        const std::vector<int> &numbers, const Outcome &alone,
        const std::function<void(film::FilmRequest &)> &change = [](film::FilmRequest &) {})
    {
        for (const int cores : numbers) {
            const Outcome shared = on(cores, change);
            EXPECT_EQ(shared.said, alone.said) << cores;
            EXPECT_EQ(shared.made, alone.made) << cores;
            EXPECT_EQ(shared.blank, alone.blank) << cores;
            EXPECT_TRUE(shared == alone) << cores << ": other files";
        }
    }

    TemporaryFolder folder;
};

TEST_F(FilmCoresTest, FilesAndWordsAreTheSame)
{
    write({tintPage(), tintPage(kGold), tintPage(), tintPage(kGold), "0 setgray 5 5 9 9 rectfill showpage\n"});
    const Outcome alone = on(1);
    EXPECT_EQ(alone.said, "done");
    EXPECT_EQ(alone.made.size(), 3U * 4 + 2 + 1);
    EXPECT_EQ(alone.files.size(), alone.made.size());
    expectAlikeOn({2, 3}, alone);
    const auto someAndBlank = [](film::FilmRequest &request) {
        request.blank = true;
        request.pages = "2,4-5";
    };
    expectAlikeOn({3}, on(1, someAndBlank), someAndBlank);
}

TEST_F(FilmCoresTest, OneFileHasThePagesInTheirOrder)
{
    // The first page takes longest, and its black plate begins last.
    write({tintPage("0 0 0 0.3 setcmykcolor 0 1 5000 {pop 120 2 1 1 rectfill} for"), tintPage(), tintPage()});
    const auto asPdf = [this](film::FilmRequest &request) {
        request.format = film::FilmFormat::pdf;
        request.output = folder / "out.pdf";
    };
    const Outcome alone = on(1, asPdf);
    EXPECT_EQ(alone.said, "done");
    EXPECT_EQ(alone.files.size(), 1U);
    expectAlikeOn({2}, alone, asPdf);
}

// Pages after it may be whole before: they are not there all the same.
TEST_F(FilmCoresTest, OfAPageThatFailsThoseBeforeAreWholeAndThoseAfterAreNotThere)
{
    write({tintPage(), tintPage("0 1 5000 {pop 120 2 1 1 rectfill} for"), tintPage(),
           tintPage("40 20 {mul sin} setscreen"), tintPage(), tintPage(), tintPage()});
    const auto strictly = [](film::FilmRequest &request) { request.strict = true; };
    const Outcome alone = on(1, strictly);
    EXPECT_EQ(alone.said, "page 4, Cyan: the job has a dot shape of its own; the dots are Round instead: name one "
                          "with --spot");
    EXPECT_EQ(alone.files.size(), 3U * 3);
    expectAlikeOn({2}, alone, strictly);
}

TEST(PageOrder, AnEarlierPageGoesOnWhenALaterOneFails)
{
    film::PageOrder order;
    std::vector<std::size_t> finished;
    const std::vector<film::PageShare> shares = film::pageShares(6, 2);
    ASSERT_EQ(shares.size(), 2U);
    EXPECT_EQ(shares[1].places, (std::vector<std::size_t>{1, 3, 5}));
    riders::io::Interruption interruption;
    try {
        film::makeShares(shares, order, [&](const film::PageShare &share, std::size_t) {
            for (const std::size_t place : share.places) {
                if (place == 3)
                    throw riders::io::Refusal("no more");
                std::this_thread::sleep_for(std::chrono::milliseconds(place == 2 ? 100 : 0));
                order.awaitTurn(place);
                finished.push_back(place);
                order.finished(place);
            }
        });
        FAIL();
    } catch (const riders::io::Refusal &refusal) {
        EXPECT_EQ(refusal.message, "no more");
    }
    EXPECT_EQ(finished, (std::vector<std::size_t>{0, 1, 2}));
}

TEST(PageOrder, TheFirstOfTheFailuresIsSaid)
{
    film::PageOrder order;
    riders::io::Interruption interruption;
    try {
        film::makeShares(film::pageShares(3, 3), order, [&](const film::PageShare &, std::size_t number) {
            std::this_thread::sleep_for(std::chrono::milliseconds(30 * (2 - number)));
            throw riders::io::Refusal("page " + std::to_string(number));
        });
        FAIL();
    } catch (const riders::io::Refusal &refusal) {
        EXPECT_EQ(refusal.message, "page 0");
    }
}

TEST(PageOrder, WaitingEndsWithASignal)
{
    film::PageOrder order;
    riders::io::Interruption interruption;
    std::thread signals([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        kill(getpid(), SIGINT);
    });
    EXPECT_THROW(order.awaitTurn(1), riders::io::Interrupted);
    signals.join();
}

TEST(PageOrder, SharesAreNoMoreThanPagesOrCores)
{
    EXPECT_EQ(film::pageShares(1, 8).size(), 1U);
    EXPECT_EQ(film::pageShares(5, 1).size(), 1U);
    EXPECT_EQ(film::pageShares(5, 3).size(), 3U);
    EXPECT_GT(film::pageShares(1, 2)[0].interpreterThreads, 0);
    EXPECT_EQ(film::pageShares(2, 2)[0].interpreterThreads, 0);
}

}  // namespace
