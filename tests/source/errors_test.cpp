#include "support/plugin_test.h"

#include "source/errors.h"
#include "source/ktColor.h"
#include "source/ktCustomDlg.h"
#include "source/resourceNumbers.h"
#include "source/utilities.h"
#include "toolbox/dialogs.h"
#include "toolbox/system.h"

namespace {

class Errors : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
        trace.clear();
    }
    Boolean report(int16_t dialog, int16_t string, int32_t number, const char *context, bool fatal = false)
    {
        Boolean result = false;
        guarded([&] { result = TheErrorHandler(dialog, string, number, P(context), fatal); });
        return result;
    }
    void expectNothingLeft() { EXPECT_EQ(leftBehind().text(), toolbox::LeakReport{}.text()); }
    void expectFixedText()
    {
        EXPECT_TRUE(traced(params("Sorry, a Fatal Error has occured!", "\r\rID = 8 (string resource)")));
        EXPECT_TRUE(traced("process ended"));
        EXPECT_TRUE(ended);
    }
};

TEST_F(Errors, NumberStandsBetweenMessageAndContext)
{
    dismiss();
    EXPECT_TRUE(report(16129, 16134, -36, " (fsopen)"));
    EXPECT_TRUE(traced(params(message(16134), "\r\rID = -36", " (fsopen)")));
    EXPECT_EQ(machine.beeps(), 1);
    expectNothingLeft();
}

TEST_F(Errors, ContextMovesUpWithoutANumber)
{
    dismiss();
    report(16129, 16159, 0, " (somewhere)");
    EXPECT_TRUE(traced(params(message(16159), " (somewhere)")));
    EXPECT_FALSE(traced("ID ="));
}

TEST_F(Errors, DialogOpensAThirdDownTheMainDisplay)
{
    dismiss();
    report(16129, 16159, 0, "");
    EXPECT_TRUE(traced("dialog 16129 shown at 110,105 420x164"));
    EXPECT_TRUE(traced("dialog 16129 hidden"));
}

TEST_F(Errors, FatalReportEndsTheProcessOnceDismissed)
{
    dismiss();
    report(16129, 16129, 7, " (menu resource)", true);
    EXPECT_TRUE(ended);
    ASSERT_TRUE(traced("process ended"));
    EXPECT_TRUE(traced("dialog 16129 hidden"));
}

TEST_F(Errors, SecondButtonReturnsFalse)
{
    user.in(16132);
    user.press(5);
    EXPECT_FALSE(report(16132, 16146, 0, ""));
    user.press(1);
    EXPECT_TRUE(report(16132, 16146, 0, ""));
    expectNothingLeft();
}

TEST_F(Errors, ReturnAndEnterPressTheFirstButton)
{
    for (const char *key : {"return", "enter"}) {
        trace.clear();
        user.key(key);
        EXPECT_TRUE(report(16132, 16146, 0, "")) << key;
        EXPECT_EQ(tracedTimes("flash \"Import\""), 1) << key;
    }
}

TEST_F(Errors, EscapeAndCommandPeriodPressTheSecondButton)
{
    user.key("escape");
    EXPECT_FALSE(report(16132, 16146, 0, ""));
    user.key(".", cmdKey);
    EXPECT_FALSE(report(16132, 16146, 0, ""));
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
}

TEST_F(Errors, EscapeIsSwallowedWithoutASecondButton)
{
    user.in(16129);
    user.key("escape");
    user.key(".", cmdKey);
    user.key(".");
    user.key("x");
    user.key("return");
    EXPECT_TRUE(report(16129, 16159, 0, ""));
    EXPECT_EQ(tracedTimes("flash"), 1);
}

TEST_F(Errors, FilterLeavesOtherEventsAlone)
{
    DialogPtr dialog = GetNewDialog(16132, nullptr, reinterpret_cast<WindowPtr>(-1));
    EventRecord event{};
    int16_t hit = 77;
    event.message = 13;
    for (int16_t what : {nullEvent, mouseDown, mouseUp, keyUp, autoKey, updateEvt, activateEvt}) {
        event.what = what;
        EXPECT_FALSE(ErrorFilter(dialog, &event, &hit)) << what;
    }
    event.what = keyDown;
    event.message = 'a';
    EXPECT_FALSE(ErrorFilter(dialog, &event, &hit));
    EXPECT_EQ(hit, 77);
    DisposDialog(dialog);
}

TEST_F(Errors, FlashTakesEightTicks)
{
    DialogPtr dialog = GetNewDialog(16132, nullptr, reinterpret_cast<WindowPtr>(-1));
    EventRecord event{};
    int16_t hit = 0;
    event.what = keyDown;
    event.message = 13;
    uint32_t before = TickCount();
    EXPECT_TRUE(ErrorFilter(dialog, &event, &hit));
    EXPECT_EQ(hit, 1);
    EXPECT_EQ(TickCount() - before, 8u);
    DisposDialog(dialog);
}

TEST_F(Errors, MissingMessageEndsTheProcessWithTheFixedText)
{
    removeResource('STR ', 16159);
    dismiss(16128);
    report(16129, 16159, 0, "");
    expectFixedText();
    EXPECT_TRUE(traced("string 16159 missing"));
    EXPECT_TRUE(traced("alert 16128 shown at 110,105 420x164"));
}

TEST_F(Errors, MissingMessageOfAnAlertEndsTheProcessToo)
{
    removeResource('STR ', 16159);
    dismiss(16128);
    guarded([] { AlrtErrorHandler(kNoteAlert, 16159, 3, P(""), false); });
    expectFixedText();
}

TEST_F(Errors, EndsEvenWithNothingLeftToShow)
{
    removeResource('STR ', 16129);
    removeResource('ALRT', 16128);
    report(16129, 16129, 3, "");
    expectFixedText();
}

TEST_F(Errors, MissingDialogIsReportedAsAnAlertAndEnds)
{
    removeResource('DLOG', 16129);
    dismiss(16128);
    report(16129, 16159, 4, " (here)");
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16159), "\r\rID = 4", " (here)")));
}

TEST_F(Errors, EndsWithNeitherDialogNorAlert)
{
    removeResource('DLOG', 16129);
    removeResource('ALRT', 16128);
    report(16129, 16159, 4, "");
    EXPECT_TRUE(ended);
}

TEST_F(Errors, MissingAlertIsReported)
{
    removeResource('ALRT', 16128);
    dismiss();
    guarded([] { DoAlert(kStopAlert, P("a"), P(""), P(""), P("")); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 82", " (alert resource)")));
}

TEST_F(Errors, AlertReportHasTheSameTexts)
{
    for (int16_t kind : {kStopAlert, kCautionAlert, kNoteAlert}) {
        trace.clear();
        dismiss(16128);
        EXPECT_TRUE(AlrtErrorHandler(kind, 16134, -36, P(" (eof)"), false));
        EXPECT_TRUE(traced(params(message(16134), "\r\rID = -36", " (eof)")));
        EXPECT_EQ(tracedTimes("alert 16128 shown"), 1);
    }
    trace.clear();
    EXPECT_TRUE(AlrtErrorHandler(3, 16134, 0, P(" (eof)"), false));
    EXPECT_TRUE(traced(params(message(16134), " (eof)")));
    EXPECT_FALSE(traced("alert 16128 shown"));
    expectNothingLeft();
}

// What is drawn of an alert, until the user has seen it.
std::vector<std::string> drawingOf(toolbox::ScriptedUser &user, const std::function<void()> &show)
{
    std::vector<std::string> drawing;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawing));
    user.in(kAlertID);
    user.wait(2);
    user.press(1);
    show();
    toolbox::trace::setDrawingSink({});
    return drawing;
}

TEST_F(Errors, EachKindOfAlertHasItsOwnIcon)
{
    struct Kind {
        int16_t number;
        int16_t (*show)(int16_t, ModalFilterProcPtr);
    };
    for (const Kind &kind :
         {Kind{kStopAlert, StopAlert}, Kind{kCautionAlert, CautionAlert}, Kind{kNoteAlert, NoteAlert}}) {
        ParamText(P("a"), P("b"), P("c"), P("d"));
        CenterAlert(nullptr, kAlertID);
        std::vector<std::string> its = drawingOf(user, [&] { kind.show(kAlertID, nullptr); });
        EXPECT_EQ(drawingOf(user, [&] { DoAlert(kind.number, P("a"), P("b"), P("c"), P("d")); }), its)
            << kind.number;
        ParamText(P(message(16134)), P("b"), P(""), P(""));
        its = drawingOf(user, [&] { kind.show(kAlertID, nullptr); });
        EXPECT_EQ(drawingOf(user, [&] { AlrtErrorHandler(kind.number, 16134, 0, P("b"), false); }), its)
            << kind.number;
    }
}

// A machine that keeps the shape of its pointer.
struct PointerMachine : toolbox::HeadlessMachine {
    void setCursor(CursorShape wanted) override { shape = wanted; }
    CursorShape shape = CursorShape::arrow;
};

TEST_F(Errors, PointerIsAnArrowOverReportsAndAlerts)
{
    PointerMachine screen;
    toolbox::ScriptedUser somebody(screen);
    toolbox::stop();
    toolbox::start(configuration, screen);
    ASSERT_NE(HOpenResFile(*toolbox::folders::workingDirectory(folder.path()), 0, P("riders.so"), 0), -1);
    makeRecords();
    const std::function<void()> shown[] = {[&] { report(16129, 16134, -36, " (fsopen)"); },
                                           [] { DoAlert(kNoteAlert, P("a"), P(""), P(""), P("")); }};
    for (const std::function<void()> &show : shown) {
        Cursor other{};
        SetCursor(&other);
        ASSERT_NE(screen.shape, toolbox::Machine::CursorShape::arrow);
        somebody.wait(2);
        somebody.then([&] { EXPECT_EQ(screen.shape, toolbox::Machine::CursorShape::arrow); });
        somebody.press(1);
        guarded(show);
    }
    toolbox::stop();
}

TEST_F(Errors, FatalAlertEndsTheProcess)
{
    dismiss(16128);
    guarded([] { AlrtErrorHandler(kStopAlert, 16134, 1, P(""), true); });
    EXPECT_TRUE(ended);
}

TEST_F(Errors, AlertShowsFourTextsAndReturnsTheItem)
{
    dismiss(16128);
    EXPECT_EQ(DoAlert(kCautionAlert, P("a"), P("b"), P("c"), P("d")), 1);
    EXPECT_TRUE(traced(params("a", "b", "c", "d")));
    trace.clear();
    EXPECT_EQ(DoAlert(7, P("a"), P("b"), P("c"), P("d")), 2);
    EXPECT_FALSE(traced("alert"));
}

TEST_F(Errors, WriteErrorsHaveTheirMessages)
{
    const std::vector<std::pair<OSErr, int>> table = {
        {-36, 16134}, {-34, 16137}, {-43, 16149}, {-44, 16138}, {-45, 16156},
        {-46, 16138}, {-47, 16158}, {-61, 16157}, {-48, 16139}, {-50, 16139},
    };
    for (auto [error, string] : table) {
        trace.clear();
        gHaveWriteError = false;
        dismiss();
        EXPECT_TRUE(DoWriteError(error, P(" (fswrite)")));
        EXPECT_TRUE(gHaveWriteError);
        EXPECT_TRUE(traced("string " + std::to_string(string))) << error;
        EXPECT_TRUE(traced(params(message(static_cast<int16_t>(string)), "\r\rID = " + std::to_string(error),
                                  " (fswrite)")))
            << error;
        EXPECT_TRUE(traced("dialog 16129 shown"));
    }
    expectNothingLeft();
}

TEST_F(Errors, ReadErrorsHaveTheirMessagesAndAreNoWriteErrors)
{
    for (auto [error, string] : std::vector<std::pair<OSErr, int>>{{-36, 16134}, {-43, 16149}, {-45, 16150}}) {
        trace.clear();
        dismiss();
        EXPECT_TRUE(DoReadError(error, P(" (fsread)")));
        EXPECT_FALSE(gHaveWriteError);
        EXPECT_TRUE(traced(params(message(static_cast<int16_t>(string)), "\r\rID = " + std::to_string(error),
                                  " (fsread)")))
            << error;
    }
}

TEST_F(Errors, PortIsRestoredAfterwards)
{
    DialogPtr other = GetNewDialog(16133, nullptr, reinterpret_cast<WindowPtr>(-1));
    SetPort(other);
    dismiss();
    report(16129, 16159, 0, "");
    GrafPtr port;
    GetPort(&port);
    EXPECT_EQ(port, other);
    DisposDialog(other);
}

TEST_F(Errors, DialogIsPlacedOnTheDisplayOfTheSettingsDialog)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 600, 1440}, 8}});
    restartPlugin();
    makeRecords();
    gCustomDialog = GetNewDialog(16300, nullptr, reinterpret_cast<WindowPtr>(-1));
    MoveWindow(gCustomDialog, 700, 100, false);
    dismiss();
    report(16129, 16159, 0, "");
    EXPECT_TRUE(traced("dialog 16129 shown at 830,145"));
    DisposDialog(gCustomDialog);
    gCustomDialog = nullptr;
}

TEST_F(Errors, OutlineIsDrawnAroundTheFirstButton)
{
    std::vector<std::string> drawing;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawing));
    user.wait(2);
    dismiss();
    report(16129, 16159, 0, "");
    // Button 1 is 80 by 20 at 320, 128.
    EXPECT_NE(std::find(drawing.begin(), drawing.end(), "roundRect 316,124,404,152 16,16 pen 3,3"), drawing.end());
}

Handle buttonColors(DialogPtr dialog)
{
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(dialog, 1, &type, &item, &box);
    return (*reinterpret_cast<ControlHandle>(item))->colorTable;
}

TEST_F(Errors, DialogIsColouredOnlyWhenTheSettingsAskForIt)
{
    GetKTColor();
    for (bool wanted : {false, true}) {
        settings.useColor = wanted;
        user.then([&] { EXPECT_EQ(buttonColors(FrontWindow()) != nullptr, wanted); });
        dismiss();
        report(16129, 16159, 0, "");
    }
    DisposeKTColor();
}

TEST_F(Errors, ReportNeedsNoSettings)
{
    gPrefsPtr = nullptr;
    dismiss();
    EXPECT_TRUE(report(16129, 16159, 0, ""));
}

}  // namespace
