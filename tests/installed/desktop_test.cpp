// What desktops and software centres are given.
#include <regex>

#include "installed/installation.h"

namespace {

namespace fs = std::filesystem;

class FileKinds : public ::testing::Test {
protected:
    FileKinds() { EXPECT_EQ(runProgram({"update-mime-database", installed() / "share/mime"}).status, 0); }

    // As a file manager sees it, under a name that says nothing.
    std::string kindOf(const std::string &bytes, const std::string &name = "unnamed") const
    {
        writeFile(installed().home() / name, bytes);
        return installed().run({"env", "XDG_CURRENT_DESKTOP=GNOME", "xdg-mime", "query", "filetype", name}).out;
    }
};

// The size in a PNG's header.
int sideOf(const std::string &png, std::size_t at)
{
    int side = 0;
    for (std::size_t byte = at; byte < at + 4; ++byte)
        side = side << 8 | static_cast<unsigned char>(png.at(byte));
    return side;
}

}  // namespace

TEST(DesktopFiles, AreValid)
{
    const CommandResult entry =
        runProgram({"desktop-file-validate", installed() / "share/applications/riders.desktop"});
    EXPECT_EQ(entry.status, 0);
    EXPECT_EQ(entry.out + entry.err, "");
    const CommandResult metainfo =
        runProgram({"appstreamcli", "validate", "--pedantic", "--strict", "--no-net", "--no-color",
                    installed() / "share/metainfo/org.riders.riders.metainfo.xml"});
    EXPECT_EQ(metainfo.status, 0);
    EXPECT_EQ(metainfo.out.find("P:"), std::string::npos) << metainfo.out;
    EXPECT_NE(metainfo.out.find("successful"), std::string::npos) << metainfo.out + metainfo.err;
}

TEST(DesktopFiles, NamePicturesThatAreThere)
{
    static const std::regex picture(R"(<image>[a-z]+://[^/]+/([^<]+)</image>)");
    const std::string text = contentsOf(installed() / "share/metainfo/org.riders.riders.metainfo.xml");
    int seen = 0;
    for (std::sregex_iterator at(text.begin(), text.end(), picture), end; at != end; ++at, ++seen)
        EXPECT_TRUE(fs::exists(fs::path(RIDERS_SOURCE_DIR) / (*at)[1].str())) << (*at)[1];
    EXPECT_GE(seen, 3);
    EXPECT_NE(text.find("version=\"" RIDERS_PROJECT_VERSION "\""), std::string::npos);
}

TEST(DesktopFiles, HaveAnIconOfEachSize)
{
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const std::string folder = std::to_string(size) + "x" + std::to_string(size);
        const std::string png = contentsOf(installed() / ("share/icons/hicolor/" + folder + "/apps/riders.png"));
        ASSERT_GT(png.size(), 24u) << folder;
        EXPECT_EQ(sideOf(png, 16), size);
        EXPECT_EQ(sideOf(png, 20), size);
    }
    for (const char *drawing : {"apps/riders.svg", "mimetypes/application-x-riders.svg"})
        EXPECT_TRUE(fs::exists(installed() / "share/icons/hicolor/scalable" / drawing)) << drawing;
}

TEST_F(FileKinds, RidersFilesAreKnownByWhatIsInThem)
{
    ASSERT_EQ(installed().riders({"make", "-o", "Film Positive", "--frequency", "45"}).status, 0);
    EXPECT_EQ(kindOf(contentsOf(installed().home() / "Film Positive")), "application/x-riders\n");
    EXPECT_EQ(kindOf("begun\n", "new.riders"), "application/x-riders\n");
    EXPECT_EQ(kindOf("%!PS-Adobe-3.0\n%%Zu3_Riders\nshowpage\n"), "application/postscript\n");
}

TEST_F(FileKinds, SpotFunctionsToo)
{
    EXPECT_EQ(kindOf(contentsOf(installed() / "share/riders/shapes/CosineDot")), "application/x-riders-spot\n");
    EXPECT_EQ(kindOf("begun\n", "new.spot"), "application/x-riders-spot\n");
}
