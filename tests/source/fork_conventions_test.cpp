// What the code takes for granted about the texts, menus and dialogs in the fork.
#include "source/open_settings.h"

#include <sstream>

#include "source/dotShapes.h"
#include "source/initUtilities.h"
#include "source/ktCustomDlg.h"
#include "source/popup.h"
#include "source/resource_names.h"

namespace {

class Fork : public OpenSettings {
protected:
    std::vector<std::string> items(int16_t menuID)
    {
        std::vector<std::string> texts;
        MenuHandle menu = GetMenu(menuID);
        for (int16_t item = 1; item <= CountMItems(menu); ++item) {
            Str255 text;
            GetItem(menu, item, text);
            texts.push_back(plain(text));
        }
        // The dialog is using its six.
        if (!GetMHandle(menuID))
            ReleaseResource(menu);
        return texts;
    }

    // How many lines the text takes in that width, broken at words.
    int lines(const std::string &text, int width)
    {
        int count = 0;
        std::istringstream paragraphs(text);
        for (std::string paragraph; std::getline(paragraphs, paragraph, '\r');) {
            ++count;
            std::string line;
            std::istringstream words(paragraph);
            for (std::string word; words >> word;) {
                std::string longer = line.empty() ? word : line + " " + word;
                if (StringWidth(P(longer)) <= width) {
                    line = longer;
                } else {
                    ++count;
                    line = word;
                }
            }
        }
        return count;
    }

    Rect box(int16_t dialogID, int16_t item)
    {
        DialogPtr dialog = GetNewDialog(dialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
        int16_t type;
        Handle handle;
        Rect box{};
        GetDItem(dialog, item, &type, &handle, &box);
        DisposDialog(dialog);
        SetPort(gCustomDialog);
        return box;
    }
};

TEST_F(Fork, EveryMessageIsASentenceThatFitsItsDialog)
{
    for (const NamedNumber &each : namedResources()) {
        if (each.type != "STR ")
            continue;
        int16_t id = static_cast<int16_t>(each.number);
        std::string text = message(id);
        ASSERT_FALSE(text.empty()) << id;
        EXPECT_TRUE(text.back() == '.' || text.back() == '?') << text;
        int16_t dialogID = id == 16146 ? 16132 : 16129;
        Rect room = box(dialogID, 3);
        std::string whole = id == 16146 ? text : text + "\r\rID = -32768 (newhandle -check)";
        EXPECT_LE(lines(whole, room.right - room.left) * 16, room.bottom - room.top) << text;
    }
}

TEST_F(Fork, FirstItemMeansNone)
{
    for (int16_t id : {kFreqMenu, kAngleMenu, kSpotMenu, kFlatMenu})
        EXPECT_EQ(items(id).front().substr(0, 13), "Printer's own");
    for (int16_t id : {kAnnoMenu, kErrorMenu})
        EXPECT_EQ(items(id).front().substr(0, 4), "None");
}

TEST_F(Fork, LastItemAsksForMore)
{
    for (int16_t id : {kFreqMenu, kAngleMenu, kFlatMenu})
        EXPECT_EQ(items(id).back(), "Other...")
            << "menu " << id << " in resources/menus.res must end in \"Other...\": the last item is the one that asks "
            << "for a value. Put new numbers before it.";
    EXPECT_EQ(items(kSpotMenu).back(), "Import...")
        << "the spot function menu in resources/menus.res must end in \"Import...\": the last item is the one that "
        << "imports. Put new shapes before the second divider.";
    EXPECT_EQ(items(kAnnoMenu).size(), 3u);
    EXPECT_EQ(items(kErrorMenu).size(), 2u);
}

// Saved settings hold item numbers, and are replaced if the version is another.
TEST_F(Fork, MenusHaveTheItemsThatSavedSettingsOfThisVersionKnow)
{
    const std::string version = "Riders 1.0";
    const std::pair<int16_t, size_t> counts[] = {{kFreqMenu, 21}, {kAngleMenu, 15}, {kSpotMenu, 11},
                                                 {kFlatMenu, 13}, {kAnnoMenu, 3},   {kErrorMenu, 2},
                                                 {kAnnoFontMenu, 13}};
    for (const auto &[id, count] : counts)
        EXPECT_TRUE(items(id).size() == count && plain(environment.versionStr) == version)
            << "menu " << id << " has " << items(id).size() << " items in \"" << plain(environment.versionStr)
            << "\" and had " << count << " in \"" << version << "\". Settings saved by that version would name "
            << "other items than the user chose. Raise the version in resources/strings.res, which puts such settings "
            << "back, and enter version and count in this test.";
}

TEST_F(Fork, ValuesEndInExactlyTheirUnit)
{
    const std::pair<int16_t, std::string> units[] = {{kFreqMenu, " lpi"}, {kAngleMenu, "\xA1"}, {kFlatMenu, ""}};
    for (const auto &[id, unit] : units) {
        std::vector<std::string> texts = items(id);
        for (size_t i = 1; i + 1 < texts.size(); ++i) {
            ASSERT_TRUE(texts[i].ends_with(unit)) << texts[i];
            std::string number = texts[i].substr(0, texts[i].size() - unit.size());
            EXPECT_EQ(number.find_first_not_of("0123456789."), std::string::npos) << texts[i];
        }
    }
}

TEST_F(Fork, FrequenciesRunFromScreenPrintingToOffset)
{
    std::vector<std::string> texts = items(kFreqMenu);
    EXPECT_EQ(texts[1], "20 lpi");
    EXPECT_EQ(texts[texts.size() - 2], "200 lpi");
}

TEST_F(Fork, EachDotShapeHasItsItemBetweenTheDividers)
{
    std::vector<std::string> texts = items(kSpotMenu);
    auto second = std::find(texts.begin() + kFirstShapeItem - 1, texts.end(), "-");
    EXPECT_EQ(texts[1], "-");
    EXPECT_EQ(second - texts.begin() - 2, kDotShapeCount)
        << "the spot function menu in resources/menus.res has so many items between its dividers, and kDotShapes in "
        << "source/dotShapes.h so many rows: each shape needs both, in the same order.";
    EXPECT_EQ(texts.end() - second, 2) << "only \"Import...\" stands after the second divider";
    EXPECT_EQ(texts[2], "Round");
    EXPECT_EQ(texts[8], "Euclidean");
}

TEST_F(Fork, ThirteenFontsHaveNamesWithoutBlanks)
{
    std::vector<std::string> fonts = items(kAnnoFontMenu);
    EXPECT_EQ(fonts.size(), 13u);
    for (const std::string &font : fonts)
        EXPECT_EQ(font.find(' '), std::string::npos) << font;
}

TEST_F(Fork, SizePopupIsTooNarrowToPadItsFirstItem)
{
    std::string first = items(kAnnoSizeMenu).front();
    Rect room = box(16302, 7);
    EXPECT_LE(room.right - room.left, StringWidth(P(first)) + 28);
    for (const std::string &size : items(kAnnoSizeMenu))
        EXPECT_LE(size.size(), 4u);
}

TEST_F(Fork, VersionFitsAfterItsPrefix)
{
    EXPECT_EQ(plain(environment.versionStr), "Riders " + kPluginVersion);
}

TEST_F(Fork, LabelsFitTheirItems)
{
    const std::pair<int16_t, std::vector<int16_t>> labels[] = {
        {16300, {10, 11, 12, 13, 14, 15}}, {16301, {5, 6, 7, 8, 9}}, {16302, {5, 10}}};
    for (const auto &[dialogID, numbers] : labels) {
        DialogPtr dialog = GetNewDialog(dialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
        SetPort(dialog);
        for (int16_t number : numbers) {
            int16_t type;
            Handle item;
            Rect room;
            Str255 text;
            GetDItem(dialog, number, &type, &item, &room);
            GetIText(item, text);
            EXPECT_LE(StringWidth(text), room.right - room.left) << plain(text);
        }
        DisposDialog(dialog);
        SetPort(gCustomDialog);
    }
}

TEST_F(Fork, LongestItemsFitTheirPopups)
{
    for (int16_t id : {kFreqMenu, kAngleMenu, kSpotMenu, kFlatMenu, kAnnoMenu, kErrorMenu})
        for (std::string text : items(id)) {
            text.erase(text.find_last_not_of(' ') + 1);
            EXPECT_LE(StringWidth(P(text)) + 34, 194) << text;
        }
}

}  // namespace
