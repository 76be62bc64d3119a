// What a person sees: each script of tests/pictures is played, and every
// picture it takes is compared, pixel by pixel, with the one in
// tests/pictures/expected. A failure leaves pictures in build/test/pictures
// (build/sanitize/pictures; moving/ in it for the run with moved blocks);
// ./test --update-pictures keeps what is shown now.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>

#include "pictures/kept_pictures.h"
#include "play/play.h"
#include "support/kept_sessions.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

const fs::path scripts = fs::path(RIDERS_SOURCE_DIR) / "tests" / "pictures";

bool blocksMove()
{
    const char *moving = std::getenv("RIDERS_MOVE_BLOCKS");
    return moving && *moving == '1';
}

KeptPictures keptPictures()
{
    fs::path leavings = fs::path(RIDERS_BINARY_DIR) / "pictures";
    return {scripts / "expected", blocksMove() ? leavings / "moving" : leavings};
}

// "# screens: 640x480x8" in a script's first line; that one when it has none.
std::vector<toolbox::Display> displaysOf(const fs::path &script)
{
    std::istringstream in(contentsOf(script));
    std::string line;
    std::getline(in, line);
    const std::vector<std::string> words = kept::wordsOf(line);
    bool given = words.size() == 3 && words[0] == "#" && words[1] == "screens:";
    return riders::play::displaysFromText(given ? words[2] : "640x480x8");
}

std::vector<std::string> picturesOf(const fs::path &script)
{
    std::istringstream in(contentsOf(script));
    std::vector<std::string> names;
    for (std::string line; std::getline(in, line);)
        if (auto words = kept::wordsOf(line); words.size() > 1 && words[0] == "picture")
            names.push_back(words[1]);
    return names;
}

// For windows and windows_twice, files_windows: others show the lists of their folder.
fs::path moreFilesFor(const std::string &script)
{
    return scripts / ("files_" + script.substr(0, script.find('_')));
}

class Pictures : public ::testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(Pictures, AreWhatIsKept)
{
    TemporaryFolder work;
    const fs::path script = scripts / (GetParam() + ".play");
    fs::copy(scripts / "files", work / "there", fs::copy_options::recursive);
    if (const fs::path more = moreFilesFor(GetParam()); fs::exists(more))
        fs::copy(more, work / "there", fs::copy_options::recursive);
    riders::play::PlayRequest request;
    request.script = script;
    request.plugin = fs::path(RIDERS_BINARY_DIR) / "riders.so";
    request.picturesFolder = work / "pictures";
    request.configuration.preferencesFolder = work / "preferences";
    request.configuration.startFolder = work / "there";
    request.configuration.moveBlocks = blocksMove();
    request.displays = displaysOf(script);
    EXPECT_EQ(riders::play::play(request), "");
    const std::vector<std::string> names = picturesOf(script);
    EXPECT_FALSE(names.empty()) << "the script takes no picture";
    for (const std::string &name : names)
        EXPECT_EQ(keptPictures().difference(name, work / "pictures" / (name + ".png")), "");
}

INSTANTIATE_TEST_SUITE_P(All, Pictures, ::testing::ValuesIn(kept::scriptsIn(scripts)),
                         [](const auto &instance) { return instance.param; });

TEST(KeptPictureFiles, EachIsTakenByOneScript)
{
    std::map<std::string, std::string> takenBy;
    for (const std::string &script : kept::scriptsIn(scripts))
        for (const std::string &name : picturesOf(scripts / (script + ".play")))
            EXPECT_TRUE(takenBy.emplace(name, script).second)
                << name << " is taken by " << takenBy[name] << " and " << script;
    for (const fs::directory_entry &entry : fs::directory_iterator(scripts / "expected"))
        EXPECT_TRUE(takenBy.count(entry.path().stem())) << "no script takes " << entry.path();
}
