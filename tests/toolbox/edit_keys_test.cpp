// Editing a dialog's fields as a person does: keys, mouse, long texts.
#include "support/dialog_resources.h"
#include "support/toolbox_test.h"
#include "toolbox/dialogs.h"
#include "toolbox/events.h"
#include "toolbox/host/user.h"

namespace {

constexpr int16_t fieldsID = 500;
enum { fieldsOk = 1, lineItem = 2, textItem = 3, otherItem = 4 };
constexpr uint16_t shift = shiftKey, command = cmdKey, option = optionKey;

// A dialog with fields of one line, of four lines, and of one line again.
class EditKeys : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        openNewResourceFile(folder.path());
        ItemList()
            .item(ctrlItem + btnCtrl, 200, 150, 70, 20, "OK")
            .item(editText | itemDisable, 20, 10, 100, 16, "one two, three")
            .item(editText | itemDisable, 20, 50, 100, 64, "alpha beta gamma delta epsilon zeta")
            .item(editText | itemDisable, 150, 10, 100, 16, "x")
            .add(fieldsID);
        addDialog(fieldsID, 100, 100, 300, 180);
    }

    // Lets the user act with the field current and the caret at its beginning.
    void edit(int16_t item, const std::function<void()> &steps)
    {
        DialogPtr dialog = GetNewDialog(fieldsID, nullptr, reinterpret_cast<WindowPtr>(-1));
        SelIText(dialog, item, 0, 0);
        ShowWindow(dialog);
        user.then([this, dialog] { text = reinterpret_cast<DialogPeek>(dialog)->textH; });
        steps();
        user.key("return");
        runUntil(dialog, fieldsOk);
        text = nullptr;
    }

    void expectSelection(int start, int end, const std::string &after)
    {
        user.then([=, this] {
            EXPECT_EQ((**text).selStart, start) << after;
            EXPECT_EQ((**text).selEnd, end) << after;
        });
    }
    void expectText(const std::string &wanted, const std::string &after)
    {
        user.then([=, this] {
            EXPECT_EQ(std::string(*(**text).hText, static_cast<std::size_t>((**text).teLength)), wanted) << after;
        });
    }
    // A place in the field, from its top left, in global coordinates.
    static Point at(int16_t item, int h, int v)
    {
        const int left = item == otherItem ? 150 : 20, top = item == textItem ? 50 : 10;
        return {static_cast<int16_t>(100 + top + v), static_cast<int16_t>(100 + left + h)};
    }
    // The place between two characters of the one-line field.
    Point before(int offset)
    {
        const std::string typed = "one two, three";
        return at(lineItem, TextWidth(typed.data(), 0, static_cast<int16_t>(offset)), 8);
    }

    toolbox::ScriptedUser user{machine};
    TEHandle text = nullptr;
    int line = 0;
};

}  // namespace

TEST_F(EditKeys, ShiftAndArrowsExtendFromWhereTheyBegan)
{
    edit(lineItem, [this] {
        user.key("right");
        user.key("right", shift);
        user.key("right", shift);
        expectSelection(1, 3, "two to the right");
        user.key("left", shift);
        expectSelection(1, 2, "one back");
        user.key("left", shift);
        user.key("left", shift);
        expectSelection(0, 1, "across the place where it began");
        user.key("right", shift);
        user.key("right", shift);
        expectSelection(1, 2, "and back across it");
        user.key("right");
        expectSelection(2, 2, "an arrow alone ends it");
    });
}

TEST_F(EditKeys, OptionMovesByWords)
{
    edit(lineItem, [this] {
        user.key("right", option);
        expectSelection(3, 3, "after one");
        user.key("right", option | shift);
        expectSelection(3, 7, "and two");
        user.key("right", option);
        expectSelection(14, 14, "across comma and blank");
        user.key("left", option);
        expectSelection(9, 9, "in front of three");
        user.key("left", option | shift);
        expectSelection(4, 9, "in front of two");
    });
}

TEST_F(EditKeys, HomeEndAndCommandMoveToTheEnds)
{
    edit(lineItem, [this] {
        user.key("end");
        expectSelection(14, 14, "end");
        user.key("home", shift);
        expectSelection(0, 14, "home, extending");
        user.key("right", command);
        expectSelection(14, 14, "command right");
        user.key("left", command);
        expectSelection(0, 0, "command left");
        user.key("down", command | shift);
        expectSelection(0, 14, "command down, extending");
    });
}

TEST_F(EditKeys, LinesHaveTheirOwnEnds)
{
    edit(textItem, [this] {
        user.key("down");
        user.key("end");
        user.then([this] {
            line = (**text).selStart;
            EXPECT_GT(line, 10) << "the second line's end";
            EXPECT_LT(line, 30);
        });
        user.key("home");
        user.then([this] { EXPECT_LT((**text).selStart, line); });
        user.then([this] { EXPECT_GT((**text).selStart, 0) << "its beginning, not the text's"; });
        user.key("home", command);
        expectSelection(0, 0, "the text's");
        user.key("end", command);
        expectSelection(35, 35, "the text's end");
    });
}

TEST_F(EditKeys, ForwardDeleteRemovesWhatFollows)
{
    edit(lineItem, [this] {
        user.key("delete");
        expectText("ne two, three", "one character");
        user.key("right", option | shift);
        user.key("delete");
        expectText(" two, three", "the selection");
        user.key("end");
        user.key("delete");
        expectText(" two, three", "nothing follows the end");
    });
}

TEST_F(EditKeys, TabGoesForwardAndWithShiftBack)
{
    auto expectField = [this](int16_t item) {
        user.then([=] {
            auto *dialog = reinterpret_cast<DialogPeek>(FrontWindow());
            EXPECT_EQ(dialog->editField + 1, item);
            EXPECT_EQ((**dialog->textH).selEnd, (**dialog->textH).teLength) << "all of it is selected";
        });
    };
    edit(lineItem, [&] {
        user.key("tab");
        expectField(textItem);
        user.key("tab", shift);
        expectField(lineItem);
        user.key("tab", shift);
        expectField(otherItem);
        user.key("tab");
        expectField(lineItem);
    });
}

TEST_F(EditKeys, ADoubleClickSelectsAWordAndDraggingMoreWords)
{
    edit(lineItem, [this] {
        user.clickAt(before(5));
        user.clickAt(before(5));
        expectSelection(4, 7, "a word");
        user.wait(60);
        user.clickAt(before(5));
        user.drag(before(5), before(11));
        expectSelection(4, 14, "dragged into the next word");
        user.wait(60);
        user.clickAt(before(10));
        user.drag(before(10), before(1));
        expectSelection(0, 14, "dragged back into the first one");
    });
}

TEST_F(EditKeys, ShiftAndAClickExtend)
{
    edit(lineItem, [this] {
        user.clickAt(before(4));
        user.clickAt(before(7), shift);
        expectSelection(4, 7, "to the right");
        user.key("right", shift);
        expectSelection(4, 8, "and further by key");
        user.wait(60);
        user.clickAt(before(1), shift);
        expectSelection(1, 8, "the nearer end moves");
    });
}

TEST_F(EditKeys, ALongLineScrollsSideways)
{
    edit(lineItem, [this] {
        user.key("end");
        user.type(" and then quite some more words");
        user.then([this] { EXPECT_GT((**text).scroll.h, 0); });
        user.key("home");
        user.then([this] { EXPECT_EQ((**text).scroll.h, 0) << "back at the beginning"; });
        user.key("end", shift);
        user.then([this] { EXPECT_GT((**text).scroll.h, 0) << "the moving end is shown"; });
        user.key("left", shift);
        user.key("left", command | shift);
        user.then([this] { EXPECT_EQ((**text).scroll.h, 0) << "the moving end is the first character"; });
    });
}

TEST_F(EditKeys, DraggingOutOfALongLineScrollsIt)
{
    edit(lineItem, [this] {
        user.key("end");
        user.type(" and then quite some more words");
        user.key("home");
        user.pressAt(before(4));
        user.moveTo(at(lineItem, 150, 8));
        user.wait(2);
        user.then([this] { EXPECT_LT((**text).selEnd, 40) << "not immediately to the end"; });
        user.wait(120);
        expectSelection(4, 45, "all the rest has scrolled by");
        user.moveTo(at(lineItem, -30, 8));
        user.wait(120);
        expectSelection(0, 4, "and back to the beginning");
        user.then([this] { EXPECT_EQ((**text).scroll.h, 0); });
        user.release();
    });
}

TEST_F(EditKeys, DraggingOutOfALongTextScrollsIt)
{
    edit(textItem, [this] {
        user.key("end", command);
        user.type("\nfive\nsix\nseven\neight\nnine");
        user.key("home", command);
        user.pressAt(at(textItem, 2, 8));
        user.moveTo(at(textItem, 50, 200));
        user.wait(2);
        user.then([this] { EXPECT_LT((**text).scroll.v, 40) << "line by line"; });
        user.wait(120);
        user.then([this] {
            EXPECT_EQ((**text).selEnd, (**text).teLength);
            EXPECT_GT((**text).scroll.v, 40);
        });
        user.releaseAt(at(textItem, 50, 30));
        user.then([this] { EXPECT_LT((**text).selEnd, (**text).teLength) << "where it was released"; });
    });
}

TEST_F(EditKeys, ControlCharactersAreNotTyped)
{
    edit(lineItem, [this] {
        user.key("escape");
        user.key("\x05");
        expectText("one two, three", "keys that mean nothing here");
    });
}
