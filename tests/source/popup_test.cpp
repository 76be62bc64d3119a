#include "source/open_settings.h"

#include <algorithm>

#include "source/dialogItems.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/popup.h"
#include "toolbox/memory.h"

namespace {

class Popup : public OpenSettings {
protected:
    void TearDown() override
    {
        if (popup_ && !ended) {
            DisposePopup(popup_, false);
            DisposeHandle(popup_);
        }
        OpenSettings::TearDown();
    }

    // Makes a popup of one of the plug-in's menus that no dialog has in use.
    PopupInfo &make(const Rect &box, const std::string &title = "", int16_t menuID = kAnnoFontMenu, int16_t item = 1)
    {
        popup_ = NewHandleClear(sizeof(PopupInfo));
        SetupPopup(popup_, box, P(title), nullptr, menuID, item);
        return record();
    }

    PopupInfo &record() { return *PopupRecord(popup_); }

    std::vector<std::string> drawn(Handle popup)
    {
        std::vector<std::string> lines;
        toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
        DrawPopup(popup);
        toolbox::trace::setDrawingSink({});
        return lines;
    }

    // The text that a popup shows.
    std::string shown(Handle popup)
    {
        std::string last;
        for (const std::string &line : drawn(popup))
            if (line.starts_with("text "))
                last = line;
        auto from = last.find('"');
        return last.substr(from + 1, last.rfind('"') - from - 1);
    }

    std::string item(MenuHandle menu, int16_t number)
    {
        Str255 text;
        GetItem(menu, number, text);
        return plain(text);
    }

    int16_t mark(MenuHandle menu, int16_t number)
    {
        int16_t mark = 0;
        GetItemMark(menu, number, &mark);
        return mark;
    }

    Handle popup_ = nullptr;
};

const Rect kBox = {20, 30, 40, 230};

std::vector<int> edges(const Rect &r)
{
    return {r.left, r.top, r.right, r.bottom};
}

TEST_F(Popup, WithoutATitleTheBoxIsTheWholeControl)
{
    PopupInfo info = make(kBox);
    EXPECT_EQ(edges(info.bounds), edges(kBox));
    EXPECT_EQ(edges(info.popupRect), edges(kBox));
    EXPECT_EQ(edges(info.titleRect), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(info.titleWidth, 8);
    EXPECT_EQ(info.menuPos.h, 31);
    EXPECT_EQ(info.menuPos.v, 21);
}

TEST_F(Popup, MenuIsNotInTheMenuBar)
{
    MenuHandle menu = make(kBox).menu;
    ClearMenuBar();
    EXPECT_EQ(GetMHandle(kAnnoFontMenu), menu);
}

TEST_F(Popup, TitleStandsLeftOfTheBox)
{
    PopupInfo info = make(kBox, "Font:");
    int width = StringWidth(P("Font:")) + 8;
    EXPECT_EQ(info.titleWidth, width);
    EXPECT_EQ(edges(info.popupRect), (std::vector<int>{30 + width, 20, 230, 40}));
    EXPECT_EQ(edges(info.titleRect), (std::vector<int>{30, 21, 30 + width, 39}));
    auto lines = drawn(popup_);
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                            [](const std::string &line) { return line.starts_with("text 34,35 \"Font:\""); }));
}

TEST_F(Popup, TitleIsCutTo31)
{
    PopupInfo info = make(kBox, std::string(40, 'i'));
    EXPECT_EQ(plain(info.title), std::string(31, 'i'));
    EXPECT_EQ(info.titleWidth, StringWidth(P(std::string(40, 'i'))) + 8);
}

TEST_F(Popup, FirstItemIsWidenedToTheBox)
{
    PopupInfo info = make({0, 0, 20, 100}, "", kAnnoSizeMenu);
    std::string text = item(info.menu, 1);
    EXPECT_GT(StringWidth(P(text)), 72);
    EXPECT_LE(StringWidth(P(text.substr(0, text.size() - 1))), 72);
    EXPECT_EQ(text.substr(0, 2), "6 ");
}

TEST_F(Popup, FirstItemIsWidenedPast28PixelsLessThanTheBoxByOneSpace)
{
    int16_t width = StringWidth(P("6   "));
    for (auto [room, spaces] : {std::pair{28, 4}, std::pair{27, 3}}) {
        PopupInfo info = make({0, 0, 20, static_cast<int16_t>(width + room)}, "", kAnnoSizeMenu);
        EXPECT_EQ(item(info.menu, 1), "6" + std::string(static_cast<size_t>(spaces), ' '));
        DisposePopup(popup_, false);
        DisposeHandle(popup_);
        popup_ = nullptr;
    }
}

TEST_F(Popup, FirstItemStaysWithin255)
{
    PopupInfo info = make({0, 0, 20, 4000}, "", kAnnoSizeMenu);
    EXPECT_EQ(item(info.menu, 1).size(), 255u);
}

TEST_F(Popup, MissingMenuIsFatal)
{
    removeResource('MENU', kAnnoSizeMenu);
    dismiss();
    EXPECT_FALSE(guarded([&] { make(kBox, "", kAnnoSizeMenu); }));
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 7", " (menu resource)")));
}

TEST_F(Popup, NoMemoryForTheRecordIsFatal)
{
    toolbox::faults::failAllocation(1);
    dismiss();
    EXPECT_FALSE(guarded([] { NewPopup(); }));
    toolbox::faults::clear();
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = 95", " (newhandle)")));
}

TEST_F(Popup, ChoiceFrameShadowAndArrowAreDrawnInPlace)
{
    make(kBox, "", kAnnoFontMenu, 5);
    std::vector<std::string> lines = drawn(popup_);
    ASSERT_GE(lines.size(), 6u);
    EXPECT_EQ(lines[0].substr(0, 23), "frameRect 30,20,230,40");
    std::string all;
    for (const std::string &line : lines)
        all += line + "\n";
    EXPECT_NE(all.find("line 31,40 to 230,40"), std::string::npos) << all;
    EXPECT_NE(all.find("line 230,40 to 230,21"), std::string::npos) << all;
    EXPECT_NE(all.find("eraseRect 31,21,229,39"), std::string::npos) << all;
    EXPECT_NE(all.find("text 45,35 \"Helvetica\""), std::string::npos) << all;
    EXPECT_NE(all.find("poly (225,26) (213,26) (219,32) (225,26)"), std::string::npos) << all;
}

TEST_F(Popup, TextThatJustFitsIsWhole)
{
    int16_t width = StringWidth(P("Helvetica-Bold"));
    make({0, 0, 20, static_cast<int16_t>(width + 34)}, "", kAnnoFontMenu, 6);
    EXPECT_EQ(shown(popup_), "Helvetica-Bold");
}

TEST_F(Popup, TextOnePixelTooWideEndsInAnEllipsis)
{
    int16_t width = StringWidth(P("Helvetica-Bold"));
    make({0, 0, 20, static_cast<int16_t>(width + 33)}, "", kAnnoFontMenu, 6);
    EXPECT_EQ(shown(popup_), "Helvetica-" "…");
}

TEST_F(Popup, EllipsisNeverFollowsASpace)
{
    make(kBox);
    // Cut to 12 characters first, then by 3: the ninth is a space.
    SetItem(record().menu, 2, P("Twelve a b cdefgh"));
    SetPopupMenuItem(popup_, 2);
    int16_t width = StringWidth(P("Twelve a b c"));
    record().popupRect.right = record().popupRect.left + width + 34;
    EXPECT_EQ(shown(popup_), "Twelve a…");
}

TEST_F(Popup, TextCutToThreeCharactersIsAnEllipsis)
{
    make(kBox);
    SetPopupMenuItem(popup_, 2);
    record().popupRect.right = record().popupRect.left + 34 + StringWidth(P("Tim"));
    EXPECT_EQ(shown(popup_), "…");
}

TEST_F(Popup, TextCutBelowThreeCharactersHasNoEllipsis)
{
    make(kBox);
    SetPopupMenuItem(popup_, 2);
    record().popupRect.right = record().popupRect.left + 34 + StringWidth(P("Ti"));
    EXPECT_EQ(shown(popup_), "Ti");
    record().popupRect.right = record().popupRect.left + 24;
    EXPECT_EQ(shown(popup_), "");
}

TEST_F(Popup, ExceptionItemOfAnotherMenuShowsAnEmptyBox)
{
    make(kBox);
    SetItem(record().menu, 2, P("Other..."));
    SetPopupMenuItem(popup_, 2);
    EXPECT_EQ(shown(popup_), "");
}

TEST_F(Popup, ExceptionsAreExactTexts)
{
    MenuHandle menu = make(kBox).menu;
    const std::pair<const char *, bool> texts[] = {{"Other...", true},  {"Import...", true}, {"other...", false},
                                                   {"Other..", false},  {"Other... ", false}, {"Import", false}};
    for (auto [text, exception] : texts) {
        SetItem(menu, 2, P(text));
        EXPECT_EQ(CheckMenuExceptions(menu, 2), exception) << text;
    }
}

TEST_F(Popup, OtherShowsTheValueWithItsUnit)
{
    toolbox::setPascal(settings.freqStr, "133", 15);
    toolbox::setPascal(settings.angleStr, "45", 15);
    toolbox::setPascal(settings.flatStr, "0.7", 15);
    for (auto setting : {&PrefsRec::freqItem, &PrefsRec::angleItem, &PrefsRec::flatItem})
        chooseLast(setting);
    EXPECT_EQ(shown(gFreqPopInfo), "133 lpi");
    EXPECT_EQ(shown(gAnglePopInfo), "45°");
    EXPECT_EQ(shown(gFlatPopInfo), "0.7");
}

TEST_F(Popup, ImportShowsTheImportsNameOrThePreviousItem)
{
    choose(&PrefsRec::spotItem, 4);
    chooseLast(&PrefsRec::spotItem);
    EXPECT_EQ(shown(gSpotPopInfo), "Ellipse");
    settings.spotImported = 1;
    toolbox::setPascal(settings.spotName, "Stars", 63);
    EXPECT_EQ(shown(gSpotPopInfo), "Stars");
}

TEST_F(Popup, SpacesOfTheFirstItemAreNotShown)
{
    EXPECT_EQ(shown(gFlatPopInfo), "Printer's own");
}

TEST_F(Popup, SettingAnItemMovesTheMarkAndRemembersThePrevious)
{
    MenuHandle menu = make(kBox, "", kAnnoFontMenu, 3).menu;
    EXPECT_NE(mark(menu, 3), 0);
    SetPopupMenuItem(popup_, 7);
    EXPECT_EQ(mark(menu, 3), 0);
    EXPECT_NE(mark(menu, 7), 0);
    EXPECT_EQ(record().curItem, 7);
    EXPECT_EQ(record().prevItem, 3);
    RevertPopup(popup_);
    EXPECT_EQ(record().curItem, 3);
    EXPECT_EQ(record().prevItem, 3);
    EXPECT_EQ(mark(menu, 7), 0);
    EXPECT_NE(mark(menu, 3), 0);
}

TEST_F(Popup, RevertingAtOnceChangesNothing)
{
    MenuHandle menu = make(kBox, "", kAnnoFontMenu, 3).menu;
    RevertPopup(popup_);
    EXPECT_EQ(record().curItem, 3);
    EXPECT_NE(mark(menu, 3), 0);
}

// A popup at the frequency's place, used by a person: what the control does
// from the click to its return.
class PopupClick : public Popup {
protected:
    enum { kPlace = 4 };

    void SetUp() override
    {
        Popup::SetUp();
        ShowWindow(gCustomDialog);
        SelectWindow(gCustomDialog);
        make(ItemBox(gCustomDialog, kPlace), "Font:", kAnnoFontMenu, 3);
        current_ = this;
        user.in(kCustomDialogID);
    }

    // Lets the user's step happen; what the control says.
    bool click(bool redraw)
    {
        redraw_ = redraw;
        happened = {};
        int16_t hit = 0;
        guarded([&] { ModalDialog(filter, &hit); });
        EXPECT_EQ(hit, 99);
        return answer_;
    }

    std::vector<std::string> lines(const std::string &beginning) const
    {
        std::vector<std::string> found;
        for (const std::string &line : happened)
            if (line.starts_with(beginning))
                found.push_back(line);
        return found;
    }

    // How many times the box was framed.
    int drawings()
    {
        Rect box = record().popupRect;
        return static_cast<int>(lines("frameRect " + std::to_string(box.left) + "," + std::to_string(box.top) +
                                      "," + std::to_string(box.right) + "," + std::to_string(box.bottom))
                                    .size());
    }

    // Drawn and traced, in order.
    std::vector<std::string> happened;

private:
    static Boolean filter(DialogPtr, EventRecord *event, int16_t *hit)
    {
        if (event->what != mouseDown)
            return false;
        toolbox::trace::setSink(toolbox::trace::into(current_->happened));
        toolbox::trace::setDrawingSink(toolbox::trace::into(current_->happened));
        current_->answer_ = HandlePopupClick(current_->popup_, current_->redraw_);
        toolbox::trace::setDrawingSink({});
        toolbox::trace::setSink(toolbox::trace::into(current_->trace));
        *hit = 99;
        return true;
    }

    static inline PopupClick *current_ = nullptr;
    bool redraw_ = false;
    bool answer_ = false;
};

TEST_F(PopupClick, ChoiceIsCurrentTickedAndTold)
{
    user.choose(kPlace, 7);
    EXPECT_TRUE(click(false));
    EXPECT_EQ(record().curItem, 7);
    EXPECT_EQ(record().prevItem, 3);
    EXPECT_EQ(mark(record().menu, 3), 0);
    EXPECT_NE(mark(record().menu, 7), 0);
}

TEST_F(PopupClick, LeavingTheMenuIsNoChoiceAndDrawsNothing)
{
    SetPopupMenuItem(popup_, 5);
    user.chooseNothing(kPlace);
    EXPECT_FALSE(click(true));
    EXPECT_EQ(record().curItem, 5);
    EXPECT_EQ(record().prevItem, 5);
    EXPECT_NE(mark(record().menu, 5), 0);
    EXPECT_EQ(drawings(), 0);
}

TEST_F(PopupClick, ControlIsDrawnAgainOnlyWhenAsked)
{
    for (bool redraw : {false, true}) {
        user.choose(kPlace, redraw ? 7 : 6);
        EXPECT_TRUE(click(redraw));
        EXPECT_EQ(drawings(), redraw ? 1 : 0);
    }
}

TEST_F(PopupClick, TitleIsInvertedWhileTheMenuIsDown)
{
    for (bool chosen : {true, false}) {
        if (chosen)
            user.choose(kPlace, 7);
        else
            user.chooseNothing(kPlace);
        click(false);
        Rect title = record().titleRect;
        std::string inverted = "invertRect " + std::to_string(title.left) + "," + std::to_string(title.top) + "," +
                               std::to_string(title.right) + "," + std::to_string(title.bottom);
        std::vector<std::string> order;
        for (const std::string &line : happened)
            if (line == inverted || line.starts_with("popup"))
                order.push_back(line.substr(0, line.find(' ')));
        EXPECT_EQ(order, (std::vector<std::string>{"invertRect", "popup", "popup", "invertRect"}));
    }
}

TEST_F(Popup, DrawingLooksAtTheScreensDepthAnew)
{
    for (bool colour : {false, true}) {
        settings.useColor = colour;
        environment.pixDepth = 99;
        drawn(gFreqPopInfo);
        EXPECT_EQ(environment.pixDepth, 8);
    }
}

TEST_F(Popup, NoCurrentItemMarksNothing)
{
    MenuHandle menu = make(kBox, "", kAnnoSizeMenu, 0).menu;
    for (int16_t number = 1; number <= CountMItems(menu); ++number)
        EXPECT_EQ(mark(menu, number), 0);
}

TEST_F(Popup, ErasingTakesTheShadowToo)
{
    std::vector<std::string> lines;
    toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
    ErasePopup(kBox);
    toolbox::trace::setDrawingSink({});
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].substr(0, 22), "eraseRect 30,20,231,41");
}

TEST_F(Popup, DisposingErasesOnlyOnRequest)
{
    for (bool erase : {false, true}) {
        make(kBox);
        std::vector<std::string> lines;
        toolbox::trace::setDrawingSink(toolbox::trace::into(lines));
        DisposePopup(popup_, erase);
        toolbox::trace::setDrawingSink({});
        EXPECT_EQ(lines.size(), erase ? 1u : 0u);
        DisposeHandle(popup_);
        popup_ = nullptr;
        EXPECT_EQ(GetMHandle(kAnnoFontMenu), nullptr);
    }
}

}  // namespace
