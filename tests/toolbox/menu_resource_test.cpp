// Menus that come from a resource file.
#include "support/toolbox_test.h"

#include "toolbox/memory.h"
#include "toolbox/menus.h"
#include "toolbox/resources.h"

namespace {

class MenuResource : public ToolboxTest {
protected:
    void openFileWithMenu()
    {
        int16_t wd = *toolbox::folders::workingDirectory(folder.path());
        HCreateResFile(wd, 0, P("menus"));
        file = HOpenResFile(wd, 0, P("menus"), 0);
        ASSERT_NE(file, -1);
        MenuHandle made = NewMenu(300, P("From file"));
        AppendMenu(made, P("One;Two"));
        AddResource(made, 'MENU', 300, P("named"));
        UpdateResFile(file);
        ReleaseResource(made);
    }
    static std::string text(MenuHandle menu, int16_t item)
    {
        Str255 text;
        GetItem(menu, item, text);
        return plain(text);
    }
    int16_t file = -1;
};

TEST_F(MenuResource, ChangesStayUntilReleased)
{
    openFileWithMenu();
    MenuHandle menu = GetMenu(300);
    ASSERT_NE(menu, nullptr);
    SetItem(menu, 1, P("One, made much longer"));
    EXPECT_EQ(GetMenu(300), menu);
    EXPECT_EQ(text(menu, 1), "One, made much longer");
    EXPECT_EQ(text(menu, 2), "Two");
    ReleaseResource(menu);
    menu = GetMenu(300);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(text(menu, 1), "One");
    ReleaseResource(menu);
    CloseResFile(file);
}

TEST_F(MenuResource, MissingMenuIsNil)
{
    EXPECT_EQ(GetMenu(300), nullptr);
    openFileWithMenu();
    EXPECT_EQ(GetMenu(301), nullptr);
    CloseResFile(file);
}

TEST_F(MenuResource, BytesThatAreNotAMenuAreRefused)
{
    openFileWithMenu();
    AddResource(NewHandleClear(5), 'MENU', 302, P(""));
    EXPECT_EQ(GetMenu(302), nullptr);
    CloseResFile(file);
}

TEST_F(MenuResource, NamesOfResourcesBecomeItemsInOrder)
{
    openFileWithMenu();
    AddResource(NewHandle(1), 'Zoo ', 1, P("zebra"));
    AddResource(NewHandle(1), 'Zoo ', 2, P("ape"));
    AddResource(NewHandle(1), 'Zoo ', 3, P(".hidden"));
    AddResource(NewHandle(1), 'Zoo ', 4, P("%hidden"));
    AddResource(NewHandle(1), 'Zoo ', 5, P(""));
    AddResource(NewHandle(1), 'Zoo ', 6, P("lion;tiger"));
    MenuHandle menu = NewMenu(1, P("Zoo"));
    AddResMenu(menu, 'Zoo ');
    ASSERT_EQ(CountMItems(menu), 3);
    EXPECT_EQ(text(menu, 1), "ape");
    EXPECT_EQ(text(menu, 2), "lion;tiger");
    EXPECT_EQ(text(menu, 3), "zebra");
    DisposeMenu(menu);
    CloseResFile(file);
}

}  // namespace
