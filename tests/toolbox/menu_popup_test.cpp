// PopUpMenuSelect: where the menu lies, how it looks, and what it gives.
#include "support/toolbox_test.h"

#include "menus/open_menu.h"
#include "quickdraw/port.h"
#include "toolbox/events.h"
#include "toolbox/host/picture.h"
#include "toolbox/menus.h"
#include "toolbox/quickdraw.h"

namespace {

using toolbox::Input;

class MenuPopup : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        makeMenu("One;Two;(Three;-;Five");
    }
    void TearDown() override
    {
        machine.setSource({});
        ToolboxTest::TearDown();
    }
    void makeMenu(const std::string &items)
    {
        menu = NewMenu(200, P(""));
        AppendMenu(menu, P(items));
        InsertMenu(menu, -1);
    }

    // Holds the button down, opens the menu with the item at the point, and
    // carries out what is given once it is open: each answers the next input.
    using Step = std::function<std::optional<Input>()>;
    int32_t select(Point where, int16_t item, std::vector<Step> steps)
    {
        machine.push(mouse(Input::Kind::mouseDown, where));
        EventRecord event;
        EXPECT_TRUE(GetNextEvent(1 << mouseDown, &event));
        auto next = std::make_shared<std::size_t>(0);
        machine.setSource([steps, next]() -> std::optional<Input> {
            return *next < steps.size() ? steps[(*next)++]() : std::nullopt;
        });
        return PopUpMenuSelect(menu, where.v, where.h, item);
    }
    static Input mouse(Input::Kind kind, Point where)
    {
        Input input{kind};
        input.where = where;
        return input;
    }
    static Point middle(const Rect &r)
    {
        return {static_cast<int16_t>((r.top + r.bottom) / 2), static_cast<int16_t>((r.left + r.right) / 2)};
    }
    static Rect rowOf(int item) { return toolbox::menus::openMenu()->items.at(static_cast<std::size_t>(item - 1)); }
    static Step overItem(Input::Kind kind, int item)
    {
        return [=] { return mouse(kind, middle(rowOf(item))); };
    }
    static Step release(Point where)
    {
        return [=] { return mouse(Input::Kind::mouseUp, where); };
    }
    static int darkPixels(const toolbox::Picture &picture, const Rect &r)
    {
        int dark = 0;
        for (int v = r.top; v < r.bottom; ++v)
            for (int h = r.left; h < r.right; ++h)
                dark += picture.pixels[static_cast<std::size_t>(v * picture.width + h)] == 0;
        return dark;
    }

    MenuHandle menu = nullptr;
    static constexpr Point somewhere{200, 300};
};

TEST_F(MenuPopup, AnswersMenuAndItemReleasedOver)
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

TEST_F(MenuPopup, StaysOnTheScreenThatHoldsThePoint)
{
    machine.setScreens({{{0, 0, 480, 640}, 8}, {{100, 640, 400, 1040}, 8}});
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
            EXPECT_EQ(rows.front().top, 101) << "only the main screen has a menu bar";
        }
        EXPECT_GT(rows.front().left, second ? 640 : 0);
        EXPECT_LT(rows.back().bottom, second ? 400 : 480);
        EXPECT_LT(rows.back().right, second ? 1040 : 640);
    }
}

TEST_F(MenuPopup, CoversAndRestoresTheScreen)
{
    toolbox::Picture before = toolbox::screenPicture(0), open;
    select(somewhere, 1, {[&] {
               open = toolbox::screenPicture(0);
               return mouse(Input::Kind::mouseUp, {5, 5});
           }});
    EXPECT_NE(open.pixels, before.pixels);
    EXPECT_EQ(toolbox::screenPicture(0).pixels, before.pixels);
}

TEST_F(MenuPopup, RowUnderTheMouseIsInverted)
{
    int plain = 0, inverted = 0, area = 0;
    select(somewhere, 1,
           {overItem(Input::Kind::mouseMoved, 5),
            [&] {
                plain = darkPixels(toolbox::screenPicture(0), rowOf(2));
                return mouse(Input::Kind::mouseMoved, middle(rowOf(2)));
            },
            [&] {
                Rect row = rowOf(2);
                area = (row.right - row.left) * (row.bottom - row.top);
                inverted = darkPixels(toolbox::screenPicture(0), row);
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
                   dark = darkPixels(toolbox::screenPicture(0), column);
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
    toolbox::quickdraw::PortInUse port(toolbox::quickdraw::desktopPort());
    TextFont(systemFont);
    TextSize(12);
    TextFace(normal);
    EXPECT_GE(width, StringWidth(P(std::string(30, 'W'))) + 14);
}

TEST_F(MenuPopup, MenuHigherThanTheScreenScrolls)
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

TEST_F(MenuPopup, EmptyMenuOpensNothing)
{
    MenuHandle empty = NewMenu(7, P(""));
    EXPECT_EQ(PopUpMenuSelect(empty, 100, 100, 1), 0);
    EXPECT_EQ(PopUpMenuSelect(nullptr, 100, 100, 1), 0);
    EXPECT_TRUE(trace.empty());
}

TEST_F(MenuPopup, ClosesWhenTrackingIsBrokenOff)
{
    struct Stopped {};
    toolbox::Picture before = toolbox::screenPicture(0);
    EXPECT_THROW(select(somewhere, 1, {[]() -> std::optional<Input> { throw Stopped{}; }}), Stopped);
    EXPECT_FALSE(toolbox::menus::openMenu());
    EXPECT_EQ(toolbox::screenPicture(0).pixels, before.pixels);
}

}  // namespace
