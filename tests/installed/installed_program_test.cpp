// The program works where it is installed, and needs nothing of the build tree.
#include <regex>
#include <set>

#include "installed/installation.h"

namespace {

namespace fs = std::filesystem;

// One page with a tint.
const std::string kJob = "%!PS-Adobe-3.0\n%%EndComments\n0.5 setgray 0 0 144 144 rectfill showpage\n";

std::string libraryFolder()
{
    for (const std::string &file : installed().files())
        if (file.ends_with("/riders.so"))
            return file.substr(0, file.rfind('/'));
    return "none";
}

}  // namespace

TEST(InstalledProgram, HasWhatBelongsToItBesideItAndALinkInThePath)
{
    for (const char *name : {"riders", "riders.so", "riders_desktop.so", "._riders", "._riders.so"})
        EXPECT_TRUE(fs::exists(installed() / libraryFolder() / name)) << name;
    const fs::path link = installed() / "bin/riders";
    ASSERT_TRUE(fs::is_symlink(link));
    EXPECT_TRUE(fs::read_symlink(link).is_relative()) << "so that the whole prefix can be moved";
    EXPECT_EQ(fs::canonical(link), fs::canonical(installed() / libraryFolder() / "riders"));
}

TEST(InstalledProgram, SaysItsVersion)
{
    const CommandResult result = installed().riders({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "riders " RIDERS_PROJECT_VERSION "\n");
}

TEST(InstalledProgram, FindsShapesAndSetsUnderItsPrefix)
{
    const CommandResult shapes = installed().riders({"shapes"});
    EXPECT_EQ(shapes.status, 0) << shapes.err;
    EXPECT_NE(shapes.out.find("CosineDot"), std::string::npos) << shapes.out;
    const CommandResult set = installed().riders({"screens", "offset"});
    EXPECT_EQ(set.status, 0) << set.err;
    EXPECT_NE(set.out.find((installed() / "share/riders/screens/offset.toml").string()), std::string::npos)
        << set.out;
}

TEST(InstalledProgram, MakesARidersFileAndAProof)
{
    const fs::path &home = installed().home();
    writeFile(home / "job.ps", kJob);
    const CommandResult made = installed().riders(
        {"make", "-o", "film.riders", "--screens", "offset", "--spot", "cosinedot", "--annotation", "Proof"});
    EXPECT_EQ(made.status, 0) << made.err;
    const CommandResult proof =
        installed().riders({"proof", "job.ps", "--riders", "film.riders", "--dpi", "100", "-o", "proof"});
    EXPECT_EQ(proof.status, 0) << proof.err;
    EXPECT_TRUE(fs::exists(home / "proof/proof.html"));
}

// What an installed program is to open, it must be able to load.
TEST(InstalledProgram, LoadsItsWindow)
{
    const CommandResult result =
        installed().run({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER=none", "riders"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.find("riders_desktop.so"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("none"), std::string::npos) << "SDL's own words: " << result.err;
}

TEST(InstalledProgram, HasTheDocumentsThatItsReadmeNames)
{
    static const std::regex link(R"(\]\((docs/[^)# ]+))");
    const fs::path folder = installed() / "share/doc/riders";
    const std::string text = contentsOf(folder / "README.md");
    int seen = 0;
    const std::set<std::string> forThoseWhoHaveTheSources = {"docs/ARCHITECTURE.md", "docs/another-host.md",
                                                             "docs/resource-sources.md"};
    for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at, ++seen) {
        const bool expected = !forThoseWhoHaveTheSources.contains((*at)[1]);
        EXPECT_EQ(fs::exists(folder / (*at)[1].str()), expected) << (*at)[1];
    }
    EXPECT_GT(seen, 15);
}

TEST(InstalledProgram, GoesBelowDestdir)
{
    TemporaryFolder stage;
    const CommandResult result = runProgram({"env", "DESTDIR=" + stage.path().string(), RIDERS_CMAKE, "--install",
                                             RIDERS_BINARY_DIR, "--prefix", "/usr"});
    ASSERT_EQ(result.status, 0) << result.err;
    const CommandResult version = runProgram({(stage / "usr/bin/riders").string(), "--version"});
    EXPECT_EQ(version.status, 0) << version.err;
}
