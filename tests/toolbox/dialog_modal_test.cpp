// ModalDialog: which event does what, and who gets to see it.
#include "support/dialog_test.h"
#include "toolbox/system.h"

namespace {

constexpr int id = 500;
constexpr int okH = 150, okV = 180;   // inside item 1, global

class DialogModal : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        ItemList()
            .item(ctrlItem + btnCtrl, 40, 70, 70, 20, "OK")
            .item(ctrlItem + btnCtrl, 140, 70, 70, 20, "Cancel")
            .item(userItem, 10, 10, 20, 20)
            .item(editText | itemDisable, 60, 10, 100, 16, "old")
            .item(statText | itemDisable, 60, 40, 100, 16, "Static")
            .item(editText, 180, 10, 60, 16, "7")
            .item(ctrlItem + chkCtrl, 10, 50, 40, 16, "Box")
            .item((ctrlItem + btnCtrl) | itemDisable, 220, 70, 60, 20, "Dead")
            .add(id);
        addDialog(id, 100, 100, 300, 100, true);
    }

    DialogPtr open() { return GetNewDialog(id, nullptr, reinterpret_cast<WindowPtr>(-1)); }

    std::string text(DialogPtr dialog, int item)
    {
        int16_t type;
        Handle handle;
        Rect box;
        GetDItem(dialog, static_cast<int16_t>(item), &type, &handle, &box);
        Str255 text;
        GetIText(handle, text);
        return plain(text);
    }

    ControlHandle control(DialogPtr dialog, int item)
    {
        int16_t type;
        Handle handle;
        Rect box;
        GetDItem(dialog, static_cast<int16_t>(item), &type, &handle, &box);
        return reinterpret_cast<ControlHandle>(handle);
    }
};

}  // namespace

TEST_F(DialogModal, APressReleasedInAButtonReturnsItsItem)
{
    DialogPtr dialog = open();
    click(okH, okV);
    EXPECT_EQ(modal(), 1);
    EXPECT_TRUE(traced("dialog 500 shown at 100,100 300x100"));
    EXPECT_TRUE(traced("press \"OK\""));
    CloseDialog(dialog);
    EXPECT_TRUE(traced("dialog 500 closed"));
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(DialogModal, APressReleasedOutsideTheButtonReturnsNothing)
{
    open();
    mouse(toolbox::Input::Kind::mouseDown, okH, okV);
    mouse(toolbox::Input::Kind::mouseMoved, okH, okV - 40);
    mouse(toolbox::Input::Kind::mouseUp, okH, okV - 40);
    click(okH + 100, okV);
    EXPECT_EQ(modal(), 2);
    EXPECT_FALSE(traced("press \"OK\""));
}

TEST_F(DialogModal, AClickOutsideBeepsAndIsNotOfferedToTheFilter)
{
    open();
    static int seen;
    seen = 0;
    click(20, 400);
    click(okH, okV);
    EXPECT_EQ(modal([](DialogPtr, EventRecord *event, int16_t *) -> Boolean {
                  seen += event->what == mouseDown;
                  return false;
              }),
              1);
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(machine.beeps(), 1);
}

TEST_F(DialogModal, WithoutAFilterReturnAndEnterHitItemOne)
{
    open();
    key(13);
    EXPECT_EQ(modal(), 1);
    key(3);
    EXPECT_EQ(modal(), 1);
    EXPECT_EQ(tracedTimes("flash \"OK\""), 2);
}

TEST_F(DialogModal, AFilterReplacesTheStandardOne)
{
    DialogPtr dialog = open();
    key(13);
    click(okH, okV);
    EXPECT_EQ(modal([](DialogPtr, EventRecord *, int16_t *) -> Boolean { return false; }), 1);
    EXPECT_FALSE(traced("flash"));
    EXPECT_EQ(text(dialog, 4), "\r");
}

TEST_F(DialogModal, AFiltersItemIsReturnedEvenIfDisabled)
{
    open();
    key('x');
    EXPECT_EQ(modal([](DialogPtr, EventRecord *event, int16_t *hit) -> Boolean {
                  if (event->what != keyDown)
                      return false;
                  *hit = 8;
                  return true;
              }),
              8);
}

TEST_F(DialogModal, NullEventsReachTheFilter)
{
    open();
    static int nulls;
    nulls = 0;
    EXPECT_EQ(modal([](DialogPtr, EventRecord *event, int16_t *hit) -> Boolean {
                  nulls += event->what == nullEvent;
                  *hit = 3;
                  return nulls == 15;
              }),
              3);
}

TEST_F(DialogModal, AnEventTheFilterChangesIsHandledAsChanged)
{
    DialogPtr dialog = open();
    key('a');
    click(okH, okV);
    modal([](DialogPtr, EventRecord *event, int16_t *) -> Boolean {
        if (event->what == keyDown)
            event->message = 'b';
        return false;
    });
    EXPECT_EQ(text(dialog, 4), "b");
}

TEST_F(DialogModal, TypingReplacesTheFirstEditItemWhichOpensSelected)
{
    DialogPtr dialog = open();
    EXPECT_EQ(reinterpret_cast<DialogPeek>(dialog)->editField, 3);
    type("12\x08" "5");
    click(okH, okV);
    modal();
    EXPECT_EQ(text(dialog, 4), "15");
}

TEST_F(DialogModal, TypingInAnEnabledEditItemReturnsIt)
{
    DialogPtr dialog = open();
    key('\t');
    EXPECT_EQ(modal(), 6);
    key('9');
    EXPECT_EQ(modal(), 6);
    EXPECT_EQ(text(dialog, 6), "9");
    EXPECT_EQ(text(dialog, 4), "old");
}

TEST_F(DialogModal, TabCyclesThroughTheEditItemsAndSelectsAll)
{
    DialogPtr dialog = open();
    auto *record = reinterpret_cast<DialogPeek>(dialog);
    key('\t');
    modal();
    EXPECT_EQ(record->editField, 5);
    key('\t');
    click(okH, okV);
    modal();
    EXPECT_EQ(record->editField, 3);
    EXPECT_EQ((**record->textH).selStart, 0);
    EXPECT_EQ((**record->textH).selEnd, 3);
}

TEST_F(DialogModal, TheTextThatBecomesCurrentIsActive)
{
    DialogPtr dialog = open();
    auto *record = reinterpret_cast<DialogPeek>(dialog);
    key('\t');
    modal();
    EXPECT_EQ(record->editField, 5);
    EXPECT_TRUE((**record->textH).active);
    EXPECT_TRUE((**record->textH).caretState);
}

TEST_F(DialogModal, AClickInAnEditItemMakesItCurrent)
{
    DialogPtr dialog = open();
    click(100 + 185, 100 + 15);
    EXPECT_EQ(modal(), 6);
    EXPECT_EQ(reinterpret_cast<DialogPeek>(dialog)->editField, 5);
    EXPECT_EQ(text(dialog, 4), "old");
}

TEST_F(DialogModal, AUserItemIsHitWhenTheButtonGoesDown)
{
    open();
    mouse(toolbox::Input::Kind::mouseDown, 115, 115);
    EXPECT_EQ(modal(), 3);
}

TEST_F(DialogModal, DisabledItemsAndDimmedButtonsReturnNothing)
{
    DialogPtr dialog = open();
    HiliteControl(control(dialog, 1), 255);
    click(100 + 70, 100 + 45);
    click(100 + 230, 100 + 80);
    click(okH, okV);
    click(okH + 100, okV);
    EXPECT_EQ(modal(), 2);
    EXPECT_EQ(machine.beeps(), 0);
}

TEST_F(DialogModal, ACheckBoxIsReturnedAndKeepsItsValue)
{
    DialogPtr dialog = open();
    click(100 + 15, 100 + 58);
    EXPECT_EQ(modal(), 7);
    EXPECT_EQ(GetCtlValue(control(dialog, 7)), 0);
}

TEST_F(DialogModal, ADialogMayRunWithinAnothersFilter)
{
    DialogPtr outer = open();
    static DialogPtr inner;
    static int returned;
    inner = nullptr;
    returned = 0;
    key('n');
    click(okH + 100, okV);
    click(okH, okV);
    int16_t hit = modal([](DialogPtr, EventRecord *event, int16_t *) -> Boolean {
        if (event->what != keyDown)
            return false;
        inner = GetNewDialog(id, nullptr, reinterpret_cast<WindowPtr>(-1));
        int16_t innerHit = 0;
        ModalDialog(nullptr, &innerHit);
        returned = innerHit;
        DisposDialog(inner);
        *event = EventRecord{};
        return false;
    });
    EXPECT_EQ(returned, 2);
    EXPECT_EQ(hit, 1);
    EXPECT_EQ(FrontWindow(), outer);
    DisposDialog(outer);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(DialogModal, WithoutADialogInFrontThatIsReported)
{
    int16_t hit;
    EXPECT_THROW(ModalDialog(nullptr, &hit), std::logic_error);
}

TEST_F(DialogModal, AnExceptionThroughItLeavesNothingAfterStop)
{
    open();
    EXPECT_THROW(modal(), OutOfInput);
    machine.setSource({});
    restart();
    EXPECT_EQ(FrontWindow(), nullptr);
}

TEST_F(DialogModal, AWindowThatIsNeverDrawnDoesNotKeepTimeFromPassing)
{
    Rect bounds{300, 100, 400, 200};
    WindowPtr window = NewWindow(nullptr, &bounds, P(""), true, plainDBox, nullptr, false, 0);
    open();
    EXPECT_EQ(modal([](DialogPtr, EventRecord *event, int16_t *hit) -> Boolean {
                  *hit = 3;
                  return event->what == nullEvent;
              }),
              3);
    EventRecord event;
    EXPECT_TRUE(WaitNextEvent(1 << updateEvt, &event, 1));
    EXPECT_EQ(reinterpret_cast<WindowPtr>(event.message), window) << "its owner gets the update afterwards";
}

TEST_F(DialogModal, ADialogBehindAnotherIsDrawnToo)
{
    static int drawn;
    drawn = 0;
    DialogPtr back = open();
    int16_t type;
    Handle handle;
    Rect box;
    GetDItem(back, 3, &type, &handle, &box);
    UserItemProcPtr procedure = [](DialogPtr, int16_t) { ++drawn; };
    SetDItem(back, 3, type, reinterpret_cast<Handle>(procedure), &box);
    DialogPtr front = open();
    MoveWindow(front, 100, 300, false);
    modal([](DialogPtr, EventRecord *event, int16_t *) -> Boolean { return event->what == nullEvent; });
    EXPECT_EQ(drawn, 1);
}

TEST_F(DialogModal, AMovableDialogGivesOutsidePressesToTheFilterAndCanBeDragged)
{
    ItemList().item(ctrlItem, 40, 70, 70, 20, "OK").add(501);
    addDialog(501, 100, 100, 300, 100, true, movableDBoxProc);
    DialogPtr dialog = GetNewDialog(501, nullptr, reinterpret_cast<WindowPtr>(-1));
    static int presses;
    presses = 0;
    click(20, 400);
    mouse(toolbox::Input::Kind::mouseDown, 200, 85);
    mouse(toolbox::Input::Kind::mouseMoved, 220, 95);
    mouse(toolbox::Input::Kind::mouseUp, 230, 105);
    click(okH + 30, okV + 20);
    EXPECT_EQ(modal([](DialogPtr, EventRecord *event, int16_t *) -> Boolean {
                  presses += event->what == mouseDown;
                  return false;
              }),
              1);
    EXPECT_EQ(presses, 3);
    EXPECT_EQ(machine.beeps(), 1);
    SetPort(dialog);
    Point corner{0, 0};
    LocalToGlobal(&corner);
    EXPECT_EQ(corner.h, 130);
    EXPECT_EQ(corner.v, 120);
}
