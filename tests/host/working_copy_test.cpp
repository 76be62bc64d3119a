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

}  // namespace
