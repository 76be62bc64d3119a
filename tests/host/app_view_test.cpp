// What the window shows of a job: its page, its dots, and what is said about them.
#include <chrono>
#include <thread>

#include "host/app_fixture.h"
#include "toolbox/windows.h"

namespace fs = std::filesystem;

namespace {

using namespace app;

enum { page = 11, dots = 12, verdict = 16, facts = 17, previous = 18, next = 19, pageText = 20 };

// A flat tint in the middle of each of two pages.
const char *const tints =
    "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndComments\n"
    "%%Page: 1 1\n<</PageSize [300 300]>> setpagedevice 0.6 setgray 50 50 200 200 rectfill showpage\n"
    "%%Page: 2 2\n0.3 setgray 50 50 200 200 rectfill showpage\n%%EOF\n";

const std::string degrees = "\xA1";  // in Mac OS Roman

class AppView : public App {
protected:
    void SetUp() override
    {
        App::SetUp();
        waits = true;
        writeFile(folder / "tints.ps", tints);
        ASSERT_EQ(
            std::system((std::string(RIDERS_BINARY_DIR) + "/riders make -o " + (folder / "film.riders").string() +
                         " --frequency 60 --angle 30 --spot round > " + (folder / "said").string())
                            .c_str()),
            0);
    }
    void settle() { user.wait(30); }
    void add(const std::string &riders)
    {
        user.press(addButton);
        user.in(0);
        user.answerOpen(folder / riders);
    }
    void end()
    {
        user.press(closeButton);
        quitByMenu();
    }
};

TEST_F(AppView, PageAndDotsOfAJobAreShownWithWhatWasMeasured)
{
    user.in(window);
    settle();
    user.then([] {
        EXPECT_EQ(itemText(pageText), "Page 1 of 2");
        EXPECT_EQ(itemText(verdict), "Nobody asks for a screen; the printer's own is used.");
        EXPECT_GT(darkShare(dots), 0.2);
        EXPECT_LT(darkShare(dots), 0.6);
        EXPECT_GT(shadeOf(page), 0.2) << "a grey square";
    });
    add("film.riders");
    user.cancelFile();
    user.in(window);
    settle();
    user.then([] {
        keepPicture("view");
        EXPECT_EQ(itemText(verdict), "As asked for: 60 lpi at 30" + degrees + ".");
        EXPECT_NE(itemText(facts).find(", 40 %"), std::string::npos) << itemText(facts);
        EXPECT_NE(itemText(facts).find("The riders file asks for 60 lpi at 30" + degrees + ", Round."),
                  std::string::npos)
            << itemText(facts);
    });
    end();
    run(folder / "tints.ps");
}

TEST_F(AppView, OtherPagesResolutionsAndPlacesAreFollowed)
{
    user.in(window);
    settle();
    std::vector<std::uint32_t> first;
    user.then([&] { first = pixelsOf(dots); });
    user.key("tab");
    user.key("pagedown");
    settle();
    user.then([&] {
        EXPECT_EQ(itemText(pageText), "Page 2 of 2");
        EXPECT_NE(pixelsOf(dots), first) << "a darker tint";
        EXPECT_TRUE(isDimmed(next));
        first = pixelsOf(dots);
    });
    user.chooseFromBar("View", "300 dpi");
    settle();
    user.then([&] {
        EXPECT_NE(pixelsOf(dots), first);
        EXPECT_EQ(itemText(14), "The job as it is (300 dpi)");
    });
    user.repeat("left", 40, 0x0200);
    settle();
    user.then([] {
        EXPECT_EQ(itemText(verdict), "There is no ink here. Move the loupe to a tint.");
        EXPECT_EQ(darkShare(dots), 0);
    });
    end();
    run(folder / "tints.ps");
}

TEST_F(AppView, CauseComesFirstWhereAScreenCannotBeReached)
{
    ASSERT_EQ(
        std::system((std::string(RIDERS_BINARY_DIR) + "/riders make -o " + (folder / "fine.riders").string() +
                     " --frequency 200 --angle 45 --spot round > " + (folder / "said").string())
                        .c_str()),
        0);
    user.in(window);
    user.chooseFromBar("View", "300 dpi");
    add("fine.riders");
    user.cancelFile();
    user.in(window);
    settle();
    user.then([] {
        EXPECT_TRUE(itemText(verdict).starts_with("200 lpi cannot be reached at 300 dpi; the nearest is "))
            << itemText(verdict);
        EXPECT_TRUE(itemText(verdict).ends_with(" dpi would do.")) << itemText(verdict);
    });
    end();
    run(folder / "tints.ps");
}

TEST_F(AppView, PdfIsShownAndTriedWithARidersFileButNotSaved)
{
    ASSERT_EQ(std::system(("gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -o " +
                           (folder / "tints.pdf").string() + " " + (folder / "tints.ps").string())
                              .c_str()),
              0);
    user.in(window);
    settle();
    user.then([] { EXPECT_EQ(itemText(pageText), "Page 1 of 2"); });
    add("film.riders");
    user.in(window);
    settle();
    user.then([] {
        EXPECT_EQ(itemText(verdict), "As asked for: 60 lpi at 30" + degrees + ".");
        EXPECT_EQ(itemText(10), "film.riders, not saved");
    });
    user.press(takeOutButton);
    user.then([] { EXPECT_EQ(itemText(10), "none"); });
    end();
    run(folder / "tints.pdf");
}

TEST_F(AppView, JobThatFailsSaysWhy)
{
    writeFile(folder / "bad.ps", "%!PS\nnonsense\nshowpage\n");
    user.in(window);
    settle();
    user.then([] {
        EXPECT_NE(itemText(verdict).find("undefined in nonsense"), std::string::npos) << itemText(verdict);
    });
    end();
    run(folder / "bad.ps");
}

TEST_F(AppView, DroppedFilesAreOpened)
{
    waits = false;
    const auto drop = [this](const std::string &name) {
        user.then([this, name] {
            machine.push({.kind = toolbox::Input::Kind::fileDropped, .path = (folder / name).string()});
        });
    };
    drop("tints.ps");
    user.in(window);
    user.then([] { EXPECT_EQ(windowTitle(), "tints.ps"); });
    drop("job.ps");
    user.wait(2);
    user.then([] { EXPECT_EQ(windowTitle(), "job.ps"); });
    end();
    run();
}

TEST_F(AppView, RecentJobsAreKeptAndThoseThatAreGoneAreSaidSo)
{
    waits = false;
    end();
    run(folder / "tints.ps");
    restart();
    end();
    run(folder / "job.ps");
    restart();
    user.chooseFromBar("Recent", "tints.ps");
    user.in(window);
    user.then([] { EXPECT_EQ(windowTitle(), "tints.ps"); });
    user.then([this] { fs::remove(folder / "job.ps"); });
    user.chooseFromBar("Recent", "job.ps");
    user.in(problem);
    user.then([this] { EXPECT_TRUE(traced("params \"job.ps: is not there any more")); });
    user.press(1);
    user.in(window);
    end();
    run();
}

TEST_F(AppView, KeysReachEveryMenuAndEveryButton)
{
    waits = false;
    user.in(window);
    user.key("v", 0x0800);
    user.key("escape");
    user.then([this] { EXPECT_TRUE(traced("menu 134 gave nothing")); });
    for (int i = 0; i < 2; ++i)  // the page, and then its next page: there is none before
        user.key("tab");
    user.then([] { keepPicture("focus"); });
    user.key("space");
    user.wait(1);
    user.then([] { EXPECT_EQ(itemText(pageText), "Page 2 of 2"); });
    user.key("tab", 0x0200);  // the page before it, which there is now
    user.key("space");
    user.wait(1);
    user.then([] { EXPECT_EQ(itemText(pageText), "Page 1 of 2"); });
    user.key("f", 0x0800);
    user.key("up");
    user.key("return");
    run(folder / "tints.ps");
    EXPECT_TRUE(traced("menu 129 gave 4"));
}

TEST_F(AppView, RidersFileIsShownOnTintsAndAddedToAJob)
{
    user.in(window);
    settle();
    user.then([] {
        keepPicture("riders");
        EXPECT_EQ(windowTitle(), "film.riders");
        EXPECT_EQ(itemText(verdict), "As asked for: 60 lpi at 30" + degrees + ".");
    });
    user.press(addButton);
    user.in(0);
    user.answerOpen(folder / "tints.ps");
    user.cancelFile();  // its name is not asked for in vain
    user.in(window);
    user.then([] {
        EXPECT_EQ(windowTitle(), "tints.ps");
        EXPECT_EQ(itemText(10), "film.riders, not saved");
    });
    end();
    run(folder / "film.riders");
}

TEST_F(AppView, WhatWasMadeIsSaidAndOfferedToTheJob)
{
    waits = false;
    user.in(window);
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(4, 3);
    user.press(1);
    user.in(0);
    user.answerSave(folder / "made");
    user.in(1011);
    user.then([this] { EXPECT_TRUE(traced("params \"made was made in ")); });
    user.press(1);
    user.in(0);
    user.cancelFile();
    user.in(window);
    user.then([] { EXPECT_EQ(itemText(10), "made, not saved"); });
    end();
    run(folder / "tints.ps");
}

TEST_F(AppView, EmptyWindowOffersBothWaysToBegin)
{
    user.wait(2);
    user.then([] { keepPicture("empty"); });
    const auto strike = [this](char character) {
        user.then([this, character] {
            machine.push(
                {.kind = toolbox::Input::Kind::keyDown, .character = static_cast<std::uint8_t>(character)});
        });
    };
    strike('\r');
    user.cancelFile();
    strike('\t');
    strike('\r');
    user.in(settingsDialog);
    user.key("escape");
    user.in(0);
    quitByMenu();
    run();
    EXPECT_TRUE(traced("dialog 1001 shown"));
    EXPECT_TRUE(traced("dialog 16300 shown"));
}

TEST_F(AppView, DigitsOpenThePopupsOfTheSettings)
{
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.key("1");
    user.key("down");
    user.key("return");
    user.key("3");
    user.key("escape");
    user.key("escape");
    user.in(0);
    quitByMenu();
    run();
    EXPECT_TRUE(traced("popup 16136 opened"));
    EXPECT_TRUE(traced("popup 16138 gave nothing"));
}

TEST_F(AppView, ProofIsMadeBesideTheJob)
{
    user.in(window);
    user.chooseFromBar("View", "300 dpi");
    user.chooseFromBar("Job", "Proof...");
    user.wait(2);
    user.in(1012);
    user.then([this] { EXPECT_TRUE(traced("proof.html")); });
    user.press(1);
    user.in(window);
    end();
    run(folder / "tints.ps");
    EXPECT_TRUE(fs::exists(folder / "tints-proof" / "proof.html"));
}

TEST_F(AppView, ProofSaysWhichPageItIsAt)
{
    waits = false;
    writeFile(folder / "endless.ps", "%!PS\nshowpage\nshowpage\n{} loop\n");
    user.in(window);
    user.chooseFromBar("Job", "Proof...");
    user.in(1020);
    bool told = false;
    for (int i = 0; i < 60; ++i) {
        user.wait(60);
        user.then([&told] {
            told = told || itemText(3).starts_with("Reading page 3, ");
            if (!told)
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
        });
    }
    user.then([] { keepPicture("progress"); });
    user.press(1);
    user.in(window);
    end();
    run(folder / "endless.ps");
    EXPECT_TRUE(told);
}

TEST_F(AppView, ProofIsStopped)
{
    waits = false;
    writeFile(folder / "endless.ps", "%!PS\n{} loop\n");
    user.in(window);
    user.chooseFromBar("Job", "Proof...");
    user.in(1020);
    user.press(1);
    user.in(window);
    end();
    run(folder / "endless.ps");
    EXPECT_FALSE(fs::exists(folder / "endless-proof"));
}

}  // namespace
