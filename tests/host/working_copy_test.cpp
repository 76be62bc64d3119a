// The copy of the saved settings that the plug-in works on, where it cannot be made.
#include "settings/working_copy.h"

#include "io/refusal.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

using riders::settings::SavedSettings;
using riders::settings::WorkingCopy;

TEST(WorkingCopy, ThatCannotBeEmptiedIsRefusedInWordsAndNotKept)
{
    TemporaryFolder folder;
    writeFile(folder / "saved", "mine");
    WorkingCopy copy({folder.path(), "saved"});
    copy.prepare();
    // A file where the copy's own folder was: nothing can be done in it.
    const fs::path own = copy.folder().parent_path(), away = own.string() + "-away";
    fs::rename(own, away);
    writeFile(own, "");
    try {
        copy.prepare();
        ADD_FAILURE() << "not refused";
    } catch (const riders::io::Refusal &refusal) {
        EXPECT_EQ(refusal.message, copy.folder().string() + ": Not a directory");
    }
    fs::remove(own);
    fs::rename(away, own);
    writeFile(copy.folder() / "saved", "changed");
    copy.keep();
    EXPECT_EQ(contentsOf(folder / "saved"), "mine");
}

TEST(WorkingCopy, ThatIsForgottenIsMadeAnew)
{
    TemporaryFolder folder;
    writeFile(folder / "saved", "mine");
    WorkingCopy copy({folder.path(), "saved"});
    copy.prepare();
    writeFile(copy.folder() / "saved", "changed");
    copy.forget();
    copy.prepare();
    EXPECT_EQ(contentsOf(copy.folder() / "saved"), "mine");
    copy.keep();
    EXPECT_EQ(contentsOf(folder / "saved"), "mine");
}

// What could not be saved stays for the next call, unless it is forgotten.
TEST(WorkingCopy, ThatCouldNotBeSavedStaysUntilItIsForgotten)
{
    TemporaryFolder folder;
    const fs::path place = folder / "place", away = folder / "away";
    fs::create_directory(place);
    writeFile(place / "saved", "mine");
    WorkingCopy copy({place, "saved"});
    copy.prepare();
    writeFile(copy.folder() / "saved", "changed");
    fs::rename(place, away);
    writeFile(place, "");
    EXPECT_THROW(copy.keep(), riders::io::Refusal);
    fs::remove(place);
    fs::rename(away, place);
    copy.prepare();
    EXPECT_EQ(contentsOf(copy.folder() / "saved"), "changed");
    copy.forget();
    copy.prepare();
    EXPECT_EQ(contentsOf(copy.folder() / "saved"), "mine");
    EXPECT_EQ(contentsOf(place / "saved"), "mine");
}

}  // namespace
