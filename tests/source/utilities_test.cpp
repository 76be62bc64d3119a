#include "support/plugin_test.h"

#include "toolbox/bigendian.h"
#include "toolbox/events.h"
#include "toolbox/memory.h"
#include "source/utilities.h"

// The Toolbox always has a main device, so the linker sends the question for it
// here (--wrap in tests/CMakeLists.txt), where the next few may go unanswered.
static int questionsWithoutADevice = 0;
extern "C" GDHandle mainDeviceThereIs() __asm__("__real_GetMainDevice");
extern "C" GDHandle mainDeviceIfWanted() __asm__("__wrap_GetMainDevice");

GDHandle mainDeviceIfWanted()
{
    return questionsWithoutADevice-- > 0 ? nullptr : mainDeviceThereIs();
}

namespace {

class Utilities : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
        trace.clear();
    }
    void displays(std::vector<toolbox::Display> all)
    {
        machine.setDisplays(std::move(all));
        restartPlugin();
        makeRecords();
    }
    // Replaces the plug-in's version resource.
    void version(const std::string &number, const std::string &shortText = "x", const std::string &longText = "y")
    {
        auto pascal = [](const std::string &s) { return static_cast<char>(s.size()) + s; };
        replaceResource('vers', 1, number + std::string(2, '\0') + pascal(shortText) + pascal(longText));
    }
    std::string versionText()
    {
        Str31 result;
        GetAppVersionStr(result);
        return plain(result);
    }
    static DialogPtr dialog(int16_t id) { return GetNewDialog(id, nullptr, reinterpret_cast<WindowPtr>(-1)); }
    static std::vector<int> positionOf(WindowPtr window)
    {
        Point where{-1, -1};
        GetWindowPosition(window, &where);
        return {where.h, where.v};
    }
    std::string prefix() const { return text(16200, 1); }
};

TEST_F(Utilities, VersionTextOfABetaHasStageAndRelease)
{
    version({0x01, 0x20, 0x60, 0x03});
    EXPECT_EQ(versionText(), prefix() + "1.2b3");
}

TEST_F(Utilities, VersionTextOfAFinalReleaseEndsWithTheFix)
{
    version({0x01, 0x21, static_cast<char>(0x80), 0x00});
    EXPECT_EQ(versionText(), prefix() + "1.2.1");
}

TEST_F(Utilities, VersionTextKnowsEveryStage)
{
    const std::string letters[16] = {"", "", "d7", "d7", "a7", "a7", "b7", "b7"};
    for (int stage = 0; stage < 16; ++stage) {
        version({0x12, 0x30, static_cast<char>(stage << 4), 0x07});
        EXPECT_EQ(versionText(), prefix() + "12.3" + letters[stage]) << stage;
    }
    version({0x12, 0x30, 0x20, 0x45});
    EXPECT_EQ(versionText(), prefix() + "12.3d45") << "the release is two decimal digits";
}

TEST_F(Utilities, VersionTextIsCutTo31Characters)
{
    std::string list = std::string("\0\1", 2) + '\x1E' + std::string(30, 'p');
    replaceResource('STR#', 16200, list);
    version({0x01, 0x20, 0x60, 0x03});
    EXPECT_EQ(versionText(), std::string(30, 'p') + "1");
}

TEST_F(Utilities, LongVersionIsTheSecondText)
{
    version({1, 0, 0, 0}, "short", "the long one");
    Str255 result{};
    GetAppVersionLongStr(result);
    EXPECT_EQ(plain(result), "the long one");
    unsigned char number[4];
    GetAppVers(number);
    EXPECT_EQ(number[0], 1);
}

TEST_F(Utilities, LongVersionOfACutResourceStaysWithinIt)
{
    Str255 result;
    replaceResource('vers', 1, std::string("\1\0\0\0\0\0\2ab\x20xyz", 13));
    GetAppVersionLongStr(result);
    EXPECT_EQ(plain(result), "xyz");
    replaceResource('vers', 1, std::string("\1\0\0\0\0\0\x7Fxyz", 10));
    GetAppVersionLongStr(result);
    EXPECT_EQ(plain(result), "");
}

TEST_F(Utilities, MissingVersionIsFatal)
{
    removeResource('vers', 1);
    dismiss();
    guarded([this] { versionText(); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 3", " (vers resource)")));
}

TEST_F(Utilities, MissingVersionPrefixIsFatal)
{
    removeResource('STR#', 16200);
    dismiss();
    guarded([this] { versionText(); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 90", " (STR# resource)")));
}

// The line that OutlineDefault draws for a first button of the height.
std::string outlineOf(DialogPtr window, int16_t height)
{
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(window, 1, &type, &item, &box);
    SetRect(&box, 100, 50, 180, static_cast<int16_t>(50 + height));
    SetDItem(window, 1, type, item, &box);
    std::vector<std::string> drawing;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawing));
    OutlineDefault(window, 2);
    toolbox::trace::setDrawingSink({});
    return drawing.size() == 1 ? drawing[0] : std::to_string(drawing.size()) + " lines";
}

TEST_F(Utilities, OutlineCornersAreHalfTheButtonsHeightAndAtLeast16)
{
    DialogPtr window = dialog(16129);
    SetPort(window);
    ShowWindow(window);
    EXPECT_EQ(outlineOf(window, 20), "roundRect 96,46,184,74 16,16 pen 3,3");
    EXPECT_EQ(outlineOf(window, 40), "roundRect 96,46,184,94 20,20 pen 3,3");
    EXPECT_EQ(outlineOf(window, 33), "roundRect 96,46,184,87 16,16 pen 3,3");
    EXPECT_EQ(window->pnSize.h, 1);
    EXPECT_EQ(window->pnSize.v, 1);
    DisposDialog(window);
}

TEST_F(Utilities, TemporaryNamesAreCutTo63Characters)
{
    unsigned char name[64];
    toolbox::setPascal(name, "KTTemp1", 63);
    qd.randSeed = 1;
    int16_t number = Random();
    qd.randSeed = 1;
    GetUniqueTempName(name);
    EXPECT_EQ(plain(name), "KTTemp1" + std::to_string(number));
    toolbox::setPascal(name, std::string(62, 'n'), 63);
    GetUniqueTempName(name);
    EXPECT_EQ(name[0], 63);
}

TEST_F(Utilities, TemporaryNamesHaveNegativeNumbersToo)
{
    int32_t seed = 0;
    int16_t number = 0;
    while (number >= 0) {
        qd.randSeed = ++seed;
        number = Random();
    }
    qd.randSeed = seed;
    unsigned char name[64];
    toolbox::setPascal(name, "KTTemp1", 63);
    GetUniqueTempName(name);
    EXPECT_EQ(plain(name), "KTTemp1-" + std::to_string(-number));
}

TEST_F(Utilities, CharacterIsFoundFromTheStartOn)
{
    Handle text = NewHandle(6);
    BlockMove("ab\rcd\r", *text, 6);
    EXPECT_EQ(FindCharOffset('\r', text, 0), 2);
    EXPECT_EQ(FindCharOffset('\r', text, 2), 2) << "the start position counts";
    EXPECT_EQ(FindCharOffset('\r', text, 3), 5);
    EXPECT_EQ(FindCharOffset('x', text, 0), -1);
    EXPECT_EQ(FindCharOffset('\r', text, 6), -1);
    DisposeHandle(text);
}

TEST_F(Utilities, CharacterBeyondTheLargestOffsetIsNotFound)
{
    Handle text = NewHandleClear(40000);
    (*text)[32767] = '\r';
    EXPECT_EQ(FindCharOffset('\r', text, 0), 32767);
    (*text)[32767] = 0;
    (*text)[32768] = '\r';
    EXPECT_EQ(FindCharOffset('\r', text, 0), -1);
    DisposeHandle(text);
}

// --- Placement ---------------------------------------------------------------

TEST_F(Utilities, WindowIsCentredAcrossAndAThirdOrHalfDown)
{
    DialogPtr window = dialog(16129);   // 420 by 164
    CenterWindow(nullptr, window, kCenterThird);
    EXPECT_EQ(positionOf(window), (std::vector<int>{110, 105}));
    CenterWindow(nullptr, window, kCenterMiddle);
    EXPECT_EQ(positionOf(window), (std::vector<int>{110, 158}));
    CenterWindow(nullptr, window, 5);
    EXPECT_EQ(positionOf(window), (std::vector<int>{110, 158})) << "any other mode is the middle";
    DisposDialog(window);
}

TEST_F(Utilities, MovingAWindowDoesNotBringItToTheFront)
{
    DialogPtr back = dialog(16129);
    DialogPtr front = dialog(16131);
    ShowWindow(back);
    ShowWindow(front);
    SelectWindow(front);
    CenterWindow(nullptr, back, kCenterThird);
    EXPECT_EQ(FrontWindow(), front);
    DisposDialog(front);
    DisposDialog(back);
}

TEST_F(Utilities, WindowAcrossTwoDisplaysBelongsToTheOneWithMoreOfIt)
{
    displays({{{0, 0, 480, 640}, 8}, {{0, 640, 600, 1440}, 8}});
    DialogPtr reference = dialog(16300);   // 392 wide
    Rect display;
    MoveWindow(reference, 440, 100, false);   // 200 on the left, 192 on the right
    GetCurDevRect(reference, &display);
    EXPECT_EQ(display.left, 0);
    MoveWindow(reference, 450, 100, false);
    GetCurDevRect(reference, &display);
    EXPECT_EQ(display.left, 640);
    MoveWindow(reference, 444, 100, false);   // 196 on each
    GetCurDevRect(reference, &display);
    EXPECT_EQ(display.left, 0) << "the first wins a tie";
    MoveWindow(reference, 3000, 100, false);
    GetCurDevRect(reference, &display);
    EXPECT_EQ(display.left, 0) << "on no display: the main one";
    MoveWindow(reference, 700, 100, false);
    DialogPtr window = dialog(16129);
    CenterWindow(reference, window, kCenterThird);
    EXPECT_EQ(positionOf(window), (std::vector<int>{640 + (800 - 420) / 2, (600 - 164) / 3}));
    DisposDialog(window);
    DisposDialog(reference);
}

TEST_F(Utilities, TitleBarCountsAsPartOfTheWindow)
{
    // Content 10 pixels high on the lower display, 18 of title on the upper.
    displays({{{0, 0, 480, 640}, 8}, {{480, 0, 960, 640}, 8}});
    Rect bounds{480, 100, 490, 300};
    WindowPtr window = NewWindow(nullptr, &bounds, P("t"), true, documentProc, reinterpret_cast<WindowPtr>(-1),
                                 false, 0);
    Rect display;
    GetCurDevRect(window, &display);
    EXPECT_EQ(display.top, 0);
    DisposeWindow(window);
}

TEST_F(Utilities, NoWindowIsOnTheMainDisplay)
{
    displays({{{0, 0, 480, 640}, 8}, {{0, -800, 600, 0}, 8}});
    Rect display;
    GetCurDevRect(nullptr, &display);
    EXPECT_EQ(display.right, 640);
}

TEST_F(Utilities, NoScreenAtAllIsFatal)
{
    Rect screen;
    dismiss();
    questionsWithoutADevice = 1;
    EXPECT_FALSE(guarded([&] { GetCurDevRect(nullptr, &screen); }));
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 83", " (no monitor)")));
}

TEST_F(Utilities, NoScreenForTheReportEitherIsReportedOnce)
{
    Rect screen;
    dismiss();
    questionsWithoutADevice = 1000;
    EXPECT_FALSE(guarded([&] { GetCurDevRect(nullptr, &screen); }));
    questionsWithoutADevice = 0;
    UtilsInit();
    EXPECT_EQ(tracedTimes(" (no monitor)"), 1);
}

TEST_F(Utilities, DepthOfNoScreenIs1)
{
    questionsWithoutADevice = 1;
    EXPECT_EQ(GetCurPixDepth(), 1);
    EXPECT_EQ(environment.pixDepth, 1);
    EXPECT_EQ(GetCurPixDepth(), 8);
}

TEST_F(Utilities, WithoutColourQuickDrawThereIsOneDisplay)
{
    configuration.quickDrawVersion = 0;
    displays({{{0, 0, 480, 640}, 8}, {{0, 640, 600, 1440}, 8}});
    DialogPtr reference = dialog(16300);
    MoveWindow(reference, 700, 100, false);
    Rect display;
    GetCurDevRect(reference, &display);
    EXPECT_TRUE(EqualRect(&display, &environment.screenRect));
    DisposDialog(reference);
}

TEST_F(Utilities, AlertOpensWhereItsResourceSays)
{
    CenterAlert(nullptr, 16128);
    Handle alert = GetResource('ALRT', 16128);
    const BigRect *bounds = reinterpret_cast<const BigRect *>(*alert);
    EXPECT_EQ(bounds->top, 105);
    EXPECT_EQ(bounds->left, 110);
    EXPECT_EQ(bounds->bottom, 105 + 164);
    EXPECT_EQ(bounds->right, 110 + 420);
}

TEST_F(Utilities, FileDialogsAreCentredAcrossAndAThirdDown)
{
    Point get, put;
    CenterSFGet(nullptr, &get, 348, 221);
    CenterSFPut(nullptr, &put, 348, 221);
    EXPECT_EQ(get.h, 146);
    EXPECT_EQ(get.v, 86);
    EXPECT_EQ(put.h, get.h);
    EXPECT_EQ(put.v, get.v);
}

TEST_F(Utilities, InnerWindowIsCentredOverTheOuter)
{
    DialogPtr outer = dialog(16300), inner = dialog(16301);   // 392 by 252, 332 by 116
    MoveWindow(outer, 50, 60, false);
    CenterWindowInWindow(outer, inner);
    EXPECT_EQ(positionOf(inner), (std::vector<int>{50 + 30, 60 + 68}));
    CenterWindowInWindow(nullptr, inner);
    EXPECT_EQ(positionOf(inner), (std::vector<int>{80, 128})) << "stays without an outer one";
    DisposDialog(inner);
    DisposDialog(outer);
}

TEST_F(Utilities, WindowsOfEveryKindHaveAType)
{
    EXPECT_EQ(GetWindowType(nullptr), 0);
    DialogPtr window = dialog(16129);
    SetWRefCon(window, 0x12345);
    EXPECT_EQ(GetWindowType(window), 0x2345);
    SetWRefCon(window, 0xFFFF);
    EXPECT_EQ(GetWindowType(window), -1);
    reinterpret_cast<WindowPeek>(window)->windowKind = userKind;
    EXPECT_EQ(GetWindowType(window), 8);
    reinterpret_cast<WindowPeek>(window)->windowKind = -3;
    EXPECT_EQ(GetWindowType(window), -1);
    reinterpret_cast<WindowPeek>(window)->windowKind = 9;
    EXPECT_EQ(GetWindowType(window), 0);
    reinterpret_cast<WindowPeek>(window)->windowKind = dialogKind;
    DisposDialog(window);
}

TEST_F(Utilities, OpenWindowsAreFoundInTheList)
{
    DialogPtr back = dialog(16129), front = dialog(16131);
    ShowWindow(back);
    ShowWindow(front);
    EXPECT_TRUE(IsWindowOpen(back));
    EXPECT_TRUE(IsWindowOpen(front));
    EXPECT_FALSE(IsWindowOpen(nullptr));
    DisposDialog(back);
    EXPECT_FALSE(IsWindowOpen(back));
    DisposDialog(front);
}

TEST_F(Utilities, NoWindowHasNoPosition)
{
    Point where{12, 34};
    GetWindowPosition(nullptr, &where);
    EXPECT_EQ(where.v, 12);
    EXPECT_EQ(where.h, 34);
}

// --- Keys --------------------------------------------------------------------

EventRecord keyEvent(int character, uint16_t modifiers = 0)
{
    EventRecord event{};
    event.what = keyDown;
    event.message = static_cast<uintptr_t>(character);
    event.modifiers = modifiers;
    return event;
}

TEST_F(Utilities, KeysPressTheTwoButtons)
{
    DialogPtr window = dialog(16301);
    struct Case {
        EventRecord event;
        bool handled;
        int hit;
    };
    for (const Case &each : std::vector<Case>{{keyEvent(13), true, 1},
                                              {keyEvent(3), true, 1},
                                              {keyEvent(27), true, 2},
                                              {keyEvent('.', cmdKey), true, 2},
                                              {keyEvent('.'), false, 9},
                                              {keyEvent('5'), false, 9}}) {
        int16_t hit = 9;
        EventRecord event = each.event;
        EXPECT_EQ(GenericFilter(window, &event, &hit), each.handled) << each.event.message;
        EXPECT_EQ(hit, each.hit) << each.event.message;
    }
    EXPECT_EQ(tracedTimes("flash \"OK\""), 2);
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
    DisposDialog(window);
}

TEST_F(Utilities, EscapeIsSwallowedWhereItem2IsNoButton)
{
    DialogPtr window = dialog(16129);
    EventRecord event = keyEvent(27);
    int16_t hit = 9;
    EXPECT_TRUE(GenericFilter(window, &event, &hit));
    EXPECT_EQ(hit, 0);
    EXPECT_FALSE(traced("flash"));
    DisposDialog(window);
}

TEST_F(Utilities, ReturnIsPressedButFlashesNothingWhereItem1IsNoButton)
{
    DialogPtr window = dialog(16200);
    EventRecord event = keyEvent(13);
    int16_t hit = 9;
    const uint32_t before = TickCount();
    EXPECT_TRUE(GenericFilter(window, &event, &hit));
    EXPECT_EQ(hit, 1);
    EXPECT_EQ(TickCount(), before) << "a flash takes time";
    DisposDialog(window);
}

// --- Menus -------------------------------------------------------------------

MenuHandle dotsMenu()
{
    MenuHandle menu = NewMenu(500, P("Dots"));
    AppendMenu(menu, P("Round;Ellipse;Line"));
    SetItem(menu, 2, P("Ellipse  "));
    return menu;
}

int16_t markOf(MenuHandle menu, int16_t item)
{
    int16_t mark;
    GetItemMark(menu, item, &mark);
    return mark;
}

TEST_F(Utilities, MenuItemIsFoundWithoutItsTrailingBlanks)
{
    MenuHandle menu = dotsMenu();
    int16_t item = 0;
    EXPECT_TRUE(FindMenuItemNumber(menu, P("Ellipse"), &item));
    EXPECT_EQ(item, 2);
    EXPECT_EQ(markOf(menu, 2), 0) << "finding marks nothing";
    EXPECT_FALSE(FindMenuItemNumber(menu, P("Ellipse  "), &item)) << "the name is compared as it stands";
    EXPECT_EQ(item, 0);
    DisposeMenu(menu);
}

TEST_F(Utilities, LookingForAnItemRemovesTheMarkOfTheCurrentOne)
{
    MenuHandle menu = dotsMenu();
    CheckItem(menu, 3, true);
    int16_t item = 3;
    EXPECT_FALSE(FindMenuItemNumber(menu, P("Square"), &item));
    EXPECT_EQ(item, 0);
    EXPECT_EQ(markOf(menu, 3), 0);
    DisposeMenu(menu);
}

TEST_F(Utilities, FontMenuIsFilledOnceAndTheFontMarked)
{
    MenuHandle menu = NewMenu(501, P("Font"));
    AddResMenu(menu, 'FONT');
    int16_t fonts = CountMItems(menu);
    ASSERT_GT(fonts, 0);
    Str255 last;
    GetItem(menu, fonts, last);
    DisposeMenu(menu);

    menu = NewMenu(501, P("Font"));
    int16_t item = 0;
    SetupFontMenuItems(menu, last, &item);
    EXPECT_EQ(CountMItems(menu), fonts);
    EXPECT_EQ(item, fonts);
    EXPECT_NE(markOf(menu, fonts), 0);
    SetupFontMenuItems(menu, P("No such font"), &item);
    EXPECT_EQ(CountMItems(menu), fonts) << "not filled again";
    EXPECT_EQ(item, 0);
    EXPECT_EQ(markOf(menu, fonts), 0);
    DisposeMenu(menu);
}

TEST_F(Utilities, HeapCanBeCrushed)
{
    Handle resource = GetResource('STR ', 16129);
    ASSERT_NE(resource, nullptr);
    CrushTheHeap();
    EXPECT_EQ(*resource, nullptr) << "what can be purged is";
    EXPECT_FALSE(message(16129).empty()) << "and loads again";
}

}  // namespace
