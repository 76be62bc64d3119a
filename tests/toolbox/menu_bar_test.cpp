// The menu bar: what it shows, and what is chosen from it.
#include "menu_hand.h"

#include "toolbox/host/menu_bar.h"
#include "toolbox/keys.h"
#include "toolbox/quickdraw.h"
#include "toolbox/windows.h"

namespace {

using toolbox::menus::Title;
using toolbox::menus::titles;

class MenuBar : public MenuTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        file = addMenu(129, "File", "Open.../O;-;(Close/W;Quit/Q");
        edit = addMenu(130, "Edit", "Cut/X;Copy/C");
        DrawMenuBar();
        trace.clear();
    }
    static MenuHandle addMenu(int16_t id, const std::string &title, const std::string &items, int16_t before = 0)
    {
        MenuHandle menu = NewMenu(id, P(title));
        AppendMenu(menu, P(items));
        InsertMenu(menu, before);
        return menu;
    }
    static Rect placeOf(int16_t id)
    {
        for (const Title &title : titles())
            if (title.id == id)
                return title.place;
        return {};
    }
    static Point onTitle(int16_t id) { return middle(placeOf(id)); }
    int32_t select(Point where, std::vector<Step> steps)
    {
        pressAt(where, std::move(steps));
        return MenuSelect(where);
    }
    static std::vector<int16_t> order()
    {
        std::vector<int16_t> ids;
        for (const Title &title : titles())
            ids.push_back(title.id);
        return ids;
    }

    MenuHandle file = nullptr, edit = nullptr;
};

TEST_F(MenuBar, InsertMenuKeepsTheOrderAskedFor)
{
    addMenu(131, "First", "x", 129);
    addMenu(132, "Last", "x", 0);
    addMenu(133, "NotThere", "x", 99);
    addMenu(134, "PopUp", "x", -1);
    addMenu(129, "Again", "x", 0);
    EXPECT_EQ(order(), (std::vector<int16_t>{131, 129, 130, 132, 133}));
    EXPECT_NE(GetMHandle(134), nullptr);
    DeleteMenu(129);
    EXPECT_EQ(order(), (std::vector<int16_t>{131, 130, 132, 133}));
    ClearMenuBar();
    EXPECT_TRUE(order().empty());
    EXPECT_NE(GetMHandle(134), nullptr) << "pop-up menus stay";
}

TEST_F(MenuBar, TitlesAreInTheBarAndAreRedrawnWithTheDisplays)
{
    toolbox::Picture drawn = toolbox::displayPicture(0);
    EXPECT_GT(darkPixels(drawn, placeOf(129)), 20);
    EXPECT_GT(darkPixels(drawn, placeOf(130)), 20);
    EXPECT_EQ(darkPixels(drawn, {19, 0, 20, 640}), 640) << "the line below";
    machine.setDisplays({{{0, 0, 480, 640}, 1}});
    EventRecord event;
    GetNextEvent(everyEvent, &event);
    EXPECT_GT(darkPixels(toolbox::displayPicture(0), placeOf(130)), 20);
}

TEST_F(MenuBar, TitleOfADisabledMenuIsDimmed)
{
    int plain = darkPixels(toolbox::displayPicture(0), placeOf(129));
    DisableItem(file, 0);
    DrawMenuBar();
    EXPECT_LT(darkPixels(toolbox::displayPicture(0), placeOf(129)), plain);
}

TEST_F(MenuBar, FindWindowKnowsTheBar)
{
    WindowPtr window;
    EXPECT_EQ(FindWindow(onTitle(129), &window), inMenuBar);
    EXPECT_EQ(window, nullptr);
}

TEST_F(MenuBar, PressDragReleaseChooses)
{
    int32_t result = select(onTitle(129), {overItem(Input::Kind::mouseMoved, 1),
                                           after([] {
                                               EXPECT_TRUE(isInverted(placeOf(129)));
                                               EXPECT_TRUE(isInverted(rowOf(1)));
                                           }, overItem(Input::Kind::mouseUp, 4))});
    EXPECT_EQ(HiWord(result), 129);
    EXPECT_EQ(LoWord(result), 4);
    EXPECT_EQ(trace, (std::vector<std::string>{"menu 129 opened", "menu 129 gave 4"}));
    EXPECT_TRUE(isInverted(placeOf(129))) << "until the command has been carried out";
    HiliteMenu(0);
    EXPECT_FALSE(isInverted(placeOf(129)));
}

TEST_F(MenuBar, MenuHangsFromTheBarAndVanishesCompletely)
{
    toolbox::Picture before = toolbox::displayPicture(0);
    Rect first{};
    EXPECT_EQ(select(onTitle(130), {after([&] { first = rowOf(1); }, release({300, 300}))}), 0);
    EXPECT_EQ(first.top, 20);
    EXPECT_EQ(first.left, placeOf(130).left + 1);
    EXPECT_EQ(toolbox::displayPicture(0).pixels, before.pixels);
    EXPECT_EQ(trace, (std::vector<std::string>{"menu 130 opened", "menu 130 gave nothing"}));
}

TEST_F(MenuBar, DisabledItemsAndDividersGiveNothing)
{
    EXPECT_EQ(select(onTitle(129), {overItem(Input::Kind::mouseUp, 2)}), 0);
    EXPECT_EQ(select(onTitle(129), {overItem(Input::Kind::mouseUp, 3)}), 0);
    EXPECT_FALSE(isInverted(placeOf(129)));
}

TEST_F(MenuBar, DraggingAlongTheBarOpensEachMenu)
{
    toolbox::Picture before = toolbox::displayPicture(0);
    int32_t result = select(onTitle(129), {moveTo(onTitle(130)),
                                           after([] {
                                               EXPECT_EQ(toolbox::menus::openMenu()->id, 130);
                                               EXPECT_FALSE(isInverted(placeOf(129)));
                                           }, overItem(Input::Kind::mouseUp, 2))});
    EXPECT_EQ(HiWord(result), 130);
    EXPECT_EQ(LoWord(result), 2);
    EXPECT_EQ(trace, (std::vector<std::string>{"menu 129 opened", "menu 130 opened", "menu 130 gave 2"}));
    HiliteMenu(0);
    EXPECT_EQ(toolbox::displayPicture(0).pixels, before.pixels);
}

TEST_F(MenuBar, ClickOnATitleLeavesItsMenuOpen)
{
    Point title = onTitle(129);
    EXPECT_EQ(LoWord(select(title, {release(title), overItem(Input::Kind::mouseDown, 1),
                                    overItem(Input::Kind::mouseUp, 1)})),
              1);
    EXPECT_EQ(LoWord(select(title, {holding(600, release(title)), overItem(Input::Kind::mouseDown, 1),
                                    overItem(Input::Kind::mouseUp, 1)})),
              1)
        << "however long it took, the mouse never left the title";
}

TEST_F(MenuBar, LookingAndComingBackClosesIt)
{
    Point title = onTitle(129);
    EXPECT_EQ(select(title, {overItem(Input::Kind::mouseMoved, 1), moveTo(title), release(title)}), 0);
    EXPECT_EQ(select(title, {moveTo(onTitle(130)), holding(60, moveTo(title)), release(title)}), 0);
    EXPECT_EQ(select(title, {moveTo(onTitle(130)), release(onTitle(130))}), 0);
}

TEST_F(MenuBar, OpenMenuFollowsTheMouseAndClicksOnTitles)
{
    Point title = onTitle(129), other = onTitle(130);
    EXPECT_EQ(select(title, {release(title), press(title)}), 0) << "the same title closes it";
    EXPECT_EQ(select(title, {release(title), press({10, 600})}), 0);
    int32_t result = select(title, {release(title), moveTo(other), press({40, 500})});
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(traced("menu 130 gave nothing"));
    result = select(title, {release(title), press(other), release(other), overItem(Input::Kind::mouseDown, 1),
                            overItem(Input::Kind::mouseUp, 1)});
    EXPECT_EQ(HiWord(result), 130);
    result = select(title, {release(title), press(other), overItem(Input::Kind::mouseUp, 2)});
    EXPECT_EQ(LoWord(result), 2) << "dragged from the second title";
}

TEST_F(MenuBar, KeysMoveThroughOpenMenus)
{
    constexpr std::uint8_t left = toolbox::key::leftArrow, right = toolbox::key::rightArrow;
    constexpr std::uint8_t down = toolbox::key::downArrow;
    using toolbox::key::carriageReturn, toolbox::key::escape;
    Point title = onTitle(129);
    int32_t result = select(title, {release(title), key(down), key(down), key(carriageReturn)});
    EXPECT_EQ(LoWord(result), 4);
    result = select(title, {release(title), key(right), key(down), key(carriageReturn)});
    EXPECT_EQ(HiWord(result), 130);
    EXPECT_EQ(LoWord(result), 1);
    result = select(title, {release(title), key(left), key(down), key(carriageReturn)});
    EXPECT_EQ(HiWord(result), 130) << "wraps around";
    EXPECT_EQ(select(title, {release(title), key(escape)}), 0);
    EXPECT_FALSE(isInverted(title.h ? placeOf(129) : Rect{}));
}

TEST_F(MenuBar, PressBesideTheTitlesOpensTheOneItIsDraggedTo)
{
    EXPECT_EQ(select({10, 600}, {release({10, 600})}), 0);
    EXPECT_TRUE(trace.empty());
    EXPECT_EQ(LoWord(select({10, 600}, {moveTo(onTitle(130)), overItem(Input::Kind::mouseUp, 2)})), 2);
}

TEST_F(MenuBar, MenuWithoutItemsOnlyInvertsItsTitle)
{
    addMenu(140, "Empty", "");
    MenuHandle empty = NewMenu(141, P("None"));
    InsertMenu(empty, 0);
    DrawMenuBar();
    bool inverted = false;
    EXPECT_EQ(select(onTitle(141), {after([&] { inverted = isInverted(placeOf(141)); }, release({200, 200}))}), 0);
    EXPECT_TRUE(inverted);
}

TEST_F(MenuBar, MenuKeyFindsEnabledItemsWhateverTheCase)
{
    EXPECT_EQ(MenuKey('q'), 129 << 16 | 4);
    EXPECT_TRUE(isInverted(placeOf(129)));
    EXPECT_EQ(trace, (std::vector<std::string>{"menu 129 gave 4"}));
    EXPECT_EQ(MenuKey('C'), 130 << 16 | 2);
    EXPECT_FALSE(isInverted(placeOf(129)));
    HiliteMenu(0);
    EXPECT_EQ(MenuKey('w'), 0) << "disabled";
    EXPECT_EQ(MenuKey('z'), 0);
    EXPECT_EQ(MenuKey(0), 0);
    DisableItem(edit, 0);
    EXPECT_EQ(MenuKey('C'), 0);
}

TEST_F(MenuBar, KeysAreShownRightOfTheTexts)
{
    int keyed = 0, plain = 0, dark = 0;
    auto widthOf = [&](int16_t id, int &width) {
        select(onTitle(id), {after([&] {
                                 Rect row = rowOf(1);
                                 width = row.right - row.left;
                                 row.left = static_cast<int16_t>(row.right - 40);
                                 dark = darkPixels(toolbox::displayPicture(0), row);
                             }, release({300, 300}))});
    };
    addMenu(140, "Plain", "Open...");
    DrawMenuBar();
    widthOf(140, plain);
    widthOf(129, keyed);
    EXPECT_GT(keyed, plain + 40);
    EXPECT_GT(dark, 10);
}

TEST_F(MenuBar, WishToQuitClosesWhatIsOpen)
{
    Point title = onTitle(129);
    toolbox::Picture before = toolbox::displayPicture(0);
    EXPECT_EQ(select(title, {release(title), [] { return Input{.kind = Input::Kind::quit}; }}), 0);
    EXPECT_EQ(toolbox::displayPicture(0).pixels, before.pixels);
}

class MenuBarKeys : public MenuBar {
protected:
    // The key opens a menu, and then the steps come.
    std::optional<std::int32_t> selectByKey(int character, int modifiers, std::vector<Step> steps, int code = 0)
    {
        machine.push({.kind = Input::Kind::keyDown,
                      .character = static_cast<std::uint8_t>(character),
                      .keyCode = static_cast<std::uint8_t>(code),
                      .modifiers = static_cast<std::uint16_t>(modifiers)});
        EventRecord event;
        EXPECT_TRUE(GetNextEvent(1 << keyDown, &event));
        auto next = std::make_shared<std::size_t>(0);
        machine.setSource([steps, next]() -> std::optional<Input> {
            return *next < steps.size() ? steps[(*next)++]() : std::nullopt;
        });
        return toolbox::menuSelectByKey(event);
    }
    static constexpr int f10 = 0x6D, f9 = 0x65;
};

TEST_F(MenuBarKeys, OptionAndALetterOpenTheMenuWhoseTitleBeginsSo)
{
    namespace key = toolbox::key;
    const auto chosen = selectByKey('e', optionKey, {MenuTest::key(key::downArrow), MenuTest::key(key::carriageReturn)});
    ASSERT_TRUE(chosen);
    EXPECT_EQ(HiWord(*chosen), 130);
    EXPECT_EQ(LoWord(*chosen), 2) << "the first item was highlighted already";
    EXPECT_TRUE(traced("menu 130 opened"));
    EXPECT_EQ(selectByKey('F', optionKey, {MenuTest::key(key::escape)}), 0) << "nothing chosen";
    EXPECT_FALSE(isInverted(placeOf(129)));
}

TEST_F(MenuBarKeys, F10OpensTheFirstMenuAndTheArrowsGoOn)
{
    namespace key = toolbox::key;
    const auto chosen = selectByKey(key::function, 0,
                                    {MenuTest::key(key::rightArrow), MenuTest::key(key::carriageReturn)}, f10);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(HiWord(*chosen), 130);
    EXPECT_EQ(LoWord(*chosen), 1);
    EXPECT_EQ(selectByKey(key::function, 0, {MenuTest::key(key::function)}, f10), 0) << "closes it again";
}

TEST_F(MenuBarKeys, TheMouseMayGoOnInAMenuThatAKeyOpened)
{
    const auto chosen = selectByKey('f', optionKey, {press(onTitle(130)), overItem(Input::Kind::mouseUp, 2)});
    ASSERT_TRUE(chosen);
    EXPECT_EQ(HiWord(*chosen), 130);
    EXPECT_EQ(LoWord(*chosen), 2);
}

TEST_F(MenuBarKeys, OtherKeysOpenNone)
{
    EXPECT_FALSE(selectByKey('e', 0, {}));
    EXPECT_FALSE(selectByKey('x', optionKey, {}));
    EXPECT_FALSE(selectByKey('e', optionKey | cmdKey, {}));
    EXPECT_FALSE(selectByKey(toolbox::key::function, 0, {}, f9));
}

}  // namespace
