// How dialogs and alerts deal with the wish to quit.
#include "support/dialog_test.h"
#include "toolbox/host/quit.h"
#include "toolbox/keys.h"

namespace {

class Quitting : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        addAlert(900, 100, 100, 300, 100);
    }
    void quit() { machine.push({.kind = toolbox::Input::Kind::quit}); }
    static ItemList &button(ItemList &items, const std::string &title, int left)
    {
        return items.item(ctrlItem, left, 60, 70, 20, title);
    }
    // The dialog with this number, shown.
    DialogPtr openDialog(int id)
    {
        addDialog(id, 100, 100, 300, 100, true);
        return GetNewDialog(static_cast<int16_t>(id), nullptr, reinterpret_cast<WindowPtr>(-1));
    }
    int16_t ask()
    {
        limitWaiting();
        return Alert(900, nullptr);
    }
};

std::vector<int> keysSeen;

Boolean takesEscape(DialogPtr, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown || (event->message & charCodeMask) != toolbox::key::escape)
        return false;
    *hit = 2;
    return true;
}

Boolean takesPeriod(DialogPtr, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown || (event->message & charCodeMask) != '.' || !(event->modifiers & cmdKey))
        return false;
    *hit = 3;
    return true;
}

Boolean takesAllAndHitsNothing(DialogPtr, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown)
        return false;
    keysSeen.push_back(static_cast<int>(event->message & charCodeMask));
    *hit = 0;
    return true;
}

Boolean takesReturn(DialogPtr, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown || (event->message & charCodeMask) != toolbox::key::carriageReturn)
        return false;
    *hit = 9;
    return true;
}

Boolean closesItself(DialogPtr dialog, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown)
        return false;
    DisposDialog(dialog);
    *hit = 7;
    return true;
}

}  // namespace

TEST_F(Quitting, FilterSeesEscapeAndHitsAnItem)
{
    ItemList items;
    button(button(items, "OK", 200), "Cancel", 100).add(901);
    DialogPtr dialog = openDialog(901);
    quit();
    EXPECT_EQ(modal(takesEscape), 2);
    EXPECT_TRUE(toolbox::quitAsked()) << "it applies to the dialogs behind it, too";
    EXPECT_TRUE(traced("quit asks dialog 901 to cancel"));
    DisposDialog(dialog);
}

TEST_F(Quitting, DialogThatIsUpAgainIsAskedByCommandPeriod)
{
    ItemList items;
    items.item(statText | itemDisable, 10, 10, 100, 20, "x").add(901);
    DialogPtr dialog = openDialog(901);
    quit();
    EXPECT_EQ(modal(takesPeriod), 3) << "Escape was not taken";
    DisposDialog(dialog);
}

TEST_F(Quitting, WithoutAFilterItem2OfAnAlertIsHit)
{
    ItemList items;
    button(button(items, "Do it", 200), "Cancel", 100).add(900);
    quit();
    EXPECT_EQ(ask(), 2);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(Quitting, OnlyButtonIsHit)
{
    ItemList items;
    button(items, "OK", 200).item(statText | itemDisable, 10, 10, 100, 20, "x").add(900);
    quit();
    EXPECT_EQ(ask(), 1);
}

TEST_F(Quitting, DimmedButtonIsNotHit)
{
    ItemList items;
    button(button(items, "Go", 200), "Cancel", 100).add(901);
    DialogPtr dialog = openDialog(901);
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(dialog, 2, &type, &item, &box);
    HiliteControl(reinterpret_cast<ControlHandle>(item), 255);
    quit();
    EXPECT_EQ(modal(), 1) << "the only one left";
    DisposDialog(dialog);
}

TEST_F(Quitting, DialogThatRefusesTwiceStaysUp)
{
    ItemList items;
    button(button(items, "Yes", 200).item(ctrlItem | itemDisable, 10, 60, 70, 20, "Cancel"), "No", 100).add(901);
    DialogPtr dialog = openDialog(901);
    quit();
    EXPECT_THROW(modal(), OutOfInput) << "it stays up";
    EXPECT_FALSE(toolbox::quitAsked());
    EXPECT_EQ(tracedTimes("quit asks dialog 901"), 2);
    EXPECT_TRUE(traced("quit dropped"));
    quit();
    EXPECT_THROW(modal(), OutOfInput);
    EXPECT_EQ(tracedTimes("quit asks dialog 901"), 4) << "the next wish is a new one";
    DisposDialog(dialog);
}

TEST_F(Quitting, FilterThatHitsNothingIsAskedTwiceBeforeTheButton)
{
    ItemList items;
    button(items, "OK", 200).add(901);
    DialogPtr dialog = openDialog(901);
    keysSeen.clear();
    quit();
    EXPECT_EQ(modal(takesAllAndHitsNothing), 0) << "the filter may have informed its caller some other way";
    EXPECT_EQ(modal(takesAllAndHitsNothing), 1);
    EXPECT_EQ(keysSeen, (std::vector<int>{toolbox::key::escape, '.'}));
    DisposDialog(dialog);
}

TEST_F(Quitting, DialogWithoutButtonsGetsReturn)
{
    ItemList items;
    items.item(ctrlItem + chkCtrl, 10, 10, 100, 20, "Colour").add(901);
    DialogPtr dialog = openDialog(901);
    quit();
    EXPECT_EQ(modal(takesReturn), 9);
    DisposDialog(dialog);
}

TEST_F(Quitting, FilterMayCloseTheDialog)
{
    ItemList items;
    button(items, "OK", 200).add(901);
    openDialog(901);
    quit();
    EXPECT_EQ(modal(closesItself), 7);
}

TEST_F(Quitting, QueuedEventsComeFirst)
{
    ItemList items;
    button(button(items, "OK", 200), "Cancel", 100).add(900);
    quit();
    key('\r');
    EXPECT_EQ(ask(), 1);
}

TEST_F(Quitting, WaitingEndsAtOnce)
{
    quit();
    std::uint32_t before = machine.ticks();
    EventRecord event;
    EXPECT_FALSE(WaitNextEvent(everyEvent, &event, 600));
    EXPECT_LT(machine.ticks() - before, 2u);
    EXPECT_TRUE(toolbox::quitAsked());
    EXPECT_FALSE(WaitNextEvent(everyEvent, &event, 600));
    EXPECT_GE(machine.ticks() - before, 600u) << "reported once";
    toolbox::dropQuit();
    EXPECT_FALSE(toolbox::quitAsked());
}

TEST_F(DialogTest, LastChangeOfATextIsTakenBackAndDoneAgain)
{
    ItemList().item(editText, 10, 10, 100, 16, "abc").item(ctrlItem, 10, 60, 70, 20, "OK").add(903);
    addDialog(903, 100, 100, 300, 100, true);
    DialogPtr dialog = GetNewDialog(903, nullptr, reinterpret_cast<WindowPtr>(-1));
    const auto text = [&] {
        int16_t type;
        Handle item;
        Rect box;
        Str255 words;
        GetDItem(dialog, 1, &type, &item, &box);
        GetIText(item, words);
        return plain(words);
    };
    const auto strike = [this](char character, int modifiers) {
        machine.push({.kind = toolbox::Input::Kind::keyDown,
                      .character = static_cast<std::uint8_t>(character),
                      .modifiers = static_cast<std::uint16_t>(modifiers)});
    };
    const auto run = [&] {
        strike('\r', 0);
        const auto filter = [](DialogPtr, EventRecord *event, int16_t *itemHit) -> Boolean {
            *itemHit = 2;
            return event->what == keyDown && (event->message & charCodeMask) == '\r';
        };
        for (int16_t hit = 0; hit != 2;)
            ModalDialog(filter, &hit);
        return text();
    };
    reinterpret_cast<DialogPeek>(dialog)->aDefItem = 2;
    EXPECT_TRUE(DlgCommandKey(dialog, 'z')) << "nothing to take back does no harm";
    EXPECT_EQ(text(), "abc");
    strike('a', cmdKey);
    for (char typed : std::string("xyz"))
        strike(typed, 0);
    EXPECT_EQ(run(), "xyz") << "all of it was selected";
    strike('z', cmdKey);
    EXPECT_EQ(run(), "abc") << "what was typed together is one change";
    strike('Z', cmdKey);
    EXPECT_EQ(run(), "xyz");
    strike(0x1C, 0);  // an arrow
    strike('w', 0);
    EXPECT_EQ(run(), "xywz");
    strike('z', cmdKey);
    EXPECT_EQ(run(), "xyz");
    DisposDialog(dialog);
}

TEST_F(DialogTest, CommandKeysEditOnlyWhereThereIsText)
{
    ItemList().item(editText, 10, 10, 100, 16, "abc").item(ctrlItem, 10, 60, 70, 20, "OK").add(901);
    addDialog(901, 100, 100, 300, 100, true);
    DialogPtr dialog = GetNewDialog(901, nullptr, reinterpret_cast<WindowPtr>(-1));
    EXPECT_FALSE(DlgCommandKey(dialog, 'k'));
    EXPECT_TRUE(DlgCommandKey(dialog, 'C'));
    EXPECT_EQ(machine.clipboardText(), "abc");
    EXPECT_TRUE(DlgCommandKey(dialog, 'x'));
    EXPECT_TRUE(DlgCommandKey(dialog, 'v'));
    EXPECT_TRUE(DlgCommandKey(dialog, 'V'));
    int16_t type;
    Handle item;
    Rect box;
    Str255 text;
    GetDItem(dialog, 1, &type, &item, &box);
    GetIText(item, text);
    EXPECT_EQ(plain(text), "abcabc");
    DisposDialog(dialog);
    ItemList().item(ctrlItem, 10, 60, 70, 20, "OK").add(902);
    addDialog(902, 100, 100, 300, 100, true);
    dialog = GetNewDialog(902, nullptr, reinterpret_cast<WindowPtr>(-1));
    EXPECT_FALSE(DlgCommandKey(dialog, 'c'));
    EXPECT_EQ(machine.clipboardText(), "abc") << "as it was";
    DisposDialog(dialog);
}
