// Files that change, vanish or lose their permissions while a user chooses them, for
// import and for removal; and very large ones.
#include <unistd.h>

#include <cstring>
#include <optional>

#include "source/ktDeleteRiders.h"
#include "source/ktSpot.h"
#include "source/open_settings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"

namespace fs = std::filesystem;

namespace
{

const std::string kHeader = "%!KT1_Spot\r";
const std::string kRiders = "%!Zu3_Riders\r\n% the rest";

// Takes away root's privileges, with which the tests may be running.
class WithoutPrivileges
{
public:
    WithoutPrivileges()
    {
        if (geteuid() == 0)
            changed_ = seteuid(65534) == 0;
    }
    ~WithoutPrivileges()
    {
        if (changed_ && seteuid(0) != 0)
            std::abort();
    }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;

private:
    bool changed_ = false;
};

class OddFiles : public OpenSettings
{
protected:
    // Does something to the files when the line is traced.
    void when(const std::string &line, const std::function<void()> &happens)
    {
        toolbox::trace::setSink([=, kept = toolbox::trace::into(trace)](const std::string &traced) {
            kept(traced);
            if (traced == line)
                happens();
        });
    }

    bool import(const std::string &name)
    {
        user.answerOpen(folder / name);
        Boolean imported = false;
        guarded([&] { imported = DoSpotImport(); });
        user.forgetRest();
        return imported;
    }

    bool importReported(const std::string &name)
    {
        user.answerOpen(folder / name);
        dismiss();
        Boolean imported = false;
        guarded([&] { imported = DoSpotImport(); });
        EXPECT_TRUE(user.idle()) << "nothing was said";
        return imported;
    }

    void removeReported(const std::string &name)
    {
        user.answerOpen(folder / name);
        dismiss();
        guarded([] { RemoveRiders(); });
        EXPECT_TRUE(user.idle()) << "nothing was said";
    }

    bool said(int16_t messageID, int number, const std::string &context) const
    {
        return traced(params(message(messageID), "\r\rID = " + std::to_string(number), context));
    }
};

} // namespace

TEST_F(OddFiles, HundredMegabytesAreImportedByteForByte)
{
    configuration.heapBytes = 300 * 1024 * 1024;
    reopen();
    std::string body(100 * 1024 * 1024, '%');
    for (std::size_t i = 0; i < body.size(); i += 4099)
        body[i] = static_cast<char>('a' + i % 26);
    writeFile(folder / "Large", kHeader + body);
    EXPECT_TRUE(import("Large"));
    EXPECT_EQ(static_cast<std::size_t>(gSpotLength), body.size());
    EXPECT_EQ(std::memcmp(*gSpotHandle, body.data(), body.size()), 0);
    EXPECT_EQ(tracedTimes("file read \"Large\""), 2) << "the header and the body are one read each";
}

TEST_F(OddFiles, FileThatShrinksWhileBeingReadIsReported)
{
    importSpot("{ earlier }", "Earlier");
    writeFile(folder / "Melting", kHeader + std::string(5000, ' '));
    when("file read \"Melting\" 96 bytes -> 0", [this] { fs::resize_file(folder / "Melting", 200); });
    EXPECT_FALSE(importReported("Melting"));
    EXPECT_TRUE(said(16150, eofErr, " (fsread)"));
    EXPECT_EQ(std::string(*gSpotHandle, static_cast<std::size_t>(gSpotLength)), "{ earlier }");
    EXPECT_EQ(settings.spotImported, 1);
}

TEST_F(OddFiles, FileThatVanishesBeforeItIsOpenedIsReported)
{
    writeFile(folder / "Fleeting", kHeader + "{ }");
    when("dialog 16401 closed", [this] { fs::remove(folder / "Fleeting"); });
    EXPECT_FALSE(importReported("Fleeting"));
    EXPECT_TRUE(said(16149, fnfErr, " (fsopen)"));
}

TEST_F(OddFiles, FileThatBecomesAFolderIsReported)
{
    writeFile(folder / "Turning", kHeader + "{ }");
    when("dialog 16401 closed", [this] {
        fs::remove(folder / "Turning");
        fs::create_directory(folder / "Turning");
    });
    EXPECT_FALSE(importReported("Turning"));
    EXPECT_TRUE(traced(" (fsopen)"));
    EXPECT_EQ(settings.spotImported, 0);
}

TEST_F(OddFiles, FileWithoutReadPermissionIsReported)
{
    writeFile(folder / "Secret", kHeader + "{ }");
    fs::permissions(folder.path(), fs::perms::all);
    std::optional<WithoutPrivileges> unprivileged;
    when("dialog 16401 closed", [&] {
        fs::permissions(folder / "Secret", fs::perms::none);
        unprivileged.emplace();
    });
    EXPECT_FALSE(importReported("Secret"));
    unprivileged.reset();
    EXPECT_TRUE(traced("file open \"Secret\" -> -54"));
    EXPECT_TRUE(said(16150, permErr, " (fsopen)"));
}

TEST_F(OddFiles, ReadOnlyRidersFileStays)
{
    writeFile(folder / "Film", kRiders);
    fs::permissions(folder / "Film", fs::perms::owner_read);
    removeReported("Film");
    EXPECT_TRUE(said(16156, fLckdErr, " (fsdelete)"));
    EXPECT_EQ(contentsOf(folder / "Film"), kRiders);
}

TEST_F(OddFiles, RidersFileThatAnotherProgramDeletedIsReported)
{
    writeFile(folder / "Film", kRiders);
    when("dialog 16400 closed", [this] { fs::remove(folder / "Film"); });
    removeReported("Film");
    EXPECT_TRUE(said(16149, fnfErr, " (fsopen)"));
}

TEST_F(OddFiles, RidersFileThatVanishesAfterItWasReadIsReported)
{
    writeFile(folder / "Film", kRiders);
    when("file close \"Film\" -> 0", [this] { fs::remove(folder / "Film"); });
    removeReported("Film");
    EXPECT_TRUE(said(16149, fnfErr, " (fsdelete)"));
}

TEST_F(OddFiles, FileThatBecomesAnotherOneIsNotRemoved)
{
    writeFile(folder / "Film", kRiders);
    when("dialog 16400 closed", [this] { writeFile(folder / "Film", "a letter to somebody"); });
    removeReported("Film");
    EXPECT_EQ(contentsOf(folder / "Film"), "a letter to somebody");
}
