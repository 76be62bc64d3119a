// The printer's pages in a real browser, by keyboard alone, at the size of a telephone.
#include "printed/chromium.h"
#include "printer/own_service.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

class BrowserTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!Chromium::isInstalled())
            GTEST_SKIP() << "chromium is not installed";
        writeFile(folder / "job.ps", kJob);
        writeFile(folder / "slow.ps", "%!PS\n{} loop\n");
        fs::create_directory(folder / "browser");
        service = std::make_unique<OwnService>(
            folder.path(), std::vector<std::string>{"--queue", "check:dpi=150,hold", "--sandbox", "never"});
        browser = std::make_unique<Chromium>(folder / "browser", at("/films"), 360, 740);
    }

    std::string at(const std::string &path) const
    {
        return "http://localhost:" + std::to_string(service->port()) + path;
    }
    // What a page must be, whatever it shows.
    void expectFits() const
    {
        EXPECT_EQ(browser->valueOf("document.documentElement.scrollWidth <= innerWidth"), "true");
        EXPECT_EQ(browser->valueOf("performance.getEntriesByType('resource').filter("
                                   "e => !e.name.startsWith(location.origin)).length"),
                  "0");
        EXPECT_EQ(
            browser->valueOf("[...document.querySelectorAll('button, input:not([type=hidden]), nav a')].filter("
                             "e => e.getBoundingClientRect().height < 40).length"),
            "0")
            << "too small for fingers";
    }
    void expectFocusIsSeen() const
    {
        EXPECT_NE(browser->valueOf("getComputedStyle(document.activeElement).outlineStyle"), "none");
    }
    // Reaches it by Tab and presses it.
    void use(const std::string &words) const
    {
        browser->tabTo(words);
        expectFocusIsSeen();
        browser->press("Enter");
    }
    void waitForWords(const std::string &words) const
    {
        browser->await("document.body?.innerText.includes('" + words + "')");
    }

    TemporaryFolder folder;
    std::unique_ptr<OwnService> service;
    std::unique_ptr<Chromium> browser;
};

TEST_F(BrowserTest, AHeldJobIsLookedAtReleasedAndMadeAgainWithOtherScreens)
{
    const Answer answer = service->send(folder / "job.ps", "poster", {}, "check");
    service->waitFor(answer.job, IPP_JSTATE_COMPLETED, "check");
    browser->open(at("/films"));
    expectFits();
    use("poster");
    waitForWords("made, waiting for release");
    expectFits();
    EXPECT_EQ(browser->valueOf("document.querySelectorAll('a[download]').length"), "2");
    use("Look at the dots");
    browser->await("location.pathname.endsWith('proof.html') && document.readyState == 'complete'");
    EXPECT_EQ(browser->valueOf("[...document.images].filter(i => i.loading != 'lazy' && !i.naturalWidth).length"),
              "0");
    browser->open(at("/films/job?job=check-1"));
    use("Release");
    browser->await(
        "document.readyState == 'complete' && !document.body?.innerText.includes('waiting for release')");
    EXPECT_EQ(filmsIn(service->films() / "check-1-poster"), filmsOf(kJob, "poster", {"--dpi=150"}));
    browser->tabTo("frequency");
    browser->type("40");
    browser->tabTo("angle");
    browser->type("30");
    browser->press("Enter");
    browser->await("location.search == '?job=check-2'");
    service->waitFor(2, IPP_JSTATE_COMPLETED, "check");
    waitForWords("made, waiting for release");  // the page has noticed by itself
    EXPECT_EQ(filmsIn(service->films() / ".held/check-2-poster"),
              filmsOf(kJob, "poster", {"--dpi=150", "--frequency=40", "--angle=30"}));
}

TEST_F(BrowserTest, AJobInWorkIsCanceledAndOneThatEndedPrintedAgain)
{
    const Answer slow = service->send(folder / "slow.ps", "slow", {}, "check");
    service->waitFor(slow.job, IPP_JSTATE_PROCESSING, "check");
    browser->open(at("/films/job?job=check-1"));
    browser->tabTo("Cancel");
    // The page asks how the job is, twice at least: what has the focus keeps it.
    browser->await("performance.getEntriesByType('resource').filter(e => e.initiatorType == 'fetch').length > 1");
    EXPECT_EQ(browser->valueOf("document.activeElement.textContent"), "Cancel");
    browser->press("Enter");
    waitForWords("canceled");
    expectFits();
    const Answer quick = service->send(folder / "job.ps", "poster", {}, "check");
    service->waitFor(quick.job, IPP_JSTATE_COMPLETED, "check");
    browser->open(at("/films/job?job=check-2"));
    use("Print again");
    browser->await("location.search == '?job=check-3'");
    service->waitFor(3, IPP_JSTATE_COMPLETED, "check");
    EXPECT_EQ(filmsIn(service->films() / ".held/check-3-poster"),
              filmsIn(service->films() / ".held/check-2-poster"));
}

}  // namespace
}  // namespace printer_tests
