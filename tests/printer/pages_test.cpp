// The printer's pages: what they show, and what is done by their forms.
#include <signal.h>

#include "printer/own_service.h"
#include "printer/web/pages.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

using riders::printer::JobRecord;
using riders::printer::JobState;

TEST(PagesTest, WordsOfAJobAreText)
{
    const JobRecord record{.key = {"films", 3},
                           .state = JobState::failed,
                           .title = "<script>alert(1)</script>",
                           .user = "\"&'",
                           .message = "<b>"};
    const riders::printer::Queue queue{.name = "films"};
    const std::string list = riders::printer::jobsPage({record}),
                      page = riders::printer::jobPage(
                          {.record = record, .queue = queue, .films = {{"a <b>.tif", 2048}}, .session = "s\"s"});
    for (const std::string &text : {list, page}) {
        EXPECT_EQ(text.find("<script"), std::string::npos);
        EXPECT_NE(text.find("&lt;script&gt;"), std::string::npos);
    }
    EXPECT_EQ(page.find("<b>"), std::string::npos);
    EXPECT_NE(page.find("href=\"/films/films-3/a%20%3Cb%3E.tif\""), std::string::npos) << page;
    EXPECT_EQ(page.find("http://"), std::string::npos);
    EXPECT_EQ(page.find("https://"), std::string::npos);
}

TEST(PagesTest, AJobIsKnownByItsKey)
{
    EXPECT_EQ(riders::printer::keyFromText("a-b-17"), (riders::printer::JobKey{"a-b", 17}));
    for (const char *wrong : {"", "films", "films-", "films-x", "films-0", "films-1x", "films-99999999999"})
        EXPECT_EQ(riders::printer::keyFromText(wrong).number, 0) << wrong;
}

class PrinterPagesTest : public ::testing::Test {
protected:
    PrinterPagesTest() { writeFile(folder / "job.ps", kJob); }

    static std::string between(const std::string &text, const std::string &before, const std::string &after)
    {
        const std::size_t from = text.find(before);
        if (from == text.npos)
            return {};
        return text.substr(from + before.size(), text.find(after, from + before.size()) - from - before.size());
    }

    std::string act(const std::string &job, const std::string &action, const std::string &more = {}) const
    {
        const std::string session =
            between(service.page("/films/job?job=" + job), "name=\"session\" value=\"", "\"");
        return service.page("/films/do", "session=" + session + "&job=" + job + "&action=" + action + more);
    }

    TemporaryFolder folder;
    OwnService service{folder.path(), {"--queue", "check:dpi=300,hold"}};
};

TEST_F(PrinterPagesTest, HeldFilmsAreLookedAtFetchedAndReleased)
{
    const Answer answer = service.send(folder / "job.ps", "poster", {}, "check");
    service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "check");
    EXPECT_NE(service.page("/films").find("made, waiting for release"), std::string::npos);
    EXPECT_TRUE(filmsIn(service.films() / "check-1-poster").empty());
    const std::string page = service.page("/films/job?job=check-1");
    EXPECT_NE(page.find("poster_p01_Black.tif"), std::string::npos) << page;
    EXPECT_NE(service.page("/films/check-1/look/proof.html").find("<html"), std::string::npos);
    const std::string film = service.page("/films/check-1/poster_p01_Black.tif");
    EXPECT_EQ(film.substr(film.find("\r\n\r\n") + 4),
              contentsOf(service.films() / ".held/check-1-poster/poster_p01_Black.tif"));
    EXPECT_NE(act("check-1", "release").find("303"), std::string::npos);
    EXPECT_EQ(filmsIn(service.films() / "check-1-poster"), filmsOf(kJob, "poster", {"--dpi=300"}));
    EXPECT_NE(act("check-1", "release").find("are not held"), std::string::npos);
}

TEST_F(PrinterPagesTest, AJobIsMadeAgainAlsoWithOtherScreens)
{
    const Answer answer = service.send(folder / "job.ps", "poster", {}, "check");
    service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "check");
    act("check-1", "again");
    service.waitFor(2, IPP_JSTATE_COMPLETED, "check");
    const std::string changed = act("check-1", "change", "&frequency=40&angle=30&shape=Line&dpi=300");
    EXPECT_NE(changed.find("job=check-3"), std::string::npos) << changed;
    service.waitFor(3, IPP_JSTATE_COMPLETED, "check");
    EXPECT_EQ(filmsIn(service.films() / ".held/check-2-poster"),
              filmsIn(service.films() / ".held/check-1-poster"));
    EXPECT_EQ(filmsIn(service.films() / ".held/check-3-poster"),
              filmsOf(kJob, "poster", {"--dpi=300", "--frequency=40", "--angle=30", "--spot=Line"}));
    EXPECT_NE(act("check-1", "change", "&frequency=0").find("lines per inch"), std::string::npos);
}

TEST_F(PrinterPagesTest, AQueueIsMadeAndIsThereTheNextTime)
{
    const auto make = [&](const std::string &fields) {
        const std::string session = between(service.page("/films/queues"), "name=\"session\" value=\"", "\"");
        return service.page("/films/make-queue", "session=" + session + "&" + fields);
    };
    EXPECT_NE(make("name=fine&frequency=40&angle=30&dpi=200").find("303"), std::string::npos);
    EXPECT_NE(service.page("/films/queues").find("angle 30, dpi 200, frequency 40"), std::string::npos);
    const Answer answer = service.send(folder / "job.ps", "poster", {}, "fine");
    ASSERT_EQ(answer.status, IPP_STATUS_OK) << answer.message;
    service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "fine");
    const auto films = filmsOf(kJob, "poster", {"--dpi=200", "--frequency=40", "--angle=30"});
    EXPECT_EQ(filmsIn(service.films() / "fine-1-poster"), films);
    const std::pair<const char *, const char *> refused[] = {{"name=fine", "there is a queue fine already"},
                                                             {"name=check", "there is a queue check already"},
                                                             {"name=two+words", "queue&#39;s name"},
                                                             {"name=a:folder=/etc", "queue&#39;s name"},
                                                             {"name=b&shape=/etc/passwd", "cannot name files"},
                                                             {"name=c&dpi=high", "dots per inch"},
                                                             {"name=d&printer=x&hold=yes", "held or printed"}};
    for (const auto &[fields, why] : refused) {
        const std::string page = make(fields);
        EXPECT_NE(page.find("Not done"), std::string::npos) << fields;
        EXPECT_NE(page.find(why), std::string::npos) << fields << page;
    }
    service.end(SIGTERM);
    const OwnService next(folder.path(), {"--queue", "check:dpi=300,hold"});
    const Answer again = next.send(folder / "job.ps", "poster", {}, "fine");
    ASSERT_EQ(again.status, IPP_STATUS_OK) << again.message;
    next.waitFor(again.job, IPP_JSTATE_COMPLETED, "fine");
    EXPECT_EQ(filmsIn(next.films() / "fine-2-poster"), films);
}

TEST_F(PrinterPagesTest, FormsOfOthersAreRefused)
{
    const Answer answer = service.send(folder / "job.ps", "poster", {}, "check");
    service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "check");
    EXPECT_NE(service.page("/films/do", "session=no&job=check-1&action=release").find("not from this printer"),
              std::string::npos);
    EXPECT_NE(service.page("/films/check-1/../../etc/passwd").find("HTTP/1.1 4"), std::string::npos);
    EXPECT_NE(service.page("/films/make-queue", "session=no&name=more").find("not from this printer"),
              std::string::npos);
    EXPECT_NE(service.page("/films/job?job=check-9").find("no such job"), std::string::npos);
}

}  // namespace
}  // namespace printer_tests
