// The scripted user: what it does, and what it reports when it cannot.
#include "support/dialog_resources.h"
#include "support/toolbox_test.h"

#include "quickdraw/port.h"
#include "toolbox/dialogs.h"
#include "toolbox/host/user.h"
#include "toolbox/keys.h"
#include "toolbox/menus.h"
#include "toolbox/scrap.h"

namespace {

using toolbox::ScriptError;

constexpr int16_t id = 500, menuID = 700;
enum { okItem = 1, cancelItem = 2, popupItem = 3, nameItem = 4, boxItem = 5, hiddenItem = 6, dimItem = 7, farItem = 8 };

MenuHandle menu = nullptr;
std::vector<int32_t> popupResults;

// The filter of a dialog whose popup it opens.
Boolean popupFilter(DialogPtr dialog, EventRecord *event, int16_t *hit)
{
    if (event->what == keyDown && (event->message & charCodeMask) == toolbox::key::carriageReturn) {
        *hit = okItem;
        return true;
    }
    if (event->what != mouseDown)
        return false;
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(dialog, popupItem, &type, &item, &box);
    Point where = event->where, corner{box.top, box.left};
    GlobalToLocal(&where);
    LocalToGlobal(&corner);
    if (!PtInRect(where, &box))
        return false;
    popupResults.push_back(PopUpMenuSelect(menu, corner.v, corner.h, 1));
    *hit = popupItem;
    return true;
}

std::string typedWithShift;

Boolean noteShift(DialogPtr dialog, EventRecord *event, int16_t *hit)
{
    if (event->what == keyDown && event->modifiers & shiftKey)
        typedWithShift += static_cast<char>(event->message & charCodeMask);
    return popupFilter(dialog, event, hit);
}

std::vector<Point> draggedThrough;

Boolean noteDrag(DialogPtr dialog, EventRecord *event, int16_t *hit)
{
    if (event->what == mouseDown && draggedThrough.empty())
        while (StillDown()) {
            Point where;
            GetMouse(&where);
            LocalToGlobal(&where);
            if (draggedThrough.empty() || draggedThrough.back().v != where.v || draggedThrough.back().h != where.h)
                draggedThrough.push_back(where);
        }
    return popupFilter(dialog, event, hit);
}

class User : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        prepare();
    }
    void prepare()
    {
        popupResults.clear();
        openNewResourceFile(folder.path());
        ItemList()
            .item(ctrlItem + btnCtrl, 200, 100, 70, 20, "OK")
            .item(ctrlItem + btnCtrl, 100, 100, 70, 20, "Cancel")
            .item(userItem | itemDisable, 20, 10, 100, 20)
            .item(editText | itemDisable, 150, 12, 100, 16, "old")
            .item(ctrlItem + chkCtrl, 20, 40, 100, 16, "Box")
            .item(ctrlItem + btnCtrl, 20, 70, 60, 20, "Hidden")
            .item(ctrlItem + btnCtrl, 100, 70, 60, 20, "Dim")
            .item(userItem, 5000, 70, 60, 20)
            .add(id);
        addDialog(id, 100, 100, 300, 130);
        ItemList()
            .item(ctrlItem + btnCtrl, 100, 60, 70, 20, "OK")
            .item(statText | itemDisable, 10, 10, 200, 40, "Mind this.")
            .add(501);
        addAlert(501, 100, 100, 300, 100);
        menu = NewMenu(menuID, P(""));
        AppendMenu(menu, P("First;Second   ;(Third;Fourth"));
        InsertMenu(menu, -1);
    }
    static ControlHandle control(DialogPtr dialog, int16_t item)
    {
        int16_t type;
        Handle handle;
        Rect box;
        GetDItem(dialog, item, &type, &handle, &box);
        return reinterpret_cast<ControlHandle>(handle);
    }
    static std::string nameIn(DialogPtr dialog)
    {
        Str255 text;
        GetIText(reinterpret_cast<Handle>(control(dialog, nameItem)), text);
        return plain(text);
    }
    // Runs the dialog until OK or Cancel; returns the items hit.
    std::vector<int> runDialog(ModalFilterProcPtr filter = &popupFilter)
    {
        DialogPtr dialog = GetNewDialog(id, nullptr, reinterpret_cast<WindowPtr>(-1));
        HideDItem(dialog, hiddenItem);
        HiliteControl(control(dialog, dimItem), 255);
        ShowWindow(dialog);
        std::vector<int> hits;
        while (hits.empty() || (hits.back() != okItem && hits.back() != cancelItem)) {
            int16_t hit = 0;
            ModalDialog(filter, &hit);
            hits.push_back(hit);
        }
        name = nameIn(dialog);
        DisposDialog(dialog);
        return hits;
    }
    // The error with which the steps end the session.
    ScriptError errorOf(const std::function<void()> &session)
    {
        try {
            session();
        } catch (const ScriptError &error) {
            return error;
        }
        return {-1, "no error"};
    }
    std::string messageOfDialog()
    {
        return errorOf([&] { runDialog(); }).message;
    }

    toolbox::ScriptedUser user{machine};
    std::string name;
};

TEST_F(User, PressesItems)
{
    user.press(boxItem);
    user.press(cancelItem);
    EXPECT_EQ(runDialog(), (std::vector<int>{boxItem, cancelItem}));
    EXPECT_TRUE(traced("press \"Cancel\""));
    EXPECT_TRUE(user.idle());
}

TEST_F(User, TypesAndPressesKeys)
{
    user.key("tab");
    user.type("Äpfel 12");
    user.key("backspace");
    user.key("left");
    user.key("x");
    user.key("return");
    runDialog();
    EXPECT_EQ(name, "\x80pfel x1");
}

TEST_F(User, TypesCapitalsWithTheShiftKey)
{
    typedWithShift.clear();
    user.type("aB1cD");
    user.press(okItem);
    runDialog(&noteShift);
    EXPECT_EQ(typedWithShift, "BD");
}

TEST_F(User, DragsInQuartersOfTheWay)
{
    draggedThrough.clear();
    user.drag({210, 120}, {130, 320});
    user.press(okItem);
    runDialog(&noteDrag);
    ASSERT_GE(draggedThrough.size(), 4u);
    const Point first = draggedThrough[0];
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_EQ(draggedThrough[i].v, first.v - 20 * static_cast<int>(i));
        EXPECT_EQ(draggedThrough[i].h, first.h + 50 * static_cast<int>(i));
    }
}

TEST_F(User, ChoosesByNumberAndByText)
{
    user.choose(popupItem, 4);
    user.choose(popupItem, "Second");
    user.choose(popupItem, "First ");
    user.press(okItem);
    runDialog();
    ASSERT_EQ(popupResults.size(), 3u);
    EXPECT_EQ(LoWord(popupResults[0]), 4);
    EXPECT_EQ(LoWord(popupResults[1]), 2);
    EXPECT_EQ(LoWord(popupResults[2]), 1);
    EXPECT_TRUE(traced("popup 700 gave 2"));
}

TEST_F(User, ChoosesNothing)
{
    user.chooseNothing(popupItem);
    user.choose(popupItem, 3);
    user.press(okItem);
    runDialog();
    EXPECT_EQ(HiWord(popupResults.at(0)), 0);
    EXPECT_EQ(HiWord(popupResults.at(1)), 0);
}

TEST_F(User, ChoosesByWhatIsThereAndActsOnIt)
{
    user.chooseWhere(popupItem, [this](const std::vector<std::string> &texts) {
        EXPECT_EQ(texts, (std::vector<std::string>{"First", "Second", "Third", "Fourth"}));
        user.insertNext([this] {
            user.key("tab");
            user.type("inserted");
        });
        return 2;
    });
    user.press(okItem);
    runDialog();
    EXPECT_EQ(name, "inserted");
}

TEST_F(User, InsertedStepsKeepTheirOrderAndTheLineOfTheirStep)
{
    std::string order;
    user.atLine(7);
    user.then([&] {
        user.insertNext([&] {
            user.then([&] { order += "1"; });
            user.then([&] { order += "2"; });
            user.press(99);
        });
    });
    user.atLine(8);
    user.then([&] { order += "3"; });
    ScriptError error = errorOf([&] { runDialog(); });
    EXPECT_EQ(order, "12");
    EXPECT_EQ(error.line, 7);
}

TEST_F(User, WaitsInVirtualTime)
{
    uint32_t start = 0, end = 0;
    user.then([&] { start = TickCount(); });
    user.wait(600);
    user.then([&] { end = TickCount(); });
    user.press(okItem);
    runDialog();
    EXPECT_GE(end - start, 600u);
    EXPECT_LT(end - start, 700u);
}

TEST_F(User, ChangesDepthAndClipboard)
{
    user.setDepth(1);
    user.putOnClipboard("from elsewhere");
    user.press(okItem);
    runDialog();
    EXPECT_EQ((**(**GetMainDevice()).gdPMap).pixelSize, 1);
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', nullptr), 14);
}

TEST_F(User, DisplaysBesideAndBelowStayBesideAndBelowOneThatIsResized)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{0, 640, 480, 1280}, 8}, {{480, 0, 960, 640}, 8}});
    GetMainDevice();
    user.resizeDisplay(800, 600);
    user.press(okItem);
    runDialog();
    const GDHandle beside = GetNextDevice(GetMainDevice()), below = GetNextDevice(beside);
    const Rect atTheRight{0, 800, 480, 1440}, under{600, 0, 1080, 640};
    EXPECT_TRUE(EqualRect(&(**beside).gdRect, &atTheRight));
    EXPECT_TRUE(EqualRect(&(**below).gdRect, &under));
}

TEST_F(User, DialogIsDrawnBeforeAStepIsCarriedOut)
{
    WindowPtr front = nullptr;
    bool drawn = false;
    user.then([&] {
        front = FrontWindow();
        drawn = EmptyRgn(reinterpret_cast<WindowPeek>(front)->updateRgn);
    });
    user.press(okItem);
    runDialog();
    EXPECT_TRUE(drawn);
}

TEST_F(User, ItemThatIsNotThere)
{
    user.press(9);
    EXPECT_EQ(messageOfDialog(), "dialog 500 has no item 9");
}

TEST_F(User, ItemThatIsHidden)
{
    user.press(hiddenItem);
    EXPECT_EQ(messageOfDialog(), "item 6 of dialog 500 is hidden");
}

TEST_F(User, ItemOutsideTheDialog)
{
    user.press(farItem);
    EXPECT_EQ(messageOfDialog(), "item 8 of dialog 500 is hidden");
}

TEST_F(User, ItemThatIsDimmed)
{
    user.press(dimItem);
    EXPECT_EQ(messageOfDialog(), "item 7 of dialog 500, \"Dim\", is dimmed");
}

TEST_F(User, ItemThatIsNotAPopup)
{
    user.choose(cancelItem, 1);
    EXPECT_EQ(messageOfDialog(), "item 2 is not a popup: no menu opened");
}

TEST_F(User, MenuItemsThatAreNotThere)
{
    user.choose(popupItem, 5);
    EXPECT_EQ(messageOfDialog(), "menu 700 has no item 5");
    restart();
    prepare();
    user.choose(popupItem, "Fifth");
    EXPECT_EQ(messageOfDialog(), "the popup at item 3 has no \"Fifth\"");
    restart();
    prepare();
    user.choose(popupItem, 0);
    EXPECT_EQ(messageOfDialog(), "menus have no item 0");
}

TEST_F(User, KeysThatAreNotThere)
{
    user.key("hyper");
    EXPECT_EQ(messageOfDialog(), "there is no key \"hyper\"");
    restart();
    prepare();
    user.type("☃");
    EXPECT_EQ(messageOfDialog(), "\"☃\" has characters that no key gives");
}

TEST_F(User, ScriptThatEndsWithADialogOpen)
{
    user.atLine(3);
    user.press(boxItem);
    ScriptError error = errorOf([&] { runDialog(); });
    EXPECT_EQ(error.line, 3);
    EXPECT_EQ(error.message, "the script ended with dialog 500 still open");
}

TEST_F(User, ScriptThatEndsWithAMessageOpenTellsItsWords)
{
    user.atHost([] { StopAlert(501, nullptr); });
    EXPECT_EQ(errorOf([&] { user.run(); }).message, "the script ended with dialog 501 still open: \"Mind this.\"");
}

TEST_F(User, HostStepWhileADialogIsOpen)
{
    user.atLine(4);
    user.atHost([] { FAIL(); });
    ScriptError error = errorOf([&] { runDialog(); });
    EXPECT_EQ(error.line, 4);
    EXPECT_EQ(error.message, "dialog 500 is still open");
}

TEST_F(User, DialogStepWithNothingOpen)
{
    user.atLine(12);
    user.press(1);
    ScriptError error = errorOf([&] { user.run(); });
    EXPECT_EQ(error.line, 12);
    EXPECT_EQ(error.message, "no dialog is open");
}

TEST_F(User, ProgramThatWaitsWithNothingOpen)
{
    user.atLine(2);
    user.press(1);
    ScriptError error = errorOf([] {
        EventRecord event;
        for (;;)
            WaitNextEvent(everyEvent, &event, 10);
    });
    EXPECT_EQ(error.message, "no dialog is open");
}

TEST_F(User, HostStepsRunInOrderAndOpenDialogs)
{
    std::vector<std::string> order;
    user.atHost([&] { runDialog(), order.push_back("dialog"); });
    user.then([&] { order.push_back("in dialog"); });
    user.press(okItem);
    user.wait(30);
    user.then([&] { order.push_back("between"); });
    user.atHost([&] { order.push_back("host"); });
    user.run();
    EXPECT_EQ(order, (std::vector<std::string>{"in dialog", "dialog", "between", "host"}));
    EXPECT_GE(machine.ticks(), 30u);
}

TEST_F(User, UnexpectedDialogIsAnError)
{
    user.in(501);
    user.press(1);
    ScriptError error = errorOf([&] { runDialog(); });
    EXPECT_NE(error.message.find("dialog 500 is open instead of dialog 501"), std::string::npos) << error.message;
}

TEST_F(User, AlertsAreKnownByTheirNumber)
{
    user.in(501);
    user.press(1);
    EXPECT_EQ(StopAlert(501, nullptr), 1);
}

TEST_F(User, SurpriseHandlerMayChangeTheSteps)
{
    std::vector<int> surprises;
    user.onSurprise([&](int dialogID) {
        surprises.push_back(dialogID);
        user.forgetRest();
        user.in(0);
        user.press(cancelItem);
        return true;
    });
    user.in(501);
    user.press(1);
    user.press(1);
    EXPECT_EQ(runDialog().back(), cancelItem);
    EXPECT_EQ(surprises, std::vector<int>{id});
    EXPECT_TRUE(user.idle());
}

TEST_F(User, RunningOutOfStepsAsksTheSurpriseHandler)
{
    user.onSurprise([&](int) {
        user.key("return");
        return true;
    });
    EXPECT_EQ(runDialog().back(), okItem);
}

TEST_F(User, SurpriseHandlerThatChangesNothingDoesNotHang)
{
    user.onSurprise([](int) { return true; });
    EXPECT_EQ(messageOfDialog(), "the script ended with dialog 500 still open");
}

TEST_F(User, WhoIsStuckAsksTheProgramToQuit)
{
    user.quitsWhenStuck();
    user.atLine(3);
    bool returned = false;
    user.atHost([&] {
        runDialog();
        returned = true;
    });
    user.atLine(4);
    user.press(9);
    user.press(okItem);
    ScriptError error = errorOf([&] { user.run(); });
    EXPECT_TRUE(returned) << "the program has put its dialog away itself";
    EXPECT_EQ(error.line, 4);
    EXPECT_EQ(error.message, "dialog 500 has no item 9");
    EXPECT_TRUE(user.idle());
}

TEST_F(User, WhatIsSaidMeanwhileBelongsToTheError)
{
    user.quitsWhenStuck();
    user.atHost([] { StopAlert(501, nullptr); });
    user.atHost([] { FAIL() << "the steps after it are dropped"; });
    ScriptError error = errorOf([&] { user.run(); });
    EXPECT_EQ(error.message, "dialog 501 is still open: \"Mind this.\"");
    EXPECT_EQ(user.lastMessage(), "Mind this.");
}

TEST_F(User, WhoIsStuckDoesNotWaitForEver)
{
    user.quitsWhenStuck();
    user.atHost([] {
        EventRecord event;
        for (;;)
            WaitNextEvent(everyEvent, &event, 10);
    });
    user.press(1);
    EXPECT_EQ(errorOf([&] { user.run(); }).message, "no dialog is open");
}

TEST_F(User, SessionEndedByAnErrorStopsCleanlyAndANewOneStarts)
{
    for (int attempt = 0; attempt < 3; ++attempt) {
        user.choose(popupItem, 44);
        EXPECT_EQ(messageOfDialog(), "menu 700 has no item 44");
        EXPECT_TRUE(user.idle());
        toolbox::stop();
        restart();
        prepare();
        user.choose(popupItem, 2);
        user.press(okItem);
        EXPECT_EQ(runDialog().back(), okItem);
        EXPECT_EQ(LoWord(popupResults.at(0)), 2);
    }
}

TEST_F(User, LeavesThePortAsItWas)
{
    GrafPtr inside = nullptr, after = nullptr;
    user.then([&] { GetPort(&inside); });
    user.press(boxItem);
    user.then([&] { GetPort(&after); });
    user.press(okItem);
    runDialog();
    EXPECT_EQ(inside, after);
}

}  // namespace
