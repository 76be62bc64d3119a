#include "support/toolbox_test.h"

#include <unistd.h>

#include "memory/heap.h"
#include "toolbox/files.h"
#include "toolbox/host/appledouble.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/resource_fork.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

using toolbox::resources::ForkEntry;

class Resources : public ToolboxTest {
protected:
    // Makes a file in the start folder with these resources.
    void makeFile(const std::string &name, const std::vector<ForkEntry> &entries)
    {
        makeFork(name, *toolbox::resources::forkBytes(entries));
    }
    void makeFork(const std::string &name, const std::string &fork)
    {
        auto companion = toolbox::files::newAppleDouble();
        companion.set(toolbox::files::resourceForkEntry, fork);
        writeFile(folder / name, "");
        writeFile(folder / ("._" + name), toolbox::files::composeAppleDouble(companion));
    }
    std::string forkOf(const std::string &name)
    {
        auto companion = toolbox::files::parseAppleDouble(contentsOf(folder / ("._" + name)));
        return companion ? std::string(companion->bytes(toolbox::files::resourceForkEntry)) : std::string();
    }
    int16_t open(const std::string &name, int8_t permission = 0)
    {
        return HOpenResFile(0, 0, P(name), permission);
    }
    // A new file, open for writing.
    int16_t openNew(const std::string &name)
    {
        HCreateResFile(0, 0, P(name));
        EXPECT_EQ(ResError(), noErr);
        return open(name);
    }
    static Handle block(const std::string &bytes)
    {
        Handle handle = nullptr;
        PtrToHand(bytes.data(), &handle, static_cast<Size>(bytes.size()));
        return handle;
    }
    static std::string bytesOf(Handle handle)
    {
        return handle ? std::string(*handle, static_cast<size_t>(GetHandleSize(handle))) : "(nil)";
    }
    static void set(Handle handle, const std::string &bytes)
    {
        SetHandleSize(handle, static_cast<Size>(bytes.size()));
        BlockMove(bytes.data(), *handle, static_cast<Size>(bytes.size()));
    }
};

TEST_F(Resources, AMissingFileIsNotFound)
{
    EXPECT_EQ(open("nothing"), -1);
    EXPECT_EQ(ResError(), fnfErr);
    EXPECT_TRUE(traced("file openResFile \"nothing\" -> -43"));
}

TEST_F(Resources, AFileWithoutAForkGivesEndOfFile)
{
    writeFile(folder / "plain", "text");
    EXPECT_EQ(open("plain"), -1);
    EXPECT_EQ(ResError(), eofErr);
}

TEST_F(Resources, ADamagedForkIsRefused)
{
    makeFork("bad", "no resource fork at all");
    EXPECT_EQ(open("bad"), -1);
    EXPECT_EQ(ResError(), mapReadErr);
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

TEST_F(Resources, CreatingMakesFileAndEmptyMap)
{
    int16_t refNum = openNew("new");
    EXPECT_NE(refNum, -1);
    EXPECT_TRUE(std::filesystem::exists(folder / "new"));
    EXPECT_EQ(forkOf("new").size(), 286u);
    EXPECT_TRUE(traced("file createResFile \"new\" -> 0"));
    EXPECT_EQ(toolbox::leftBehind().openFiles, 1);
    CloseResFile(refNum);
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

TEST_F(Resources, CreatingTwiceIsRefused)
{
    HCreateResFile(0, 0, P("new"));
    HCreateResFile(0, 0, P("new"));
    EXPECT_EQ(ResError(), dupFNErr);
}

TEST_F(Resources, CreatingKeepsAnExistingDataFork)
{
    writeFile(folder / "text", "words");
    HCreateResFile(0, 0, P("text"));
    EXPECT_EQ(ResError(), noErr);
    EXPECT_EQ(contentsOf(folder / "text"), "words");
}

TEST_F(Resources, PlannedFaultsStopOpeningAndCreating)
{
    toolbox::faults::failFileCall(toolbox::FileCall::createResFile, 1, ioErr);
    HCreateResFile(0, 0, P("new"));
    EXPECT_EQ(ResError(), ioErr);
    EXPECT_FALSE(std::filesystem::exists(folder / "new"));
    makeFile("some", {});
    toolbox::faults::failFileCall(toolbox::FileCall::openResFile, 1, tmfoErr);
    EXPECT_EQ(open("some"), -1);
    EXPECT_EQ(ResError(), tmfoErr);
}

TEST_F(Resources, GettingTwiceReturnsTheSameHandle)
{
    makeFile("file", {{'TEXT', 5, 0, {}, "body"}});
    int16_t refNum = open("file");
    Handle first = GetResource('TEXT', 5);
    EXPECT_EQ(bytesOf(first), "body");
    EXPECT_EQ(GetResource('TEXT', 5), first);
    EXPECT_EQ(Get1Resource('TEXT', 5), first);
    EXPECT_EQ(toolbox::leftBehind().loadedResources, 1);
    EXPECT_EQ(toolbox::leftBehind().handles, 0);
    CloseResFile(refNum);
    EXPECT_FALSE(toolbox::heap::isLive(first));
}

TEST_F(Resources, MissingOnesAreNilAndOnlyAKnownTypeIsAnError)
{
    makeFile("file", {{'TEXT', 5, 0, {}, "body"}});
    open("file");
    EXPECT_FALSE(GetResource('TEXT', 6));
    EXPECT_EQ(ResError(), resNotFound);
    EXPECT_FALSE(GetResource('text', 5));
    EXPECT_EQ(ResError(), noErr);
    EXPECT_FALSE(Get1Resource('TEXT', 6));
    EXPECT_EQ(ResError(), resNotFound);
}

TEST_F(Resources, WithoutAnOpenFileThereIsNothing)
{
    EXPECT_FALSE(GetResource('TEXT', 1));
    EXPECT_FALSE(Get1Resource('TEXT', 1));
    EXPECT_EQ(CurResFile(), -1);
    UseResFile(7);
    EXPECT_EQ(ResError(), resFNotFound);
    CloseResFile(7);
    EXPECT_EQ(ResError(), resFNotFound);
    UpdateResFile(7);
    EXPECT_EQ(ResError(), resFNotFound);
}

TEST_F(Resources, TheFirstOfTwoWithOneNumberWins)
{
    makeFile("file", {{'TEXT', 5, 0, {}, "first"}, {'TEXT', 5, 0, {}, "second"}});
    open("file");
    EXPECT_EQ(bytesOf(GetResource('TEXT', 5)), "first");
    EXPECT_EQ(CountResources('TEXT'), 2);
    EXPECT_EQ(bytesOf(GetIndResource('TEXT', 2)), "second");
}

TEST_F(Resources, ASearchGoesFromTheCurrentFileToEarlierOnes)
{
    makeFile("one", {{'TEXT', 1, 0, {}, "one"}, {'ONLY', 1, 0, {}, "in one"}});
    makeFile("two", {{'TEXT', 1, 0, {}, "two"}});
    makeFile("three", {{'TEXT', 1, 0, {}, "three"}});
    open("one");
    int16_t two = open("two");
    int16_t three = open("three");
    EXPECT_EQ(CurResFile(), three);
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "three");
    UseResFile(two);
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "two");
    EXPECT_EQ(bytesOf(GetResource('ONLY', 1)), "in one");
    EXPECT_FALSE(Get1Resource('ONLY', 1));
    EXPECT_EQ(CountResources('TEXT'), 3);
    EXPECT_EQ(Count1Resources('TEXT'), 1);
}

TEST_F(Resources, ClosingTheCurrentFileMakesTheOneBeforeItCurrent)
{
    makeFile("one", {});
    makeFile("two", {});
    makeFile("three", {});
    int16_t one = open("one"), two = open("two"), three = open("three");
    CloseResFile(two);
    EXPECT_EQ(CurResFile(), three);
    CloseResFile(three);
    EXPECT_EQ(CurResFile(), one);
    CloseResFile(one);
    EXPECT_EQ(CurResFile(), -1);
}

TEST_F(Resources, OpeningAnOpenFileReturnsItsNumber)
{
    makeFile("one", {});
    makeFile("two", {});
    int16_t one = open("one");
    open("two");
    EXPECT_EQ(open("one"), one);
    EXPECT_EQ(CurResFile(), one);
    EXPECT_EQ(toolbox::leftBehind().openFiles, 2);
}

TEST_F(Resources, AnOpenFileIsKnownHoweverItIsNamed)
{
    makeFile("file", {});
    int16_t refNum = open("file");
    EXPECT_EQ(open("FILE"), refNum);
    EXPECT_EQ(HOpenResFile(*toolbox::folders::workingDirectory(folder.path()), 0, P("file"), 0), refNum);
    EXPECT_EQ(toolbox::leftBehind().openFiles, 1);
}

TEST_F(Resources, AFileIsNotDeletedWhileItsForkIsOpen)
{
    makeFile("file", {});
    makeFile("other", {});
    int16_t refNum = open("file", 1);
    EXPECT_EQ(FSDelete(P("file"), 0), fBsyErr);
    EXPECT_EQ(FSDelete(P("other"), 0), noErr);
    CloseResFile(refNum);
    EXPECT_EQ(FSDelete(P("file"), 0), noErr);
    EXPECT_FALSE(std::filesystem::exists(folder / "._file"));
}

TEST_F(Resources, AnOpenForkFollowsItsFileToANewName)
{
    makeFile("file", {});
    int16_t refNum = open("file");
    EXPECT_EQ(Rename(P("file"), 0, P("renamed")), noErr);
    AddResource(block("words"), 'TEXT', 1, nullptr);
    CloseResFile(refNum);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_EQ(forkOf("renamed"), toolbox::resources::forkBytes({{'TEXT', 1, 0, {}, "words"}}));
    EXPECT_FALSE(std::filesystem::exists(folder / "file"));
}

TEST_F(Resources, NamesAreFoundWhateverTheCaseButWithTheirAccents)
{
    makeFile("file", {{'TEXT', 1, 0, "Caf\x8E", "1"}, {'TEXT', 2, 0, "cafe", "2"}, {'TEXT', 3, 0, {}, "3"}});
    open("file");
    EXPECT_EQ(bytesOf(GetNamedResource('TEXT', P("CAF\x83"))), "1");
    EXPECT_EQ(bytesOf(GetNamedResource('TEXT', P("CAFE"))), "2");
    EXPECT_FALSE(GetNamedResource('TEXT', P("caf")));
    EXPECT_EQ(ResError(), resNotFound);
    EXPECT_FALSE(GetNamedResource('TEXT', P("")));
}

TEST_F(Resources, InfoAttributesAndSizeAreReturnedAndUnknownHandlesRefused)
{
    makeFile("file", {{'TEXT', -5, resPurgeable | resPreload, "name", "four"}});
    open("file");
    Handle handle = GetResource('TEXT', -5);
    int16_t id = 0;
    ResType type = 0;
    Str255 name;
    GetResInfo(handle, &id, &type, name);
    EXPECT_EQ(id, -5);
    EXPECT_EQ(type, ResType{'TEXT'});
    EXPECT_EQ(plain(name), "name");
    EXPECT_EQ(GetResAttrs(handle), resPurgeable | resPreload);
    EXPECT_EQ(SizeResource(handle), 4);
    Handle stranger = NewHandle(4);
    EXPECT_EQ(SizeResource(stranger), -1);
    EXPECT_EQ(ResError(), resNotFound);
    ReleaseResource(stranger);
    EXPECT_EQ(ResError(), resNotFound);
    DetachResource(nullptr);
    EXPECT_EQ(ResError(), resNotFound);
    EXPECT_TRUE(toolbox::heap::isLive(stranger));
    DisposeHandle(stranger);
}

TEST_F(Resources, APurgedResourceIsLoadedAgainInTheSameHandle)
{
    makeFile("file", {{'TEXT', 1, resPurgeable, {}, "again"}, {'TEXT', 2, 0, {}, "stays"}});
    open("file");
    Handle purgeable = GetResource('TEXT', 1), fixed = GetResource('TEXT', 2);
    EXPECT_EQ(toolbox::leftBehind().loadedResources, 1);
    MaxMem(nullptr);
    EXPECT_FALSE(*purgeable);
    EXPECT_EQ(SizeResource(purgeable), 5);
    EXPECT_EQ(bytesOf(fixed), "stays");
    EXPECT_EQ(GetResource('TEXT', 1), purgeable);
    EXPECT_EQ(bytesOf(purgeable), "again");
    PurgeMem(0);
    LoadResource(purgeable);
    EXPECT_EQ(bytesOf(purgeable), "again");
}

TEST_F(Resources, AChangedResourceIsNotPurged)
{
    makeFile("file", {{'TEXT', 1, resPurgeable, {}, "old"}});
    int16_t refNum = open("file");
    Handle handle = GetResource('TEXT', 1);
    set(handle, "newer");
    ChangedResource(handle);
    PurgeMem(0);
    EXPECT_EQ(bytesOf(handle), "newer");
    WriteResource(handle);
    PurgeMem(0);
    EXPECT_FALSE(*handle);
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "newer");
    CloseResFile(refNum);
}

TEST_F(Resources, AFullHeapIsReported)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "body"}});
    open("file");
    toolbox::faults::failAllocation(1);
    EXPECT_FALSE(GetResource('TEXT', 1));
    EXPECT_EQ(ResError(), memFullErr);
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "body");
}

TEST_F(Resources, LockedAndPreloadedAreObeyed)
{
    makeFile("file", {{'TEXT', 1, resLocked | resPreload, {}, "body"}});
    open("file");
    EXPECT_EQ(toolbox::leftBehind().loadedResources, 1);
    Handle handle = GetResource('TEXT', 1);
    EXPECT_EQ(static_cast<uint8_t>(HGetState(handle)), 0xA0);
}

TEST_F(Resources, ReleasingFreesAndForgetsChanges)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "old"}});
    int16_t refNum = open("file");
    Handle handle = GetResource('TEXT', 1);
    set(handle, "new");
    ChangedResource(handle);
    ReleaseResource(handle);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_FALSE(toolbox::heap::isLive(handle));
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "old");
    CloseResFile(refNum);
    open("file");
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "old");
}

TEST_F(Resources, DisposeHandleRefusesAResource)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "body"}});
    open("file");
    Handle handle = GetResource('TEXT', 1);
    DisposeHandle(handle);
    EXPECT_EQ(MemError(), memWZErr);
    EXPECT_EQ(bytesOf(handle), "body");
}

TEST_F(Resources, ADetachedBlockBelongsToTheCaller)
{
    makeFile("file", {{'TEXT', 1, resPurgeable, {}, "body"}});
    int16_t refNum = open("file");
    Handle mine = GetResource('TEXT', 1);
    DetachResource(mine);
    EXPECT_NE(GetResource('TEXT', 1), mine);
    PurgeMem(0);
    CloseResFile(refNum);
    EXPECT_EQ(bytesOf(mine), "body");
    EXPECT_EQ(toolbox::leftBehind().handles, 1);
    DisposeHandle(mine);
    EXPECT_EQ(MemError(), noErr);
}

TEST_F(Resources, AChangedResourceCannotBeDetached)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "body"}});
    open("file");
    Handle handle = GetResource('TEXT', 1);
    ChangedResource(handle);
    DetachResource(handle);
    EXPECT_EQ(ResError(), resAttrErr);
    EXPECT_EQ(GetResource('TEXT', 1), handle);
}

TEST_F(Resources, AnAddedResourceIsThereAtOnceAndInTheFileAfterClosing)
{
    int16_t refNum = openNew("file");
    Handle handle = block("settings");
    AddResource(handle, 'STUF', 128, P("prefs"));
    ASSERT_EQ(ResError(), noErr);
    EXPECT_EQ(toolbox::leftBehind().handles, 0);
    EXPECT_EQ(Get1Resource('STUF', 128), handle);
    EXPECT_EQ(SizeResource(handle), 8);
    CloseResFile(refNum);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_EQ(forkOf("file"), toolbox::resources::forkBytes({{'STUF', 128, 0, "prefs", "settings"}}));
}

TEST_F(Resources, AddChangeWriteReleaseCloseKeepsWhatWasWritten)
{
    int16_t refNum = openNew("file");
    AddResource(NewHandleClear(3), 'STUF', 128, P("prefs"));
    Handle handle = Get1Resource('STUF', 128);
    BlockMove("abc", *handle, 3);
    ChangedResource(handle);
    int writes = toolbox::faults::count(toolbox::FileCall::write);
    WriteResource(handle);
    EXPECT_EQ(ResError(), noErr);
    ReleaseResource(handle);
    CloseResFile(refNum);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_EQ(toolbox::faults::count(toolbox::FileCall::write), writes + 1) << "nothing was left to write";
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
    open("file");
    EXPECT_EQ(bytesOf(Get1Resource('STUF', 128)), "abc");
}

TEST_F(Resources, WritingOneLeavesOtherChangesForLater)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "one"}, {'TEXT', 2, 0, {}, "two"}});
    int16_t refNum = open("file");
    Handle one = GetResource('TEXT', 1), two = GetResource('TEXT', 2), added = block("three");
    set(one, "ONE");
    set(two, "TWO");
    ChangedResource(one);
    ChangedResource(two);
    AddResource(added, 'TEXT', 3, nullptr);
    WriteResource(one);
    std::vector<ForkEntry> expected = {{'TEXT', 1, 0, {}, "ONE"}, {'TEXT', 2, 0, {}, "two"}};
    EXPECT_EQ(forkOf("file"), toolbox::resources::forkBytes(expected));
    UpdateResFile(refNum);
    expected[1].data = "TWO";
    expected.push_back({'TEXT', 3, 0, {}, "three"});
    EXPECT_EQ(forkOf("file"), toolbox::resources::forkBytes(expected));
    EXPECT_EQ(GetResAttrs(added), 0);
}

TEST_F(Resources, ChangesNotMarkedAreNotWritten)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "old"}});
    std::string before = forkOf("file");
    int16_t refNum = open("file");
    Handle handle = GetResource('TEXT', 1);
    set(handle, "new");
    WriteResource(handle);
    CloseResFile(refNum);
    EXPECT_EQ(forkOf("file"), before);
}

TEST_F(Resources, AFailedWriteKeepsFileAndChange)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "old"}});
    std::string before = forkOf("file");
    int16_t refNum = open("file");
    Handle handle = GetResource('TEXT', 1);
    set(handle, "new");
    ChangedResource(handle);
    toolbox::faults::failFileCall(toolbox::FileCall::write, 1, dskFulErr);
    WriteResource(handle);
    EXPECT_EQ(ResError(), dskFulErr);
    EXPECT_EQ(forkOf("file"), before);
    EXPECT_TRUE(GetResAttrs(handle) & resChanged);
    CloseResFile(refNum);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_EQ(forkOf("file"), toolbox::resources::forkBytes({{'TEXT', 1, 0, {}, "new"}}));
}

TEST_F(Resources, AFileThatCannotBeWrittenIsStillClosed)
{
    int16_t refNum = openNew("file");
    AddResource(block("x"), 'TEXT', 1, nullptr);
    toolbox::faults::failFileCall(toolbox::FileCall::write, 1, dskFulErr, true);
    CloseResFile(refNum);
    EXPECT_EQ(ResError(), dskFulErr);
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

TEST_F(Resources, AFileOpenedForReadingIsNotWritten)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "old"}});
    std::string before = forkOf("file");
    int16_t refNum = open("file", 1);
    Handle handle = GetResource('TEXT', 1);
    set(handle, "new");
    ChangedResource(handle);
    WriteResource(handle);
    EXPECT_EQ(ResError(), wrPermErr);
    CloseResFile(refNum);
    EXPECT_EQ(ResError(), wrPermErr);
    EXPECT_EQ(forkOf("file"), before);
}

TEST_F(Resources, WhatCannotBeAddedIsRefused)
{
    Handle handle = block("x");
    AddResource(handle, 'TEXT', 1, nullptr);
    EXPECT_EQ(ResError(), resFNotFound);
    openNew("file");
    AddResource(nullptr, 'TEXT', 1, nullptr);
    EXPECT_EQ(ResError(), addResFailed);
    AddResource(handle, 'TEXT', 1, nullptr);
    EXPECT_EQ(ResError(), noErr);
    AddResource(handle, 'TEXT', 2, nullptr);
    EXPECT_EQ(ResError(), addResFailed);
    EXPECT_EQ(CountResources('TEXT'), 1);
}

TEST_F(Resources, ARemovedResourceIsAnOrdinaryBlockAndGoneFromTheFile)
{
    makeFile("file", {{'TEXT', 1, 0, {}, "one"}, {'TEXT', 2, 0, {}, "two"}});
    int16_t refNum = open("file");
    Handle handle = GetResource('TEXT', 1);
    RmveResource(handle);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_FALSE(GetResource('TEXT', 1));
    DisposeHandle(handle);
    EXPECT_EQ(MemError(), noErr);
    CloseResFile(refNum);
    EXPECT_EQ(forkOf("file"), toolbox::resources::forkBytes({{'TEXT', 2, 0, {}, "two"}}));
}

TEST_F(Resources, ProtectedResourcesAreNeitherChangedNorRemoved)
{
    makeFile("file", {{'TEXT', 1, resProtected, {}, "one"}});
    open("file");
    Handle handle = GetResource('TEXT', 1);
    ChangedResource(handle);
    EXPECT_EQ(ResError(), resAttrErr);
    RmveResource(handle);
    EXPECT_EQ(ResError(), rmvResFailed);
    SetResAttrs(handle, 0);
    ChangedResource(handle);
    EXPECT_EQ(ResError(), noErr);
    EXPECT_EQ(GetResAttrs(handle), resChanged);
}

TEST_F(Resources, GetStringTracesAndReturnsNilWhenMissing)
{
    makeFile("file", {{'STR ', 1, 0, {}, "\x02Hi"}, {'STR ', 2, 0, {}, "\x09Hi"}, {'STR ', 3, 0, {}, ""}});
    open("file");
    StringHandle text = GetString(1);
    ASSERT_TRUE(text);
    EXPECT_EQ(plain(*text), "Hi");
    EXPECT_TRUE(traced("string 1"));
    EXPECT_FALSE(GetString(4));
    EXPECT_TRUE(traced("string 4 missing"));
    EXPECT_FALSE(GetString(2)) << "longer than its resource";
    EXPECT_FALSE(GetString(3)) << "without a length byte";
}

TEST_F(Resources, GetIndStringGivesTheEmptyStringForWhatIsNotThere)
{
    makeFile("file", {{'STR#', 1, 0, {}, std::string_view("\0\x03\x01" "a\x02" "bc\x09" "d", 9)},
                      {'STR#', 2, 0, {}, std::string_view("\0", 1)}});
    open("file");
    auto text = [](int16_t id, int16_t index) {
        Str255 string = "?";
        GetIndString(string, id, index);
        return plain(string);
    };
    EXPECT_EQ(text(1, 1), "a");
    EXPECT_EQ(text(1, 2), "bc");
    EXPECT_EQ(text(1, 3), "") << "runs past the list";
    for (int16_t index : {-1, 0, 4})
        EXPECT_EQ(text(1, index), "");
    EXPECT_EQ(text(2, 1), "");
    EXPECT_EQ(text(3, 1), "");
}

TEST_F(Resources, StoppingWritesAndFreesWhatIsOpen)
{
    openNew("file");
    AddResource(block("kept"), 'TEXT', 1, nullptr);
    restart();
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
    open("file");
    EXPECT_EQ(bytesOf(GetResource('TEXT', 1)), "kept");
}
