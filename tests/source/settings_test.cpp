#include "support/plugin_test.h"

#include <cstring>

#include "source/ktCustomDlg.h"
#include "toolbox/memory.h"
#include "toolbox/menus.h"

namespace {

class Settings : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
        trace.clear();
    }
    std::string record() const { return {reinterpret_cast<const char *>(&settings), sizeof settings}; }
    std::string defaults()
    {
        PrefsRec kept = settings;
        settings = PrefsRec{};
        SetDefaults();
        std::string bytes = record();
        settings = kept;
        return bytes;
    }
    // Whether the check replaces the current record by the defaults.
    bool resets()
    {
        std::string before = record(), fresh = defaults();
        bool reset = DoPrefsResCheck();
        EXPECT_EQ(leftBehind().text(), toolbox::LeakReport{}.text());
        if (reset) {
            CleanupPrefsStruct();
            EXPECT_EQ(record(), fresh);
        } else {
            EXPECT_EQ(record(), before) << "a valid record is not touched";
        }
        return reset;
    }
    bool silent() const { return !traced("shown"); }
    int reports() const { return tracedTimes("dialog 16131 shown"); }
    void set(unsigned char *field, const std::string &text) { toolbox::setPascal(field, text); }
};

std::string pascalField(const std::string &text, size_t size)
{
    std::string field(size, '\0');
    field[0] = static_cast<char>(text.size());
    return field.replace(1, text.size(), text);
}

TEST_F(Settings, RecordIsTheSameInMemoryAsInTheFile)
{
    const int offsets[] = {offsetof(PrefsRec, prefsVersion), offsetof(PrefsRec, freqItem),
                           offsetof(PrefsRec, angleItem),    offsetof(PrefsRec, spotItem),
                           offsetof(PrefsRec, flatItem),     offsetof(PrefsRec, annoItem),
                           offsetof(PrefsRec, errorItem),    offsetof(PrefsRec, annoFontItem),
                           offsetof(PrefsRec, spareFlag1),   offsetof(PrefsRec, closeAfterMake),
                           offsetof(PrefsRec, savePosition), offsetof(PrefsRec, spotImported),
                           offsetof(PrefsRec, useColor),     offsetof(PrefsRec, spareFlag2),
                           offsetof(PrefsRec, customDlgPos), offsetof(PrefsRec, sparePos),
                           offsetof(PrefsRec, freqStr),      offsetof(PrefsRec, angleStr),
                           offsetof(PrefsRec, flatStr),      offsetof(PrefsRec, annoSizeStr),
                           offsetof(PrefsRec, spotName),     offsetof(PrefsRec, annoText),
                           sizeof(PrefsRec)};
    const int expected[] = {0,  32, 34, 36, 38, 40, 42, 44, 46,  47,  48, 49,
                            50, 51, 52, 56, 60, 76, 92, 108, 124, 188, 444};
    EXPECT_TRUE(std::equal(std::begin(offsets), std::end(offsets), std::begin(expected), std::end(expected)));
}

TEST_F(Settings, KnownRecordHasTheseBytes)
{
    settings = PrefsRec{};
    set(settings.prefsVersion, "v9");
    settings.freqItem = 0x0102;
    settings.angleItem = 0x0304;
    settings.spotItem = -2;
    settings.flatItem = 4;
    settings.annoItem = 5;
    settings.errorItem = 6;
    settings.annoFontItem = 13;
    settings.spareFlag1 = 1;
    settings.closeAfterMake = 2;
    settings.savePosition = 3;
    settings.spotImported = 4;
    settings.useColor = 5;
    settings.spareFlag2 = 6;
    settings.customDlgPos = {0x1122, -3};
    settings.sparePos = {50, 51};
    set(settings.freqStr, "60");
    set(settings.angleStr, "7,5");
    set(settings.flatStr, "1");
    set(settings.annoSizeStr, "12");
    set(settings.spotName, "dot");
    set(settings.annoText, "Text");
    std::string expected = pascalField("v9", 32);
    expected += std::string("\x01\x02\x03\x04\xFF\xFE\x00\x04\x00\x05\x00\x06\x00\x0D", 14);
    expected += std::string("\1\2\3\4\5\6", 6);
    expected += std::string("\x11\x22\xFF\xFD\x00\x32\x00\x33", 8);
    expected += pascalField("60", 16) + pascalField("7,5", 16) + pascalField("1", 16) + pascalField("12", 16);
    expected += pascalField("dot", 64) + pascalField("Text", 256);
    ASSERT_EQ(expected.size(), 444u);
    EXPECT_EQ(record(), expected);
}

TEST_F(Settings, DefaultsFillTheWholeRecord)
{
    std::memset(&settings, 0xEE, sizeof settings);
    settings.customDlgPos = {0, 0};
    SetDefaults();
    CleanupPrefsStruct();
    // The dialog of 392 by 252 in the middle of 0, 4, 476, 636.
    std::string expected = pascalField(text(16200, 1) + kPluginVersion, 32);
    expected += std::string("\0\5\0\6\0\1\0\1\0\1\0\1\0\5", 14) + std::string("\1\0\1\0\0\0", 6);
    expected += std::string("\0\x70\0\x7C\0\x32\0\x32", 8);
    expected += pascalField(text(16131, 2), 16) + pascalField(text(16131, 3), 16);
    expected += pascalField(text(16131, 4), 16) + pascalField(text(16131, 7), 16);
    expected += pascalField(text(16131, 6), 64) + pascalField(text(16131, 5), 256);
    EXPECT_EQ(record(), expected);
}

TEST_F(Settings, DefaultsAreValidWithEverySeparator)
{
    for (char point : {'.', ','}) {
        configuration.decimalPoint = point;
        restartPlugin();
        makeRecords();
        EXPECT_FALSE(resets()) << point;
    }
}

TEST_F(Settings, DefaultsKeepADialogPositionOnADisplay)
{
    settings.customDlgPos = {200, 100};
    SetDefaults();
    EXPECT_EQ(settings.customDlgPos.v, 200);
    EXPECT_EQ(settings.customDlgPos.h, 100);
}

TEST_F(Settings, DefaultsCutLongTextsToTheirFields)
{
    std::string list("\0\7", 2);
    for (int i = 1; i <= 7; ++i)
        list += '\xC8' + std::string(200, static_cast<char>('0' + i));
    replaceResource('STR#', 16131, list);
    SetDefaults();
    EXPECT_EQ(plain(settings.freqStr), std::string(15, '2'));
    EXPECT_EQ(plain(settings.angleStr), std::string(15, '3'));
    EXPECT_EQ(plain(settings.flatStr), std::string(15, '4'));
    EXPECT_EQ(plain(settings.annoText), std::string(200, '5'));
    EXPECT_EQ(plain(settings.spotName), std::string(63, '6'));
    EXPECT_EQ(plain(settings.annoSizeStr), std::string(15, '7'));
}

TEST_F(Settings, MissingDefaultTextIsFatal)
{
    removeResource('STR#', 16131);
    dismiss();
    guarded([] { SetDefaults(); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)")));
}

TEST_F(Settings, CleanupZeroesWhatFollowsEachText)
{
    std::memset(&settings, 0xEE, sizeof settings);
    settings.prefsVersion[0] = 5;
    settings.freqStr[0] = 3;
    settings.angleStr[0] = 0;
    settings.flatStr[0] = 15;
    settings.annoSizeStr[0] = 1;
    settings.spotName[0] = 62;
    settings.annoText[0] = 255;
    CleanupPrefsStruct();
    auto zerosAfter = [](const unsigned char *field, int capacity) {
        return static_cast<int>(std::count(field + 1, field + capacity + 1, 0));
    };
    EXPECT_EQ(zerosAfter(settings.prefsVersion, 31), 26);
    EXPECT_EQ(zerosAfter(settings.freqStr, 15), 12);
    EXPECT_EQ(zerosAfter(settings.angleStr, 15), 15);
    EXPECT_EQ(zerosAfter(settings.flatStr, 15), 0);
    EXPECT_EQ(zerosAfter(settings.annoSizeStr, 15), 14);
    EXPECT_EQ(zerosAfter(settings.spotName, 63), 1);
    EXPECT_EQ(zerosAfter(settings.annoText, 255), 0);
    EXPECT_EQ(settings.freqStr[3], 0xEE) << "the text itself stays";
    EXPECT_EQ(settings.spareFlag1, 0xEE);
}

TEST_F(Settings, OtherVersionResetsSilently)
{
    std::string own = plain(settings.prefsVersion);
    for (const std::string &other : {own + "1", own.substr(0, own.size() - 1), std::string("r") + own.substr(1),
                                     std::string()}) {
        settings.freqItem = 2;
        set(settings.prefsVersion, other);
        EXPECT_TRUE(resets()) << other;
    }
    EXPECT_TRUE(silent());
}

TEST_F(Settings, PopupItemsBelowOneAreReportedOnce)
{
    BigInt16 PrefsRec::*items[] = {&PrefsRec::freqItem, &PrefsRec::angleItem, &PrefsRec::spotItem,
                                   &PrefsRec::flatItem, &PrefsRec::annoItem,  &PrefsRec::errorItem};
    for (int16_t wrong : {0, -1, -32768})
        for (int i = 0; i < 6; ++i) {
            trace.clear();
            settings.*items[i] = wrong;
            dismiss(16131);
            EXPECT_TRUE(resets());
            EXPECT_EQ(reports(), 1);
            EXPECT_TRUE(traced(params(message(16130), "\r\rID = " + std::to_string(31 + i), " (PrefsCheck)")));
        }
}

TEST_F(Settings, PopupItemsBeyondTheMenuAreReported)
{
    struct Popup {
        BigInt16 PrefsRec::*item;
        int16_t menu;
    };
    const Popup popups[] = {{&PrefsRec::freqItem, 16136}, {&PrefsRec::angleItem, 16137},
                            {&PrefsRec::spotItem, 16138}, {&PrefsRec::flatItem, 16139},
                            {&PrefsRec::annoItem, 16140}, {&PrefsRec::errorItem, 16141}};
    for (int i = 0; i < 6; ++i) {
        MenuHandle menu = GetMenu(popups[i].menu);
        int16_t count = CountMItems(menu);
        ReleaseResource(menu);
        trace.clear();
        settings.*popups[i].item = count;
        EXPECT_FALSE(resets()) << "the last item exists";
        EXPECT_TRUE(silent());
        settings.*popups[i].item = static_cast<int16_t>(count + 1);
        dismiss(16131);
        EXPECT_TRUE(resets());
        EXPECT_TRUE(traced(params(message(16130), "\r\rID = " + std::to_string(31 + i), " (PrefsCheck)")));
    }
}

TEST_F(Settings, SecondWrongPopupIsNotReported)
{
    settings.freqItem = 0;
    settings.errorItem = 99;
    settings.angleItem = -4;
    dismiss(16131);
    EXPECT_TRUE(resets());
    EXPECT_EQ(reports(), 1);
    EXPECT_TRUE(traced("ID = 31"));
}

TEST_F(Settings, WrongPopupOfAnotherVersionIsNotReported)
{
    set(settings.prefsVersion, "older");
    settings.freqItem = 0;
    EXPECT_TRUE(resets());
    EXPECT_TRUE(silent());
}

TEST_F(Settings, MissingMenuIsFatal)
{
    removeResource('MENU', 16139);
    dismiss();
    guarded([] { DoPrefsResCheck(); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 7", " (menu resource)")));
}

TEST_F(Settings, ImportedSpotNeedsAName)
{
    settings.spotImported = 1;
    EXPECT_FALSE(resets());
    set(settings.spotName, "");
    EXPECT_TRUE(resets());
    EXPECT_TRUE(silent());
}

TEST_F(Settings, SpotNameMayBeEmptyWithoutAnImport)
{
    set(settings.spotName, "");
    EXPECT_FALSE(resets());
}

TEST_F(Settings, AnnotationTextMayNotBeEmpty)
{
    set(settings.annoText, "");
    EXPECT_TRUE(resets());
    EXPECT_TRUE(silent());
}

TEST_F(Settings, ValuesAreCheckedByTheirKind)
{
    struct Case {
        unsigned char *field;
        const char *good, *bad;
    };
    for (const Case &each : {Case{settings.freqStr, "999", "0.9"}, Case{settings.freqStr, "1", "x"},
                             Case{settings.angleStr, "360", "361"}, Case{settings.flatStr, "0.2", "0.1"},
                             Case{settings.annoSizeStr, "30", "31"}, Case{settings.annoSizeStr, "4", "3"}}) {
        set(each.field, each.good);
        EXPECT_FALSE(resets()) << each.good;
        set(each.field, each.bad);
        EXPECT_TRUE(resets()) << each.bad;
    }
    EXPECT_TRUE(silent());
}

TEST_F(Settings, AnnotationFontGoesFromOneTo13)
{
    for (int16_t good : {1, 13}) {
        settings.annoFontItem = good;
        EXPECT_FALSE(resets()) << good;
    }
    for (int16_t bad : {14, 0, -1, 32767, -32768}) {
        settings.annoFontItem = bad;
        EXPECT_TRUE(resets()) << bad;
    }
    EXPECT_TRUE(silent());
}

TEST_F(Settings, ValuesLongerThanTheirFieldsReset)
{
    for (unsigned char *field : {settings.freqStr, settings.angleStr, settings.flatStr, settings.annoSizeStr})
        for (unsigned char length : {16, 255}) {
            field[0] = length;
            EXPECT_TRUE(resets()) << int(length);
        }
    EXPECT_TRUE(silent());
}

TEST_F(Settings, PopupIsReportedBeforeAnyTextIsChecked)
{
    settings.freqStr[0] = 16;
    settings.errorItem = 99;
    dismiss(16131);
    EXPECT_TRUE(resets());
    EXPECT_EQ(reports(), 1);
    EXPECT_TRUE(traced("ID = 36"));
}

// The dialog cuts it on opening; neither settings nor import are lost.
TEST_F(Settings, SpotNameLongerThanItsFieldStays)
{
    settings.spotImported = 1;
    for (unsigned char length : {64, 255}) {
        settings.spotName[0] = length;
        EXPECT_FALSE(resets());
    }
}

// --- A remembered position ---------------------------------------------------

class DialogPosition : public Settings {
protected:
    // DLOG 16300 is 392 by 252.
    bool accepts(int v, int h)
    {
        Point position{static_cast<int16_t>(v), static_cast<int16_t>(h)};
        bool accepted = CheckDlogPos(kCustomDialogID, &position);
        if (accepted) {
            EXPECT_EQ(position.v, v);
            EXPECT_EQ(position.h, h);
        } else {
            EXPECT_EQ(position.v, (environment.screenRect.top + environment.screenRect.bottom - 252) / 2);
            EXPECT_EQ(position.h, 4 + (environment.screenRect.right - 4 - 392) / 2);
        }
        return accepted;
    }
};

TEST_F(DialogPosition, TitleStripMustTouchTheDesktop)
{
    // The strip reaches from v - 15 to v - 4 and from h + 3 to h + 389; the
    // menu bar takes the desktop's first 20 pixels.
    EXPECT_TRUE(accepts(100, 100));
    EXPECT_FALSE(accepts(24, 100));
    EXPECT_TRUE(accepts(25, 100));
    EXPECT_TRUE(accepts(494, 100));
    EXPECT_FALSE(accepts(495, 100));
    EXPECT_TRUE(accepts(100, 636));
    EXPECT_FALSE(accepts(100, 637));
    EXPECT_TRUE(accepts(100, -388));
    EXPECT_FALSE(accepts(100, -389));
}

TEST_F(DialogPosition, WildPositionsAreReplaced)
{
    for (int v : {-32768, -1000, 32767})
        for (int h : {-32768, 100, 32767})
            EXPECT_FALSE(accepts(v, h)) << v << " " << h;
}

TEST_F(DialogPosition, SecondDisplayCountsToo)
{
    EXPECT_FALSE(accepts(100, 700));
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 480, 1280}, 8}});
    restartPlugin();
    makeRecords();
    EXPECT_TRUE(accepts(100, 700));
}

TEST_F(DialogPosition, WithoutColourQuickDrawTheStripMustTouchTheScreenRect)
{
    configuration.quickDrawVersion = 0;
    restartPlugin();
    makeRecords();
    // From v - 19 to v - 8 and from h - 2 to h + 400, against 0, 4, 476, 636.
    EXPECT_FALSE(accepts(8, 100));
    EXPECT_TRUE(accepts(9, 100));
    EXPECT_TRUE(accepts(494, 100));
    EXPECT_FALSE(accepts(495, 100));
    EXPECT_TRUE(accepts(100, 637));
    EXPECT_FALSE(accepts(100, 638));
    EXPECT_TRUE(accepts(100, -395));
    EXPECT_FALSE(accepts(100, -396));
}

TEST_F(DialogPosition, MissingDialogIsFatal)
{
    removeResource('DLOG', 16300);
    dismiss();
    Point position{0, 0};
    guarded([&] { CheckDlogPos(16300, &position); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 81", " (dlog resource)")));
}

TEST_F(Settings, DialogThatIsPlacedIsReleasedAgain)
{
    HNoPurge(GetResource('DLOG', kCustomDialogID));
    toolbox::LeakReport loaded = leftBehind();
    Point position{100, 100};
    EXPECT_TRUE(CheckDlogPos(kCustomDialogID, &position));
    EXPECT_EQ(leftBehind().loadedResources, loaded.loadedResources - 1);
}

}  // namespace
