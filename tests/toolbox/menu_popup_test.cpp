// PopUpMenuSelect: where the menu is, how it looks, and what it returns.
#include "menu_hand.h"

#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "toolbox/keys.h"
#include "toolbox/quickdraw.h"
#include "windows/desktop.h"

namespace {

class MenuPopup : public MenuTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        makeMenu("One;Two;(Three;-;Five");
    }
    void makeMenu(const std::string &items)
    {
        menu = NewMenu(200, P(""));
        AppendMenu(menu, P(items));
        InsertMenu(menu, -1);
    }

    int32_t select(Point where, int16_t item, std::vector<Step> steps)
    {
        pressAt(where, std::move(steps));
        return PopUpMenuSelect(menu, where.v, where.h, item);
    }

    MenuHandle menu = nullptr;
    static constexpr Point somewhere{200, 300};
};

TEST_F(MenuPopup, ReturnsMenuAndItemReleasedOver)
{
    int32_t result = select(somewhere, 1, {overItem(Input::Kind::mouseMoved, 2), overItem(Input::Kind::mouseUp, 5)});
    EXPECT_EQ(HiWord(result), 200);
    EXPECT_EQ(LoWord(result), 5);
    EXPECT_TRUE(traced("popup 200 opened at item 1"));
    EXPECT_TRUE(traced("popup 200 gave 5"));
    EXPECT_FALSE(toolbox::menus::openMenu());
}

TEST_F(MenuPopup, ItemLiesAtThePoint)
{
    Rect second{};
    select(somewhere, 2, {[&] {
               second = rowOf(2);
               return mouse(Input::Kind::mouseUp, middle(second));
           }});
    EXPECT_EQ(second.top, somewhere.v);
    EXPECT_EQ(second.left, somewhere.h);
    EXPECT_EQ(second.bottom - second.top, 16);
}

TEST_F(MenuPopup, ReleasedOutsideGivesNothing)
{
    EXPECT_EQ(HiWord(select(somewhere, 1, {release({5, 5})})), 0);
    EXPECT_TRUE(traced("popup 200 gave nothing"));
}

TEST_F(MenuPopup, DisabledItemsAndDividersGiveNothing)
{
    EXPECT_EQ(HiWord(select(somewhere, 1, {overItem(Input::Kind::mouseUp, 3)})), 0);
    EXPECT_EQ(HiWord(select(somewhere, 1, {overItem(Input::Kind::mouseUp, 4)})), 0);
    DisableItem(menu, 0);
    EXPECT_EQ(HiWord(select(somewhere, 1, {overItem(Input::Kind::mouseUp, 1)})), 0);
    EnableItem(menu, 0);
    EXPECT_EQ(HiWord(select(somewhere, 1, {overItem(Input::Kind::mouseUp, 3)})), 0);
    EnableItem(menu, 3);
    EXPECT_EQ(LoWord(select(somewhere, 1, {overItem(Input::Kind::mouseUp, 3)})), 3);
}

TEST_F(MenuPopup, MarksStayAsTheyAre)
{
    CheckItem(menu, 1, true);
    select(somewhere, 1, {overItem(Input::Kind::mouseUp, 2)});
    int16_t mark = 0;
    GetItemMark(menu, 1, &mark);
    EXPECT_EQ(mark, 0x12);
    GetItemMark(menu, 2, &mark);
    EXPECT_EQ(mark, 0);
}

TEST_F(MenuPopup, StaysOnTheDisplayThatHoldsThePoint)
{
    machine.setDisplays({{{0, 0, 480, 640}, 8}, {{100, 640, 400, 1040}, 8}});
    restart();
    makeMenu("One;Two;(Three;-;Five");
    for (Point corner : {Point{22, 1}, Point{479, 639}, Point{101, 641}, Point{399, 1039}}) {
        std::vector<Rect> rows;
        select(corner, 3, {[&] {
                   rows = toolbox::menus::openMenu()->items;
                   return mouse(Input::Kind::mouseUp, {5, 5});
               }});
        ASSERT_EQ(rows.size(), 5u);
        bool second = corner.h >= 640;
        EXPECT_GT(rows.front().top, second ? 100 : 20);
        if (corner.v == 101) {
            EXPECT_EQ(rows.front().top, 101) << "only the main display has a menu bar";
        }
        EXPECT_GT(rows.front().left, second ? 640 : 0);
        EXPECT_LT(rows.back().bottom, second ? 400 : 480);
        EXPECT_LT(rows.back().right, second ? 1040 : 640);
    }
}

TEST_F(MenuPopup, CoversAndRestoresTheDisplay)
{
    toolbox::Picture before = toolbox::displayPicture(0), open;
    select(somewhere, 1, {[&] {
               open = toolbox::displayPicture(0);
               return mouse(Input::Kind::mouseUp, {5, 5});
           }});
    EXPECT_NE(open.pixels, before.pixels);
    EXPECT_EQ(toolbox::displayPicture(0).pixels, before.pixels);
}

TEST_F(MenuPopup, LeavesNothingOnDisplaysThatChangedUnderIt)
{
    for (toolbox::Display changed : {toolbox::Display{{0, 0, 480, 640}, 8, 2}, toolbox::Display{{0, 0, 480, 640}, 1, 2}}) {
        select(somewhere, 1, {[&]() -> std::optional<Input> {
                                  machine.setDisplays({changed});
                                  return std::nullopt;
                              },
                              release({5, 5})});
        toolbox::Picture after = toolbox::displayPicture(0);
        toolbox::windows::displaysChanged();
        EXPECT_EQ(after.width, 1280);
        EXPECT_NE(after.pixels[after.pixels.size() - 3], after.pixels.back()) << "there is a desktop";
        EXPECT_EQ(after.pixels, toolbox::displayPicture(0).pixels);
    }
}

TEST_F(MenuPopup, RowUnderTheMouseIsInverted)
{
    int plain = 0, inverted = 0, area = 0;
    select(somewhere, 1,
           {overItem(Input::Kind::mouseMoved, 5),
            [&] {
                plain = darkPixels(toolbox::displayPicture(0), rowOf(2));
                return mouse(Input::Kind::mouseMoved, middle(rowOf(2)));
            },
            [&] {
                Rect row = rowOf(2);
                area = (row.right - row.left) * (row.bottom - row.top);
                inverted = darkPixels(toolbox::displayPicture(0), row);
                return mouse(Input::Kind::mouseUp, {5, 5});
            }});
    EXPECT_GT(plain, 0);
    EXPECT_GT(inverted, area / 2);
}

TEST_F(MenuPopup, CheckedItemShowsItsMarkLeftOfTheText)
{
    int unchecked = 0, checked = 0;
    auto count = [&](int &dark) {
        select(somewhere, 1, {[&] {
                   Rect column = rowOf(2);
                   column.right = static_cast<int16_t>(column.left + 13);
                   dark = darkPixels(toolbox::displayPicture(0), column);
                   return mouse(Input::Kind::mouseUp, {5, 5});
               }});
    };
    count(unchecked);
    CheckItem(menu, 2, true);
    count(checked);
    EXPECT_EQ(unchecked, 0);
    EXPECT_GT(checked, 5);
}

TEST_F(MenuPopup, WideEnoughForTheWidestText)
{
    SetItem(menu, 2, P(std::string(30, 'W')));
    int width = 0;
    select(somewhere, 1, {[&] {
               width = rowOf(1).right - rowOf(1).left;
               return mouse(Input::Kind::mouseUp, {5, 5});
           }});
    toolbox::quickdraw::PortScope port(toolbox::quickdraw::desktopPort());
    TextFont(systemFont);
    TextSize(12);
    TextFace(normal);
    EXPECT_GE(width, StringWidth(P(std::string(30, 'W'))) + 14);
}

TEST_F(MenuPopup, MenuHigherThanTheDisplayScrolls)
{
    MenuHandle tall = NewMenu(201, P(""));
    for (int i = 1; i <= 60; ++i)
        AppendMenu(tall, P("Item " + std::to_string(i)));
    menu = tall;
    int32_t result = 0;
    std::vector<Step> steps;
    Rect bottom{};
    steps.push_back([&] {
        for (const Rect &row : toolbox::menus::openMenu()->items)
            if (row.bottom > bottom.bottom)
                bottom = row;
        OffsetRect(&bottom, 0, 16);
        EXPECT_TRUE(EmptyRect(&toolbox::menus::openMenu()->items[59]));
        return mouse(Input::Kind::mouseMoved, middle(bottom));
    });
    for (int i = 0; i < 60; ++i)
        steps.push_back([&] { return mouse(Input::Kind::mouseMoved, middle(bottom)); });
    steps.push_back(overItem(Input::Kind::mouseUp, 60));
    result = select(somewhere, 1, steps);
    EXPECT_EQ(LoWord(result), 60);
}

TEST_F(MenuPopup, MenuHigherThanTheDisplayScrollsWhileTheMouseRests)
{
    MenuHandle tall = NewMenu(201, P(""));
    for (int i = 1; i <= 60; ++i)
        AppendMenu(tall, P("Item " + std::to_string(i)));
    menu = tall;
    Point bottom{};
    std::vector<Step> steps{[&] {
        Rect last{};
        for (const Rect &row : toolbox::menus::openMenu()->items)
            if (row.bottom > last.bottom)
                last = row;
        OffsetRect(&last, 0, 16);
        bottom = middle(last);
        return mouse(Input::Kind::mouseMoved, bottom);
    }};
    std::uint32_t before = machine.ticks();
    for (int i = 0; i < 60; ++i)
        steps.push_back([] { return std::nullopt; });
    steps.push_back(overItem(Input::Kind::mouseUp, 60));
    EXPECT_EQ(LoWord(select(somewhere, 1, steps)), 60);
    EXPECT_GT(machine.ticks() - before, 100u) << "a row every few ticks";
}

TEST_F(MenuPopup, ShortClickLeavesItOpenAndTheNextChooses)
{
    int32_t result = select(somewhere, 1,
                            {release(somewhere), overItem(Input::Kind::mouseMoved, 2),
                             after([] { EXPECT_TRUE(isInverted(rowOf(2))); }, overItem(Input::Kind::mouseDown, 5)),
                             overItem(Input::Kind::mouseUp, 5)});
    EXPECT_EQ(LoWord(result), 5);
    EXPECT_EQ(trace, (std::vector<std::string>{"popup 200 opened at item 1", "popup 200 gave 5"}));
}

TEST_F(MenuPopup, SecondClickOnTheCurrentItemChoosesItEvenIfShort)
{
    EXPECT_EQ(LoWord(select({208, 320}, 1, {release({208, 320}), press({208, 320}), release({208, 320})})), 1);
}

TEST_F(MenuPopup, TremblingHandStillClicks)
{
    Point nearby{static_cast<int16_t>(somewhere.v + 3), static_cast<int16_t>(somewhere.h + 3)};
    EXPECT_EQ(LoWord(select(somewhere, 1, {moveTo(nearby), release(nearby), overItem(Input::Kind::mouseDown, 2),
                                           overItem(Input::Kind::mouseUp, 2)})),
              2);
    Point further{nearby.v, static_cast<int16_t>(nearby.h + 1)};
    EXPECT_EQ(LoWord(select(somewhere, 1, {moveTo(further), release(further)})), 1);
}

TEST_F(MenuPopup, HeldAndReleasedOnTheCurrentItemChoosesIt)
{
    EXPECT_EQ(LoWord(select({208, 320}, 1, {holding(GetDblTime() + 1, release({208, 320}))})), 1);
    EXPECT_EQ(LoWord(select({208, 320}, 1,
                            {overItem(Input::Kind::mouseMoved, 2), moveTo({208, 320}), release({208, 320})})),
              1);
}

TEST_F(MenuPopup, ReleaseThatCameBeforeTheMenuLeavesItOpenToo)
{
    machine.push(mouse(Input::Kind::mouseDown, somewhere));
    machine.push(mouse(Input::Kind::mouseUp, somewhere));
    EventRecord event;
    ASSERT_TRUE(GetNextEvent(1 << mouseDown, &event));
    ASSERT_TRUE(EventAvail(1 << mouseUp, &event));
    bool left = false;
    machine.setSource([&]() -> std::optional<Input> {
        return mouse(std::exchange(left, true) ? Input::Kind::mouseUp : Input::Kind::mouseDown, middle(rowOf(2)));
    });
    EXPECT_EQ(LoWord(PopUpMenuSelect(menu, somewhere.v, somewhere.h, 1)), 2);
}

TEST_F(MenuPopup, ClickBesideTheOpenMenuClosesIt)
{
    EXPECT_EQ(select(somewhere, 1, {release(somewhere), press({5, 5})}), 0);
    EXPECT_TRUE(traced("popup 200 gave nothing"));
    EXPECT_FALSE(toolbox::menus::openMenu());
}

TEST_F(MenuPopup, KeysWorkInAMenuLeftOpen)
{
    constexpr std::uint8_t up = toolbox::key::upArrow, down = toolbox::key::downArrow;
    using toolbox::key::carriageReturn, toolbox::key::enter, toolbox::key::escape;
    Point corner{200, 290};   // outside every item: none is highlighted
    auto open = [&](std::vector<Step> steps) {
        steps.insert(steps.begin(), release(corner));
        pressAt(corner, steps);
        return LoWord(PopUpMenuSelect(menu, somewhere.v, somewhere.h, 1));
    };
    EXPECT_EQ(open({key(down), key(carriageReturn)}), 1);
    EXPECT_EQ(open({key(down), key(down), key(down), key(enter)}), 5) << "skipping those that cannot be chosen";
    EXPECT_EQ(open({key(up), key(carriageReturn)}), 5) << "wraps around";
    EXPECT_EQ(open({key(carriageReturn)}), 0) << "nothing is highlighted";
    EXPECT_EQ(open({key(down), key(escape)}), 0);
    EXPECT_EQ(open({key(down), key('.', cmdKey)}), 0);
    EXPECT_EQ(open({key(down), key('.'), key(carriageReturn)}), 1) << "a key that means nothing";
    EXPECT_EQ(LoWord(select(somewhere, 1, {release(somewhere), key(down), key(carriageReturn)})), 2)
        << "from the item under the mouse";
}

TEST_F(MenuPopup, ArrowKeysScrollToWhatDoesNotShow)
{
    MenuHandle tall = NewMenu(201, P(""));
    for (int i = 1; i <= 60; ++i)
        AppendMenu(tall, P("Item " + std::to_string(i)));
    menu = tall;
    bool shown = false;
    Point beside{200, 290};
    pressAt(beside, {release(beside), key(toolbox::key::upArrow), after([&] {
                         Rect last = rowOf(60);
                         shown = !EmptyRect(&last) && isInverted(last);
                     }, key(toolbox::key::carriageReturn))});
    EXPECT_EQ(LoWord(PopUpMenuSelect(menu, somewhere.v, somewhere.h, 1)), 60);
    EXPECT_TRUE(shown);
}

TEST_F(MenuPopup, KeysTypedWhileTheButtonIsHeldBecomeEvents)
{
    select(somewhere, 1, {key('a'), overItem(Input::Kind::mouseUp, 2)});
    EventRecord event;
    ASSERT_TRUE(GetNextEvent(1 << keyDown, &event));
    EXPECT_EQ(event.message & charCodeMask, static_cast<unsigned>('a'));
}

TEST_F(MenuPopup, WishToQuitClosesItWithNothingChosen)
{
    Input quit{Input::Kind::quit};
    auto wish = [=] { return quit; };
    EXPECT_EQ(select(somewhere, 1, {overItem(Input::Kind::mouseMoved, 2), wish}), 0);
    restart();
    makeMenu("One;Two");
    EXPECT_EQ(select(somewhere, 1, {release(somewhere), wish}), 0);
}

TEST_F(MenuPopup, ChangeOfTheDisplaysClosesIt)
{
    EXPECT_EQ(select(somewhere, 1, {[&]() -> std::optional<Input> {
                  machine.setDisplays({{{0, 0, 300, 400}, 1}});
                  return std::nullopt;
              }}),
              0);
    toolbox::Picture after = toolbox::displayPicture(0);
    EXPECT_EQ(after.width, 400);
    Rect where{190, 290, 280, 380};
    int dark = darkPixels(after, where);
    EXPECT_EQ(dark, 90 * 90 / 2) << "only the desktop's grey is there";
}

TEST_F(MenuPopup, EmptyMenuOpensNothing)
{
    MenuHandle empty = NewMenu(7, P(""));
    EXPECT_EQ(PopUpMenuSelect(empty, 100, 100, 1), 0);
    EXPECT_EQ(PopUpMenuSelect(nullptr, 100, 100, 1), 0);
    EXPECT_TRUE(trace.empty());
}

TEST_F(MenuPopup, ClosesWhenTrackingIsCutShort)
{
    struct Stopped {};
    toolbox::Picture before = toolbox::displayPicture(0);
    EXPECT_THROW(select(somewhere, 1, {[]() -> std::optional<Input> { throw Stopped{}; }}), Stopped);
    EXPECT_FALSE(toolbox::menus::openMenu());
    EXPECT_EQ(toolbox::displayPicture(0).pixels, before.pixels);
}

// Where there is no room for the menu at the place of its current item, another one is under the mouse.
TEST_F(MenuPopup, PressHeldInOnePlaceChoosesNoOtherItem)
{
    const Point low{475, 300};
    EXPECT_EQ(select(low, 1, {holding(60, release(low))}), 0);
    EXPECT_TRUE(traced("popup 200 gave nothing"));
    EXPECT_EQ(LoWord(select(low, 1, {overItem(Input::Kind::mouseMoved, 2),
                                     holding(60, overItem(Input::Kind::mouseUp, 5))})),
              5)
        << "but one that has moved";
}

}  // namespace
