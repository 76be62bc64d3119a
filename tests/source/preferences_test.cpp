#include "support/plugin_test.h"

#include <algorithm>
#include <cstring>

#include "source/ktSpot.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"

namespace fs = std::filesystem;
using toolbox::FileCall;

namespace {

// --- The file as other programs read it: bytes in the documented formats -----

uint32_t number(const std::string &bytes, size_t at, size_t size)
{
    uint32_t value = 0;
    for (size_t i = 0; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return value;
}

// An entry of an AppleDouble file: 2 the resource fork, 9 the Finder's.
std::string entry(const std::string &file, uint32_t id)
{
    EXPECT_EQ(number(file, 0, 4), 0x00051607u);
    EXPECT_EQ(number(file, 4, 4), 0x00020000u);
    for (uint32_t i = 0; i < number(file, 24, 2); ++i)
        if (number(file, 26 + 12 * i, 4) == id)
            return file.substr(number(file, 30 + 12 * i, 4), number(file, 34 + 12 * i, 4));
    return {};
}

struct StoredResource {
    std::string type, name, bytes;
    int id;
};

std::vector<StoredResource> resourcesIn(const std::string &fork)
{
    std::vector<StoredResource> all;
    size_t data = number(fork, 0, 4), map = number(fork, 4, 4);
    size_t types = map + number(fork, map + 24, 2), names = map + number(fork, map + 26, 2);
    for (size_t t = 0; t < number(fork, types, 2) + 1; ++t) {
        size_t type = types + 2 + 8 * t;
        for (size_t r = 0; r < number(fork, type + 4, 2) + 1; ++r) {
            size_t reference = types + number(fork, type + 6, 2) + 12 * r;
            size_t start = data + number(fork, reference + 5, 3);
            StoredResource one;
            one.type = fork.substr(type, 4);
            one.id = static_cast<int>(number(fork, reference, 2));
            one.bytes = fork.substr(start + 4, number(fork, start, 4));
            size_t name = number(fork, reference + 2, 2);
            if (name != 0xFFFF)
                one.name = fork.substr(names + name + 1, number(fork, names + name, 1));
            all.push_back(one);
        }
    }
    return all;
}

class Preferences : public PluginTest {
protected:
    static constexpr int nothing = 2;   // a command number that runs nothing

    fs::path companion() const { return preferencesFile().parent_path() / ("._" + preferencesFile().filename().string()); }
    std::string storedRecord() const
    {
        auto all = resourcesIn(entry(contentsOf(companion()), 2));
        EXPECT_EQ(all.size(), 1u);
        return all.empty() ? std::string() : all[0].bytes;
    }
    PrefsRec stored() const
    {
        PrefsRec record{};
        std::string bytes = storedRecord();
        EXPECT_EQ(bytes.size(), sizeof record);
        std::memcpy(&record, bytes.data(), std::min(bytes.size(), sizeof record));
        return record;
    }
    // Creates a file with these bytes as its record and its spot text.
    void store(const std::string &record, const std::string &spotText = "", ResType type = 'STUF', int16_t id = 128)
    {
        fs::create_directories(configuration.preferencesFolder);
        fs::remove(preferencesFile());
        fs::remove(companion());
        auto where = toolbox::folders::workingDirectory(configuration.preferencesFolder);
        P name(text(16131, 1));
        ASSERT_EQ(HCreate(*where, 0, name, 'RIDR', 'pref'), noErr);
        writeFile(preferencesFile(), spotText);
        HCreateResFile(*where, 0, name);
        int16_t current = CurResFile();
        int16_t refNum = HOpenResFile(*where, 0, name, 0);
        ASSERT_NE(refNum, -1);
        Handle data = NewHandle(static_cast<Size>(record.size()));
        BlockMove(record.data(), *data, static_cast<Size>(record.size()));
        AddResource(data, type, id, P("prefs"));
        ASSERT_EQ(ResError(), noErr);
        CloseResFile(refNum);
        UseResFile(current);
    }
    void store(const PrefsRec &record, const std::string &spotText = "")
    {
        store(std::string(reinterpret_cast<const char *>(&record), sizeof record), spotText);
    }
    // The defaults as the plug-in writes them.
    PrefsRec defaults()
    {
        makeRecords();
        CleanupPrefsStruct();
        return settings;
    }
    PrefsRec imported(const std::string &name = "dots.spot")
    {
        PrefsRec record = defaults();
        record.spotImported = 1;
        record.spotItem = 9;
        toolbox::setPascal(record.spotName, name);
        std::memset(record.spotName + 1 + name.size(), 0, 63 - name.size());
        return record;
    }
    void expectReport(int string, int id, const std::string &context)
    {
        EXPECT_EQ(tracedTimes("dialog 16131 shown"), 1);
        EXPECT_TRUE(traced(params(message(static_cast<int16_t>(string)), "\r\rID = " + std::to_string(id), context)));
    }
    bool silent() const { return !traced(" shown"); }
    static std::string bytes(const PrefsRec &record)
    {
        return {reinterpret_cast<const char *>(&record), sizeof record};
    }
};

TEST_F(Preferences, FirstRunWritesTheDefaultsSilently)
{
    ASSERT_FALSE(fs::exists(preferencesFile()));
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(contentsOf(preferencesFile()), "");
    std::string file = contentsOf(companion());
    EXPECT_EQ(entry(file, 9).substr(0, 8), "prefRIDR");
    auto resources = resourcesIn(entry(file, 2));
    ASSERT_EQ(resources.size(), 1u);
    EXPECT_EQ(resources[0].type, "STUF");
    EXPECT_EQ(resources[0].id, 128);
    EXPECT_EQ(resources[0].name, "prefs");
    EXPECT_EQ(resources[0].bytes, bytes(defaults()));
}

TEST_F(Preferences, FolderIsMadeWhereThereIsNone)
{
    configuration.preferencesFolder = folder / "new";
    restartPlugin();
    call(kSelectCommand, nothing);
    EXPECT_TRUE(fs::exists(preferencesFile()));
}

TEST_F(Preferences, RecordComesBackByteForByte)
{
    PrefsRec record = defaults();
    record.freqItem = 7;
    record.errorItem = 2;
    record.closeAfterMake = 1;
    record.spareFlag2 = 0x5A;
    record.sparePos = {-7, 9};
    record.customDlgPos = {-5000, 12345};
    toolbox::setPascal(record.annoText, std::string(255, '\xA9'));
    store(record);
    call(kSelectCommand, nothing);
    EXPECT_EQ(storedRecord(), bytes(record));
    EXPECT_TRUE(silent());
}

TEST_F(Preferences, StaleCharactersAreNotStored)
{
    PrefsRec record = defaults();
    PrefsRec stale = record;
    std::memset(stale.freqStr + 1 + stale.freqStr[0], 'z', 15u - stale.freqStr[0]);
    store(stale);
    call(kSelectCommand, nothing);
    EXPECT_EQ(storedRecord(), bytes(record));
}

TEST_F(Preferences, LongerRecordIsReadAsFarAsItIsKnown)
{
    PrefsRec record = defaults();
    record.freqItem = 3;
    store(bytes(record) + std::string(100, 'x'));
    call(kSelectCommand, nothing);
    EXPECT_EQ(storedRecord(), bytes(record));
}

TEST_F(Preferences, CutRecordGivesDefaults)
{
    for (size_t size : {0u, 1u, 33u, 443u}) {
        PrefsRec record = defaults();
        record.freqItem = 3;
        toolbox::setPascal(record.annoText, std::string(255, 'a'));
        store(bytes(record).substr(0, size));
        trace.clear();
        if (size == 33)
            dismiss(16131);
        call(kSelectCommand, nothing);
        if (size < 443) {
            EXPECT_EQ(storedRecord(), bytes(defaults())) << size;
        }
        EXPECT_EQ(storedRecord().size(), 444u) << size;
    }
}

TEST_F(Preferences, MissingRecordIsReportedOnce)
{
    store(bytes(imported()), "spot text", 'STUF', 129);
    dismiss(16131);
    call(kSelectCommand, nothing);
    expectReport(16130, 50, " (GetPrefs)");
    EXPECT_EQ(storedRecord(), bytes(defaults()));
    EXPECT_EQ(contentsOf(preferencesFile()), "");
}

TEST_F(Preferences, RecordIsReadFromThePreferencesFileOnly)
{
    store("other", "", 'ABCD', 128);
    // The plug-in's own fork has one of that type and number.
    addResource('STUF', 128, std::string(444, '\0'));
    dismiss(16131);
    call(kSelectCommand, nothing);
    expectReport(16130, 50, " (GetPrefs)");
}

TEST_F(Preferences, FileWithoutAForkGivesDefaultsSilently)
{
    fs::create_directories(configuration.preferencesFolder);
    writeFile(preferencesFile(), "left over from a crash");
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(storedRecord(), bytes(defaults()));
    EXPECT_EQ(contentsOf(preferencesFile()), "");
}

TEST_F(Preferences, DamagedForkGivesDefaultsSilently)
{
    store(defaults());
    std::string file = contentsOf(companion());
    for (size_t cut : {file.size() / 4, file.size() / 2, file.size() - 1}) {
        store(defaults());
        writeFile(companion(), file.substr(0, cut));
        call(kSelectCommand, nothing);
        EXPECT_TRUE(silent());
        EXPECT_EQ(storedRecord(), bytes(defaults()));
    }
}

TEST_F(Preferences, RecordOfAnotherVersionGivesDefaultsSilently)
{
    PrefsRec record = imported();
    toolbox::setPascal(record.prefsVersion, "Riders 0.9");
    store(record, "spot");
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(storedRecord(), bytes(defaults()));
    EXPECT_EQ(contentsOf(preferencesFile()), "") << "its spot function goes too";
}

TEST_F(Preferences, NameMustBeInTheResources)
{
    removeResource('STR#', 16131);
    dismiss();
    call(kSelectCommand, nothing);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)")));
}

// --- The imported spot function ----------------------------------------------

TEST_F(Preferences, SpotTextComesBackByteForByte)
{
    std::string spot;
    for (int i = 0; i < 3000; ++i)
        spot += static_cast<char>(i * 7);
    store(imported(), spot);
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(contentsOf(preferencesFile()), spot);
    EXPECT_EQ(storedRecord(), bytes(imported()));
    EXPECT_EQ(gSpotHandle, nullptr);
}

TEST_F(Preferences, VolumeIsFlushedOnceTheSpotTextIsWritten)
{
    store(imported(), "{ add }");
    trace.clear();
    call(kSelectCommand, nothing);
    auto find = [&](const std::string &part) {
        return std::find_if(trace.begin(), trace.end(),
                            [&](const std::string &line) { return line.starts_with(part); });
    };
    EXPECT_EQ(tracedTimes("file flushVol \"\" -> 0"), 1);
    EXPECT_LT(find("file setEOF"), find("file flushVol"));
}

TEST_F(Preferences, SpotTextIsLoadedWithItsLength)
{
    store(imported(), "{ add }");
    makeRecords();
    GetPrefs();
    ASSERT_NE(gSpotHandle, nullptr);
    EXPECT_EQ(gSpotLength, 7);
    EXPECT_EQ(std::string(*gSpotHandle, 7), "{ add }");
    EXPECT_EQ(settings.spotImported, 1);
    DisposeHandle(gSpotHandle);
}

TEST_F(Preferences, EmptySpotTextClearsTheFlagAndKeepsTheItem)
{
    store(imported(), "");
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(stored().spotImported, 0);
    EXPECT_EQ(stored().spotItem, 9);
}

TEST_F(Preferences, SpotTextWithoutTheFlagIsDropped)
{
    store(defaults(), "not in use");
    call(kSelectCommand, nothing);
    EXPECT_EQ(contentsOf(preferencesFile()), "");
}

struct LoadFault {
    FileCall call;
    int string, id;
    const char *context;
};

TEST_F(Preferences, FailuresToLoadTheSpotTextAreReportedAndKeepTheItem)
{
    for (const LoadFault &fault : {LoadFault{FileCall::open, 16153, 101, " (fsopen)"},
                                   LoadFault{FileCall::getEOF, 16153, 100, " (eof)"},
                                   LoadFault{FileCall::read, 16153, 97, " (fsread)"}}) {
        store(imported(), "{ add }");
        trace.clear();
        toolbox::faults::clear();
        toolbox::faults::failFileCall(fault.call, 1, ioErr);
        dismiss(16131);
        call(kSelectCommand, nothing);
        EXPECT_TRUE(toolbox::faults::met()) << fault.context;
        expectReport(fault.string, fault.id, fault.context);
        EXPECT_EQ(stored().spotImported, 0);
        EXPECT_EQ(stored().spotItem, 9) << fault.context;
        EXPECT_EQ(contentsOf(preferencesFile()), "");
    }
}

TEST_F(Preferences, SpotTextThatLeavesNoReserveIsNotLoaded)
{
    makeRecords();
    std::string spot(static_cast<size_t>(MaxMem(nullptr)) - 10240, 's');
    store(imported(), spot);
    dismiss(16131);
    call(kSelectCommand, nothing);
    expectReport(16154, 99, " (maxmem)");
    EXPECT_EQ(stored().spotImported, 0);
    EXPECT_EQ(stored().spotItem, 1);
}

TEST_F(Preferences, NoRoomForTheSpotTextIsReported)
{
    store(imported(), "{ add }");
    // Allocations are made to fail in turn until it is the one for the text.
    bool seen = false;
    for (int nth = 1; nth < 400 && !seen; ++nth) {
        restartPlugin();
        store(imported(), "{ add }");
        makeRecords();
        gSpotHandle = nullptr;
        toolbox::faults::failAllocation(nth);
        user.forgetRest();
        dismiss(16131);
        user.onSurprise([](int) { return false; });
        try {
            GetPrefs();
        } catch (const toolbox::ProcessEnded &) {
        } catch (const toolbox::ScriptError &) {
        }
        seen = traced(" (newhandle)");
        if (!toolbox::faults::met())
            break;
    }
    ASSERT_TRUE(seen);
    expectReport(16154, 98, " (newhandle)");
    EXPECT_EQ(settings.spotImported, 0);
    EXPECT_EQ(settings.spotItem, 1);
    user.forgetRest();
}

TEST_F(Preferences, FailureToWriteTheSpotTextClearsTheFlagSilently)
{
    store(imported(), "{ add }");
    toolbox::faults::failFileCall(FileCall::write, 1, dskFulErr);
    trace.clear();
    call(kSelectCommand, nothing);
    EXPECT_TRUE(toolbox::faults::met());
    EXPECT_EQ(tracedTimes("file setEOF"), 1) << "what was written goes again";
    EXPECT_FALSE(traced("file flushVol"));
    EXPECT_TRUE(silent());
    EXPECT_EQ(stored().spotImported, 0);
    EXPECT_EQ(stored().spotItem, 9);
    EXPECT_EQ(contentsOf(preferencesFile()), "");
}

TEST_F(Preferences, FailureToOpenForTheSpotTextKeepsTheFlag)
{
    store(imported(), "{ add }");
    toolbox::faults::failFileCall(FileCall::open, 2, ioErr);
    call(kSelectCommand, nothing);
    EXPECT_TRUE(toolbox::faults::met());
    EXPECT_TRUE(silent());
    EXPECT_EQ(stored().spotImported, 1);
    EXPECT_EQ(contentsOf(preferencesFile()), "");
    // The next call finds the text gone.
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(stored().spotImported, 0);
}

TEST_F(Preferences, FileThatCannotBeCreatedIsNotReported)
{
    store(imported(), "{ add }");
    toolbox::faults::failFileCall(FileCall::create, 1, wPrErr);
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_FALSE(fs::exists(preferencesFile())) << "the old file is deleted first";
}

TEST_F(Preferences, UnreachableFolderIsNotReportedAndNothingChanges)
{
    store(imported(), "{ add }");
    toolbox::faults::failFileCall(FileCall::findFolder, 1, dirNFErr, true);
    call(kSelectCommand, nothing);
    EXPECT_TRUE(silent());
    EXPECT_EQ(contentsOf(preferencesFile()), "{ add }");
}

TEST_F(Preferences, ForkThatCannotBeOpenedLeavesNoRecord)
{
    store(imported(), "{ add }");
    toolbox::faults::failFileCall(FileCall::openResFile, 2, ioErr);
    call(kSelectCommand, nothing);
    EXPECT_TRUE(toolbox::faults::met());
    EXPECT_TRUE(silent());
    EXPECT_EQ(contentsOf(preferencesFile()), "{ add }") << "the spot text was written before";
    // A fork without the record: the next call reports it and starts with defaults.
    dismiss(16131);
    call(kSelectCommand, nothing);
    expectReport(16130, 50, " (GetPrefs)");
    EXPECT_EQ(storedRecord(), bytes(defaults()));
}

TEST_F(Preferences, FileIsAlwaysBuiltAnew)
{
    store(defaults(), "");
    auto where = toolbox::folders::workingDirectory(configuration.preferencesFolder);
    P name(text(16131, 1));
    int16_t current = CurResFile();
    int16_t refNum = HOpenResFile(*where, 0, name, 0);
    Handle data = NewHandleClear(5);
    AddResource(data, 'JUNK', 1, P("junk"));
    CloseResFile(refNum);
    UseResFile(current);
    call(kSelectCommand, nothing);
    auto resources = resourcesIn(entry(contentsOf(companion()), 2));
    ASSERT_EQ(resources.size(), 1u);
    EXPECT_EQ(resources[0].type, "STUF");
}

// Every file call of a load and a save fails once, with several errors: nothing stays
// allocated (call() checks), the process goes on, and the next call works.
TEST_F(Preferences, AnyFileCallMayFail)
{
    for (OSErr error : {OSErr(dskFulErr), OSErr(ioErr), OSErr(fnfErr)}) {
        for (int nth = 1;; ++nth) {
            store(imported(), "{ add }");
            toolbox::faults::clear();
            toolbox::faults::failAnyFileCall(nth, error);
            user.forgetRest();
            user.onSurprise({});
            user.press(1);   // on the report, if there is one
            call(kSelectCommand, nothing);
            bool met = toolbox::faults::met();
            toolbox::faults::clear();
            ASSERT_FALSE(ended) << "call " << nth << ", error " << error;
            if (!met)
                break;
            ASSERT_LT(nth, 100);
            user.forgetRest();
            user.press(1);
            call(kSelectCommand, nothing);
            user.forgetRest();
            EXPECT_EQ(storedRecord().size(), 444u);
        }
    }
}

}  // namespace
