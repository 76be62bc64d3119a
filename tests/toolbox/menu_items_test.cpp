#include <random>

#include "support/toolbox_test.h"

#include "toolbox/memory.h"
#include "toolbox/menus.h"
#include "toolbox/resources.h"

namespace {

class MenuItems : public ToolboxTest {
protected:
    MenuHandle newMenu(const std::string &items = "")
    {
        MenuHandle menu = NewMenu(200, P("Things"));
        if (!items.empty())
            AppendMenu(menu, P(items));
        return menu;
    }
    static std::string text(MenuHandle menu, int16_t item)
    {
        Str255 text;
        GetItem(menu, item, text);
        return plain(text);
    }
    static std::string bytes(MenuHandle menu)
    {
        return {*menu, static_cast<std::size_t>(GetHandleSize(menu))};
    }
};

TEST_F(MenuItems, ANewMenuIsItsHeadItsTitleAndTheEndOfItsItems)
{
    Handle menu = NewMenu(201, P("New"));
    ASSERT_EQ(GetHandleSize(menu), 14 + 1 + 3 + 1);
    EXPECT_EQ((*menu)[18], 0);
    DisposeMenu(menu);
}

TEST_F(MenuItems, BlockHoldsTheDocumentedBytes)
{
    MenuHandle menu = newMenu("One;(Two/T");
    const std::string expected("\x00\xC8"
                               "\0\0\0\0\0\0\0\0"
                               "\xFF\xFF\xFF\xFB"
                               "\x06Things"
                               "\x03One\0\0\0\0"
                               "\x03Two\0T\0\0"
                               "\0",
                               2 + 8 + 4 + 7 + 8 + 8 + 1);
    EXPECT_EQ(bytes(menu), expected);
    DisposeMenu(menu);
}

TEST_F(MenuItems, AppendUnderstandsItsNotation)
{
    MenuHandle menu = newMenu("Plain;!*Marked<B<S^3\r(-");
    ASSERT_EQ(CountMItems(menu), 3);
    EXPECT_EQ(text(menu, 2), "Marked");
    EXPECT_EQ(text(menu, 3), "-");
    int16_t mark = 0;
    GetItemMark(menu, 2, &mark);
    EXPECT_EQ(mark, '*');
    EXPECT_NE(bytes(menu).find(std::string("Marked\x03\x00*\x11", 10)), std::string::npos);
    DisposeMenu(menu);
}

TEST_F(MenuItems, TextsBeyondTheMenuAreEmptyAndCannotBeSet)
{
    MenuHandle menu = newMenu("One;Two");
    std::string before = bytes(menu);
    for (int16_t item : {-1, 0, 3, 32767}) {
        EXPECT_EQ(text(menu, item), "");
        SetItem(menu, item, P("x"));
        CheckItem(menu, item, true);
    }
    EXPECT_EQ(bytes(menu), before);
    DisposeMenu(menu);
}

TEST_F(MenuItems, SetItemTakesTheTextLiterally)
{
    MenuHandle menu = newMenu("One;Two;Three");
    SetItem(menu, 2, P("(a;b/c"));
    EXPECT_EQ(CountMItems(menu), 3);
    EXPECT_EQ(text(menu, 2), "(a;b/c");
    SetItem(menu, 2, P(std::string(255, 'w')));
    EXPECT_EQ(text(menu, 2), std::string(255, 'w'));
    EXPECT_EQ(text(menu, 3), "Three");
    SetItem(menu, 2, P("2"));
    EXPECT_EQ(text(menu, 1), "One");
    EXPECT_EQ(text(menu, 2), "2");
    EXPECT_EQ(text(menu, 3), "Three");
    DisposeMenu(menu);
}

TEST_F(MenuItems, AnEmptyTextBecomesABlankAndDoesNotEndTheMenu)
{
    MenuHandle menu = newMenu("One;Two;Three");
    SetItem(menu, 2, P(""));
    EXPECT_EQ(CountMItems(menu), 3);
    EXPECT_EQ(text(menu, 2), " ");
    DisposeMenu(menu);
}

TEST_F(MenuItems, CheckingReplacesAnyMark)
{
    MenuHandle menu = newMenu("!*One;Two");
    int16_t mark = 0;
    CheckItem(menu, 1, true);
    GetItemMark(menu, 1, &mark);
    EXPECT_EQ(mark, 0x12);
    CheckItem(menu, 1, false);
    GetItemMark(menu, 1, &mark);
    EXPECT_EQ(mark, 0);
    DisposeMenu(menu);
}

TEST_F(MenuItems, FullMemoryLeavesTheMenuAsItWas)
{
    MenuHandle menu = newMenu("One;Two");
    std::string before = bytes(menu);
    toolbox::faults::failAllocation(1, true);
    SetItem(menu, 1, P(std::string(200, 'x')));
    AppendMenu(menu, P("Three"));
    toolbox::faults::clear();
    EXPECT_EQ(bytes(menu), before);
    DisposeMenu(menu);
}

TEST_F(MenuItems, NilMenuHasNoItems)
{
    EXPECT_EQ(CountMItems(nullptr), 0);
    EXPECT_EQ(text(nullptr, 1), "");
    AppendMenu(nullptr, P("One"));
    InsertMenu(nullptr, -1);
    EnableItem(nullptr, 1);
}

TEST_F(MenuItems, BytesCutShortAreReadOnlyAsFarAsTheyGo)
{
    MenuHandle whole = newMenu("One;Two;Three");
    std::string all = bytes(whole);
    DisposeMenu(whole);
    for (std::size_t size = 0; size <= all.size(); ++size) {
        Handle cut = nullptr;
        ASSERT_EQ(PtrToHand(all.data(), &cut, static_cast<Size>(size)), noErr);
        int16_t count = CountMItems(cut);
        EXPECT_LE(count, 3);
        EXPECT_EQ(text(cut, static_cast<int16_t>(count + 1)), "");
        AppendMenu(cut, P("More"));
        if (CountMItems(cut) > 0)
            SetItem(cut, 1, P("First"));
        DisposeHandle(cut);
    }
}

TEST_F(MenuItems, AnyBytesAreWalkedAndEditedWithinTheBlock)
{
    const unsigned seed = 20261;
    std::mt19937 random(seed);
    for (int turn = 0; turn < 3000; ++turn) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " turn " + std::to_string(turn));
        std::string bytes(random() % 90, '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(random() % (random() % 4 ? 12 : 256));
        Handle block = nullptr;
        ASSERT_EQ(PtrToHand(bytes.data(), &block, static_cast<Size>(bytes.size())), noErr);
        int16_t count = CountMItems(block);
        auto item = static_cast<int16_t>(random() % 6);
        SetItem(block, item, P(std::string(random() % 40, 'x')));
        CheckItem(block, item, true);
        EXPECT_EQ(CountMItems(block), count);
        EXPECT_EQ(text(block, item).empty(), item < 1 || item > count);
        AppendMenu(block, P("New"));
        bool wholeTitle = bytes.size() > 14 && bytes.size() >= 15u + static_cast<unsigned char>(bytes[14]);
        EXPECT_EQ(CountMItems(block), wholeTitle ? count + 1 : 0);
        DisposeHandle(block);
    }
}

TEST_F(MenuItems, ListFindsAMenuByItsNumberUntilDeleted)
{
    MenuHandle menu = newMenu("One");
    EXPECT_EQ(GetMHandle(200), nullptr);
    InsertMenu(menu, -1);
    EXPECT_EQ(GetMHandle(200), menu);
    DeleteMenu(200);
    EXPECT_EQ(GetMHandle(200), nullptr);
    InsertMenu(menu, -1);
    DisposeMenu(menu);
    EXPECT_EQ(GetMHandle(200), nullptr);
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

TEST_F(MenuItems, FontsAreTheInstalledFamiliesInOrder)
{
    MenuHandle menu = newMenu();
    AddResMenu(menu, 'FONT');
    std::vector<std::string> names;
    for (int16_t item = 1; item <= CountMItems(menu); ++item)
        names.push_back(text(menu, item));
    EXPECT_NE(std::find(names.begin(), names.end(), "Nimbus Sans"), names.end());
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
    DisposeMenu(menu);
}

}  // namespace
