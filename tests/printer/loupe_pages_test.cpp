// The printer's page that zooms: its tiles are made when they are asked for.
#include "printer/own_service.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

class LoupePagesTest : public ::testing::Test {
protected:
    LoupePagesTest()
    {
        writeFile(folder / "job.ps", kJob);
        const Answer answer = service.send(folder / "job.ps", "poster", {}, "check");
        service.waitFor(answer.job, IPP_JSTATE_COMPLETED, "check");
    }

    std::string tile(const std::string &name) const
    {
        return service.page("/films/tile?job=check-1&tile=" + name);
    }
    static std::string bodyOf(const std::string &answer) { return answer.substr(answer.find("\r\n\r\n") + 4); }

    TemporaryFolder folder;
    const OwnService service{folder.path(), {"--queue", "check:dpi=600,look"}};
};

TEST_F(LoupePagesTest, TilesAreMadeWhenTheyAreAskedFor)
{
    EXPECT_NE(service.page("/films/job?job=check-1").find("look/proof.html"), std::string::npos);
    EXPECT_NE(service.page("/films/check-1/look/proof.html").find("href=\"loupe.html#page-1"), std::string::npos);
    EXPECT_NE(service.page("/films/check-1/look/loupe.html").find("\"tiles\": \"/films/tile?job=check-1&tile=\""),
              std::string::npos);
    const fs::path look = service.films() / "check-1-poster/look";
    EXPECT_FALSE(fs::exists(look / "loupe/page-1-cyan/0"));
    // The same as a page of files has them.
    EXPECT_EQ(filmsOf(kJob, "poster", {"--dpi=600", "--look", "--loupe"}),
              filmsIn(service.films() / "check-1-poster"));
    for (const char *name : {"page-1-cyan/0/0-0.png", "page-1-cyan/0/1-1.png", "page-1-black/0/2-0.png",
                             "page-1-cyan/1/0-0.png", "page-1-cyan/2/0-0.png"}) {
        const std::string answer = tile(name);
        EXPECT_NE(answer.find("image/png"), std::string::npos) << answer.substr(0, 300);
        writeFile(folder / "tile.png", bodyOf(answer));
        EXPECT_GT(toolbox::readPng(folder / "tile.png").width, 100) << name;
    }
}

TEST_F(LoupePagesTest, NothingElseIsGiven)
{
    writeFile(service.films() / "check-1-poster/look/loupe/page-1-cyan/secret.png", "precious");
    for (const char *name :
         {"../../../poster_p01_Cyan.tif", "page-1-cyan/secret.png", "page-1-cyan/0/9-9.png",
          "page-1-cyan/plate.tiff", "page-2-cyan/0/0-0.png", "page-1-cyan/0/..%2f..%2f1-1.png", ""})
        EXPECT_NE(tile(name).find(" 404 "), std::string::npos) << name;
    EXPECT_NE(service.page("/films/tile?job=check-2&tile=page-1-cyan/0/0-0.png").find(" 404 "), std::string::npos);
    EXPECT_NE(service.page("/films/tile").find(" 404 "), std::string::npos);
}

}  // namespace
}  // namespace printer_tests
