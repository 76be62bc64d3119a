// Sessions killed before each system call that changes files, from the first until there are no more.
#include <cstdio>

#include "host/keeping_fixture.h"
#include "settings/saved_settings.h"
#include "support/killed.h"

namespace fs = std::filesystem;

namespace {

using namespace keeping;

class KilledSession : public Kept {
protected:
    bool killedAt(int nth, const std::string &script)
    {
        writeFile(folder / "session.play", script);
        return killedAtChange(nth, {RIDERS_BINARY_DIR "/riders", "play", "session.play", "--preferences", "preferences"},
                              folder.path());
    }
    // As the next command reads them.
    std::string settings() const
    {
        TemporaryFolder copy;
        riders::settings::SavedSettings(folder / "preferences", "Riders Preferences").copyTo(copy.path());
        return contentsOf(copy / "._Riders Preferences");
    }
};

const std::string other = "start\ncommand 0\nchoose 4 5\npress 1\nsave work/made\n";

}  // namespace

TEST_F(KilledSession, ReplacingLeavesOldOrNewAndNoHarmForTheNext)
{
    ASSERT_EQ(play(other).err, "");
    const std::string newFile = contentsOf(work / "made"), newSettings = settings();
    ASSERT_EQ(play(make).err, "");
    const std::string oldFile = contentsOf(work / "made"), oldSettings = settings();
    ASSERT_NE(oldFile, newFile);
    int nth = 1;
    for (; killedAt(nth, other); ++nth) {
        const std::string file = contentsOf(work / "made"), kept = settings();
        EXPECT_TRUE(file == oldFile || file == newFile) << "killed at change " << nth;
        EXPECT_TRUE(kept == oldSettings || kept == newSettings) << "killed at change " << nth;
        EXPECT_EQ(play(make).err, "") << "after change " << nth;
        EXPECT_EQ(contentsOf(work / "made"), oldFile) << "after change " << nth;
        EXPECT_EQ(names(), std::vector<std::string>{"made"}) << "after change " << nth;
        EXPECT_EQ(names("preferences").size(), 2u) << "after change " << nth;
    }
    std::printf("killed at each of %d changes\n", nth - 1);
    EXPECT_GT(nth, 20);
    EXPECT_EQ(contentsOf(work / "made"), newFile);
}

TEST_F(KilledSession, MakingLeavesNothingOrAllOfIt)
{
    ASSERT_EQ(play(make).err, "");
    const std::string whole = contentsOf(work / "made");
    int nth = 1;
    for (fs::remove(work / "made"); killedAt(nth, make); ++nth) {
        if (fs::exists(work / "made")) {
            EXPECT_EQ(contentsOf(work / "made"), whole) << "killed at change " << nth;
        }
        fs::remove(work / "made");
    }
    EXPECT_EQ(contentsOf(work / "made"), whole);
    EXPECT_EQ(names(), std::vector<std::string>{"made"}) << "the last one removed what the others left";
}

TEST_F(KilledSession, DeletingLeavesTheFileOrNothing)
{
    ASSERT_EQ(play(make).err, "");
    const std::string whole = contentsOf(work / "made");
    for (int nth = 1; killedAt(nth, deleteIt); ++nth) {
        if (fs::exists(work / "made")) {
            EXPECT_EQ(contentsOf(work / "made"), whole) << "killed at change " << nth;
        }
        writeFile(work / "made", whole);
    }
    EXPECT_FALSE(fs::exists(work / "made"));
}
