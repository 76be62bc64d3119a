// Alerts: their stages, icons and results.
#include "support/dialog_test.h"
#include "toolbox/host/picture.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace {

class Alerts : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        ItemList()
            .item(ctrlItem, 200, 60, 70, 20, "OK")
            .item(ctrlItem, 100, 60, 70, 20, "Cancel")
            .item(statText | itemDisable, 70, 10, 200, 40, "^0")
            .add(900);
    }

    int16_t ask(int16_t (*alert)(int16_t, ModalFilterProcPtr) = Alert)
    {
        limitWaiting();
        return alert(900, nullptr);
    }

    static int blackIn(int left, int top, int right, int bottom)
    {
        toolbox::Picture picture = toolbox::displayPicture(0);
        int black = 0;
        for (int v = top; v < bottom; ++v)
            for (int h = left; h < right; ++h)
                black += picture.pixels[static_cast<size_t>(v) * picture.width + h] == 0;
        return black;
    }
};

}  // namespace

TEST_F(Alerts, TheItemPressedIsReturned)
{
    addAlert(900, 100, 100, 300, 100);
    click(100 + 120, 100 + 70);
    EXPECT_EQ(ask(), 2);
    EXPECT_TRUE(traced("alert 900 shown at 100,100 300x100"));
    EXPECT_TRUE(traced("alert 900 gave 2"));
    EXPECT_FALSE(traced("dialog"));
    EXPECT_EQ(FrontWindow(), nullptr);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(Alerts, AMissingAlertReturnsMinusOne)
{
    EXPECT_EQ(Alert(900, nullptr), -1);
    EXPECT_FALSE(traced("alert 900"));
}

TEST_F(Alerts, TheStagesGoUpToTheFourthAndStay)
{
    // First a sound only, then a box for item 1, then one for item 2 with two
    // sounds.
    addAlert(900, 100, 100, 300, 100, 0x4E41);
    EXPECT_EQ(ask(), -1);
    EXPECT_EQ(GetAlrtStage(), 0);
    EXPECT_EQ(machine.beeps(), 1);
    key(13);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(machine.beeps(), 1);
    key(3);
    EXPECT_EQ(ask(), 2);
    EXPECT_EQ(machine.beeps(), 3);
    for (int i = 0; i < 2; ++i) {
        key(13);
        EXPECT_EQ(ask(), 1);
        EXPECT_EQ(GetAlrtStage(), 3);
    }
    ResetAlrtStage();
    EXPECT_EQ(GetAlrtStage(), 0);
    EXPECT_EQ(ask(), -1) << "back at the first stage";
}

TEST_F(Alerts, TheBoundsAreTheOnesInMemory)
{
    addAlert(900, 100, 100, 300, 100);
    Handle alert = GetResource('ALRT', 900);
    HNoPurge(alert);
    Rect moved{60, 50, 160, 350};
    unsigned char *bytes = reinterpret_cast<unsigned char *>(*alert);
    for (int16_t edge : {moved.top, moved.left, moved.bottom, moved.right}) {
        *bytes++ = static_cast<unsigned char>(edge >> 8);
        *bytes++ = static_cast<unsigned char>(edge & 255);
    }
    key(13);
    EXPECT_EQ(ask(), 1);
    EXPECT_TRUE(traced("alert 900 shown at 50,60 300x100"));
}

TEST_F(Alerts, EachKindShowsItsIconAndTheDefaultItemIsOutlined)
{
    addAlert(900, 100, 100, 300, 100);
    std::vector<int> black;
    for (auto kind : {StopAlert, NoteAlert, CautionAlert, Alert}) {
        machine.setSource({});
        click(20, 400);   // outside: leaves time to draw
        static int atIcon, atOutline;
        atIcon = atOutline = -1;
        kind(900, [](DialogPtr, EventRecord *event, int16_t *hit) -> Boolean {
            if (event->what != nullEvent)
                return false;
            atIcon = blackIn(120, 110, 152, 142);
            atOutline = blackIn(296, 170, 299, 171);
            *hit = 1;
            return true;
        });
        black.push_back(atIcon);
        EXPECT_EQ(atOutline, 3);
    }
    EXPECT_GT(black[0], 100);
    EXPECT_GT(black[1], 100);
    EXPECT_GT(black[2], 100);
    EXPECT_NE(black[0], black[1]);
    EXPECT_EQ(black[3], 0);
}

TEST_F(Alerts, AnIconResourceTakesThePlaceOfTheDrawnOne)
{
    addAlert(900, 100, 100, 300, 100);
    ResourceBytes icon;
    for (int i = 0; i < 128; ++i)
        icon.byte(255);
    icon.add('ICON', 0);
    static int black;
    StopAlert(900, [](DialogPtr, EventRecord *event, int16_t *hit) -> Boolean {
        if (event->what != nullEvent)
            return false;
        black = blackIn(120, 110, 152, 142);
        *hit = 1;
        return true;
    });
    EXPECT_EQ(black, 32 * 32);
}
