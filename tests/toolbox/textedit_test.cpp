// TextEdit: typing, selecting, the private scrap, boxes of text.
#include "support/dialog_test.h"
#include "textedit/selecting.h"
#include "toolbox/host/picture.h"
#include "toolbox/memory.h"
#include "toolbox/scrap.h"

using Kind = toolbox::Input::Kind;

namespace {

class TextEdit : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        Rect bounds{100, 100, 300, 400};
        window = NewWindow(nullptr, &bounds, P(""), true, plainDBox, reinterpret_cast<WindowPtr>(-1), false, 0);
        SetPort(window);
    }

    TEHandle make(const std::string &content, int width = 200, int height = 100)
    {
        Rect box{10, 10, static_cast<int16_t>(10 + height), static_cast<int16_t>(10 + width)};
        TEHandle text = TENew(&box, &box);
        TESetText(content.data(), static_cast<int32_t>(content.size()), text);
        TEActivate(text);
        return text;
    }

    static std::string content(TEHandle text)
    {
        EXPECT_EQ(GetHandleSize((**text).hText), (**text).teLength);
        return std::string(*(**text).hText, static_cast<size_t>((**text).teLength));
    }

    static std::pair<int, int> selection(TEHandle text) { return {(**text).selStart, (**text).selEnd}; }

    static void keys(TEHandle text, const std::string &typed)
    {
        for (char character : typed)
            TEKey(static_cast<unsigned char>(character), text);
    }

    int widthOf(const std::string &text) { return TextWidth(text.data(), 0, static_cast<int16_t>(text.size())); }

    // Pixels of the window that are not white, between two columns (local).
    static int inkedFrom(int left, int right)
    {
        const toolbox::Picture picture = toolbox::displayPicture(0);
        int inked = 0;
        for (int v = 100; v < 300; ++v)
            for (int h = left + 100; h < right + 100; ++h)
                inked += picture.pixels[static_cast<size_t>(v) * picture.width + h] != 0xFFFFFF;
        return inked;
    }

    // A press as the Dialog Manager passes it on: taken from the queue first.
    void press(TEHandle text, int h, int v, int toH = -1, bool extend = false)
    {
        mouse(Kind::mouseDown, h + 100, v + 100);
        EventRecord event;
        WaitNextEvent(1 << mouseDown, &event, 1);
        if (toH >= 0)
            mouse(Kind::mouseMoved, toH + 100, v + 100);
        mouse(Kind::mouseUp, (toH >= 0 ? toH : h) + 100, v + 100);
        TEClick(Point{static_cast<int16_t>(v), static_cast<int16_t>(h)}, extend, text);
    }

    WindowPtr window = nullptr;
};

TEST_F(TextEdit, WhatFindsNoMemoryIsNotedByABeep)
{
    TEHandle text = make("ab");
    toolbox::faults::failAllocation(1);
    keys(text, "c");
    EXPECT_EQ(machine.beeps(), 1);
    TESetSelect(0, 2, text);
    TECopy(text);
    TESetSelect(2, 2, text);
    toolbox::faults::failAllocation(1);
    TEPaste(text);
    EXPECT_EQ(machine.beeps(), 2);
    EXPECT_EQ(content(text), "ab");
    TEDispose(text);
}

TEST_F(TextEdit, WhatWasCopiedIsNotPastedInThePlaceOfANewerClipboard)
{
    TEHandle text = make("old");
    TESetSelect(0, 3, text);
    TECopy(text);
    machine.putOnClipboard("longer than before");
    toolbox::faults::failAllocation(2);  // the first is the desk scrap's
    EXPECT_EQ(TEFromScrap(), memFullErr);
    EXPECT_EQ(machine.beeps(), 1);
    EXPECT_EQ(TEGetScrapLength(), 0);
    TEDispose(text);
}

}  // namespace

TEST_F(TextEdit, TypingInsertsAtTheCaretAndReplacesASelection)
{
    TEHandle text = make("");
    keys(text, "spot");
    EXPECT_EQ(content(text), "spot");
    TESetSelect(1, 3, text);
    keys(text, "X");
    EXPECT_EQ(content(text), "sXt");
    EXPECT_EQ(selection(text), (std::pair{2, 2}));
}

TEST_F(TextEdit, BackspaceRemovesTheSelectionOrTheCharacterBefore)
{
    TEHandle text = make("abcdef");
    keys(text, "\b");
    EXPECT_EQ(content(text), "abcde");
    TESetSelect(1, 3, text);
    keys(text, "\b");
    EXPECT_EQ(content(text), "ade");
    TESetSelect(0, 0, text);
    keys(text, "\b");
    EXPECT_EQ(content(text), "ade");
}

TEST_F(TextEdit, ASelectionIsLimitedToTheText)
{
    TEHandle text = make("abc");
    TESetSelect(0, 32767, text);
    EXPECT_EQ(selection(text), (std::pair{0, 3}));
    TESetSelect(-5, 1, text);
    EXPECT_EQ(selection(text), (std::pair{0, 1}));
    TESetSelect(9, 2, text);
    EXPECT_EQ(selection(text), (std::pair{3, 3}));
}

TEST_F(TextEdit, ArrowsMoveTheCaret)
{
    TEHandle text = make("abc\rdef");
    keys(text, "\x1C");
    EXPECT_EQ(selection(text), (std::pair{6, 6}));
    keys(text, "\x1E");
    EXPECT_EQ(selection(text).first, 2);
    keys(text, "\x1F");
    EXPECT_EQ(selection(text).first, 6);
    keys(text, "\x1D\x1D\x1D");
    EXPECT_EQ(selection(text), (std::pair{7, 7}));
    TESetSelect(1, 3, text);
    keys(text, "\x1C");
    EXPECT_EQ(selection(text), (std::pair{1, 1})) << "a selection collapses to that side";
}

TEST_F(TextEdit, APressSetsTheCaretAndADragSelects)
{
    TEHandle text = make("abcdef");
    press(text, 10 + widthOf("ab"), 15);
    EXPECT_EQ(selection(text), (std::pair{2, 2}));
    press(text, 10 + widthOf("a"), 15, 10 + widthOf("abcd"));
    EXPECT_EQ(selection(text), (std::pair{1, 4}));
    press(text, 10 + widthOf("abcd"), 15, 10);
    EXPECT_EQ(selection(text), (std::pair{0, 4})) << "dragged to the left";
    press(text, 10 + widthOf("abcdef"), 15, -1, true);
    EXPECT_EQ(selection(text), (std::pair{0, 6})) << "extended";
}

TEST_F(TextEdit, AShiftedPressMovesTheNearerEndOfTheSelection)
{
    TEHandle text = make("abcdefgh");
    for (auto [at, start, end] : {std::tuple{"abc", 3, 6}, {"abcde", 2, 5}, {"a", 1, 6}, {"abcdefg", 2, 7}}) {
        TESetSelect(2, 6, text);
        press(text, 10 + widthOf(at), 15, -1, true);
        EXPECT_EQ(selection(text), (std::pair{start, end})) << at;
    }
}

TEST_F(TextEdit, AButtonReleasedElsewhereSelectsThoughNoMoveWasSeen)
{
    TEHandle text = make("abcdef");
    mouse(Kind::mouseDown, 110 + widthOf("a"), 115);
    EventRecord event;
    WaitNextEvent(1 << mouseDown, &event, 1);
    mouse(Kind::mouseUp, 110 + widthOf("abcd"), 115);
    TEClick(Point{15, static_cast<int16_t>(10 + widthOf("a"))}, false, text);
    EXPECT_EQ(selection(text), (std::pair{1, 4}));
}

TEST_F(TextEdit, TheWordBeforeBlanksAtTheBeginningIsTheBeginning)
{
    EXPECT_EQ(toolbox::textedit::wordBefore("  ab", 2), 0);
    EXPECT_EQ(toolbox::textedit::wordBefore("  ab", 4), 2);
}

TEST_F(TextEdit, TwoPressesAtOnePlaceSelectAWord)
{
    TEHandle text = make("one two, three");
    press(text, 10 + widthOf("one t"), 15);
    press(text, 10 + widthOf("one t"), 15);
    EXPECT_EQ(selection(text), (std::pair{4, 7}));
    Delay(100, nullptr);
    press(text, 10 + widthOf("one t"), 15);
    EXPECT_EQ(selection(text), (std::pair{5, 5})) << "too late for a double-click";
}

TEST_F(TextEdit, LinesBreakBetweenWordsAndAtReturns)
{
    int width = widthOf("aaa bbb") + 2;
    TEHandle text = make("aaa bbb ccc\rd", width);
    TESetSelect(9, 9, text);
    keys(text, "\x1E");
    EXPECT_EQ(selection(text).first, 1) << "the second line begins at the third word";
    TESetSelect(12, 12, text);
    keys(text, "\x1E");
    EXPECT_EQ(selection(text).first, 8);
}

TEST_F(TextEdit, AWordTooLongForTheLineIsBroken)
{
    TEHandle text = make("mmmmmmmmmm", widthOf("mmm") + 1);
    TESetSelect(4, 4, text);
    keys(text, "\x1E");
    EXPECT_EQ(selection(text).first, 1);
}

TEST_F(TextEdit, TheTextIsScrolledToTheCaret)
{
    TEHandle text = make("", 50, 18);
    (**text).crOnly = true;
    keys(text, "a long line of text");
    EXPECT_GT((**text).scroll.h, 0);
    TESetSelect(0, 0, text);
    EXPECT_EQ((**text).scroll.h, 0);
    (**text).crOnly = false;
    keys(text, "a\rb\rc\r");
    EXPECT_GT((**text).scroll.v, 0);
}

TEST_F(TextEdit, CuttingAndPastingGoThroughThePrivateScrap)
{
    TEHandle text = make("abcdef");
    TESetSelect(1, 3, text);
    TECut(text);
    EXPECT_EQ(content(text), "adef");
    EXPECT_EQ(TEGetScrapLength(), 2);
    TESetSelect(4, 4, text);
    TEPaste(text);
    EXPECT_EQ(content(text), "adefbc");
    int32_t offset;
    EXPECT_LT(GetScrap(nullptr, 'TEXT', &offset), 0) << "the desk scrap gets nothing";
    ZeroScrap();
    EXPECT_EQ(TEToScrap(), noErr);
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', &offset), 2);
    TECopy(text);
    EXPECT_EQ(TEGetScrapLength(), 0) << "copying at a caret empties it";
    EXPECT_EQ(TEFromScrap(), noErr);
    EXPECT_EQ(TEGetScrapLength(), 2);
}

TEST_F(TextEdit, ALengthChangedThroughTheHandleIsTakenOver)
{
    TEHandle text = make("abcdef");
    TESetSelect(2, 5, text);
    SetHandleSize(TEGetText(text), 4);
    TECalText(text);
    EXPECT_EQ(content(text), "abcd");
    EXPECT_EQ(selection(text), (std::pair{2, 4})) << "cut to the text";
}

TEST_F(TextEdit, DeletingLeavesThePrivateScrapAlone)
{
    TEHandle text = make("abcdef");
    TESetSelect(0, 2, text);
    TECopy(text);
    TESetSelect(3, 5, text);
    TEDelete(text);
    EXPECT_EQ(content(text), "abcf");
    EXPECT_EQ(selection(text), (std::pair{3, 3}));
    EXPECT_EQ(std::string(*TEScrapHandle(), GetHandleSize(TEScrapHandle())), "ab");
}

TEST_F(TextEdit, AnUpdateDrawsOnlyWithinItsRectangle)
{
    TEHandle text = make("MMMMMM");
    TESetSelect(0, 0, text);
    TEDeactivate(text);
    EraseRect(&window->portRect);
    Rect left{0, 0, 200, static_cast<int16_t>(10 + widthOf("MMM"))};
    TEUpdate(&left, text);
    EXPECT_GT(inkedFrom(0, left.right), 0);
    EXPECT_EQ(inkedFrom(left.right, 250), 0);
    TEUpdate(&window->portRect, text);
    EXPECT_GT(inkedFrom(left.right, 250), 0);
}

TEST_F(TextEdit, AnInactiveTextShowsNoSelection)
{
    TEHandle text = make("abc");
    TESetSelect(0, 0, text);
    TEDeactivate(text);
    int letters = inkedFrom(0, 250);
    TESetSelect(0, 3, text);
    EXPECT_EQ(inkedFrom(0, 250), letters);
    TEActivate(text);
    EXPECT_NE(inkedFrom(0, 250), letters);
}

TEST_F(TextEdit, ThePrivateScrapIsSeenThroughItsHandle)
{
    TEHandle text = make("abcdef");
    TESetSelect(1, 3, text);
    TECopy(text);
    const Handle scrap = TEScrapHandle();
    ASSERT_NE(scrap, nullptr);
    EXPECT_EQ(std::string(*scrap, static_cast<std::size_t>(TEGetScrapLength())), "bc");
}

TEST_F(TextEdit, ATextNeverGrowsBeyondItsLimit)
{
    TEHandle text = make(std::string(32766, 'x'), 200, 30);
    keys(text, "yz");
    EXPECT_EQ((**text).teLength, 32767);
}

TEST_F(TextEdit, WithoutMemoryTheTextStaysAsItWas)
{
    TEHandle text = make("abc");
    // So much that the block may have to grow, for which there is no memory.
    toolbox::faults::failAllocation(1, true);
    TEInsert(std::string(4000, 'x').data(), 4000, text);
    bool met = toolbox::faults::met();
    toolbox::faults::clear();
    if (met)
        EXPECT_EQ(content(text), "abc");
    else
        EXPECT_EQ((**text).teLength, 4003);
}

TEST_F(TextEdit, TheCaretBlinks)
{
    TEHandle text = make("abc");
    EXPECT_EQ((**text).caretState, 1);
    Delay(GetCaretTime(), nullptr);
    TEIdle(text);
    EXPECT_EQ((**text).caretState, 0);
    Delay(GetCaretTime(), nullptr);
    TEIdle(text);
    EXPECT_EQ((**text).caretState, 1);
}

TEST_F(TextEdit, DisposingFreesEverything)
{
    TEHandle text = make("abc");
    TEDispose(text);
    DisposeWindow(window);
    EXPECT_EQ(toolbox::leftBehind(), before) << toolbox::leftBehind().text();
}

TEST_F(TextEdit, ABoxOfTextIsAlignedAsAsked)
{
    std::vector<std::string> drawn;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawn));
    Rect box{0, 50, 40, 150};
    TETextBox("ab", 2, &box, 0);
    TETextBox("ab", 2, &box, 1);
    TETextBox("ab", 2, &box, -1);
    int left = 150 - widthOf("ab");
    std::vector<std::string> texts;
    for (const std::string &line : drawn)
        if (line.starts_with("text "))
            texts.push_back(line.substr(5, line.find(',') - 5));
    EXPECT_EQ(texts, (std::vector<std::string>{"50", std::to_string((50 + left) / 2), std::to_string(left)}));
}

TEST_F(TextEdit, AnyKeysAnywhereKeepTheRecordValid)
{
    unsigned seed = 20240;
    SCOPED_TRACE("seed " + std::to_string(seed));
    TEHandle text = make("seed", 60, 34);
    std::string typed = "ab c\r\b\x1C\x1D\x1E\x1F";
    for (int i = 0; i < 400; ++i) {
        seed = seed * 1103515245 + 12345;
        int choice = static_cast<int>(seed >> 16) % 16;
        if (choice < static_cast<int>(typed.size()))
            TEKey(typed[static_cast<size_t>(choice)], text);
        else
            TESetSelect(static_cast<int>(seed >> 20) % 40, static_cast<int>(seed >> 8) % 40, text);
        auto [start, end] = selection(text);
        ASSERT_TRUE(0 <= start && start <= end && end <= (**text).teLength) << i;
    }
    content(text);
}
