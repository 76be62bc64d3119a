// docs/riders-file.md describes what the code does: its tables are compared with the
// settings record, with a file that was made, and with the markers.
#include "source/making.h"
#include "support/documents.h"
#include "support/riders_pieces.h"

#include <map>

#include "apply/markers.h"
#include "source/ktAnnoDlg.h"
#include "source/ktFreqDlg.h"
#include "source/popup.h"
#include "source/settingsRecord.h"
#include "toolbox/menus.h"
#include "toolbox/resources.h"

namespace {

const std::string kPath = "docs/riders-file.md";

// A field as the table has it: "| Offset | Bytes | Field | What | Unit | Range | At first |".
struct Field {
    size_t offset, bytes;
};

#define FIELD(name) std::pair(std::string(#name), Field{offsetof(PrefsRec, name), sizeof(PrefsRec::name)})
const std::map<std::string, Field> kFields = {
    FIELD(prefsVersion), FIELD(freqItem),     FIELD(angleItem),    FIELD(spotItem),   FIELD(flatItem),
    FIELD(annoItem),     FIELD(errorItem),    FIELD(annoFontItem), FIELD(spareFlag1), FIELD(closeAfterMake),
    FIELD(savePosition), FIELD(spotImported), FIELD(useColor),     FIELD(spareFlag2), FIELD(customDlgPos),
    FIELD(sparePos),     FIELD(freqStr),      FIELD(angleStr),     FIELD(flatStr),    FIELD(annoSizeStr),
    FIELD(spotName),     FIELD(annoText),
};
#undef FIELD

class RidersFileDocument : public Making {
protected:
    std::vector<TableRow> table(const std::string &firstHeading)
    {
        return tableIn(sourceText(kPath), firstHeading);
    }

    // The settings record's rows by the field's name.
    std::map<std::string, TableRow> fields()
    {
        std::map<std::string, TableRow> byName;
        for (const TableRow &row : table("Offset"))
            byName[quotedIn(row.at(2)).at(0)] = row;
        return byName;
    }

    // Whether what is chosen now meets a condition in the table of pieces.
    bool written(const std::string &condition) const
    {
        const bool shape = settings.spotItem != 1, frequency = settings.freqItem != 1,
                   angle = settings.angleItem != 1;
        const std::map<std::string, bool> conditions = {
            {"always", true},
            {"with a dot shape", shape},
            {"with a frequency or an angle, but no dot shape", !shape && (frequency || angle)},
            {"with a frequency", frequency},
            {"with an angle", angle},
            {"with a flatness", settings.flatItem != 1},
            {"with an annotation", settings.annoItem == 2},
            {"with the error handler", settings.errorItem == 2},
        };
        auto found = conditions.find(condition);
        EXPECT_NE(found, conditions.end()) << "the test does not know the condition \"" << condition << "\"";
        return found != conditions.end() && found->second;
    }

    std::string value(const std::string &name) const
    {
        const std::map<std::string, std::string> values = {
            {"frequency", "35"},
            {"angle", "45"},
            {"flatness", "1"},
            {"font", plain(gFontNameStr)},
            {"size", plain(settings.annoSizeStr)},
            {"text", plain(settings.annoText)},
        };
        auto found = values.find(name);
        EXPECT_NE(found, values.end()) << "no value is called " << name;
        return found == values.end() ? "" : found->second;
    }

    // The file that the table describes for what is chosen now.
    std::string promised()
    {
        std::string bytes;
        for (const TableRow &row : table("Piece"))
            if (written(row.at(3)))
                bytes += row.at(1) == "value" ? value(row.at(0)) : pieceBytes(std::stoi(row.at(1)));
        return bytes;
    }
};

// The two ends of a range such as "0.2 to 200, at most 4 decimals".
std::pair<std::string, std::string> endsOf(const std::string &range)
{
    const size_t to = range.find(" to ");
    const size_t end = std::min(range.find_first_of(",;", to), range.size());
    return {range.substr(0, to), range.substr(to + 4, end - to - 4)};
}

}  // namespace

TEST_F(RidersFileDocument, EachFieldOfTheSettingsHasItsOffsetAndLength)
{
    size_t next = 0;
    for (const TableRow &row : table("Offset")) {
        const std::string name = quotedIn(row.at(2)).at(0);
        ASSERT_TRUE(kFields.count(name)) << name << " is no field of the record";
        EXPECT_EQ(std::stoul(row.at(0)), kFields.at(name).offset) << name;
        EXPECT_EQ(std::stoul(row.at(1)), kFields.at(name).bytes) << name;
        EXPECT_EQ(std::stoul(row.at(0)), next) << "a field is missing before " << name;
        next += kFields.at(name).bytes;
    }
    EXPECT_EQ(next, sizeof(PrefsRec));
}

TEST_F(RidersFileDocument, ItemsGoAsFarAsTheirMenus)
{
    int seen = 0;
    for (const auto &[name, row] : fields()) {
        const size_t menu = row.at(3).find("menu ");
        if (menu == std::string::npos)
            continue;
        MenuHandle items = GetMenu(static_cast<int16_t>(std::stoi(row.at(3).substr(menu + 5))));
        ASSERT_NE(items, nullptr) << row.at(3);
        EXPECT_EQ(endsOf(row.at(5)).first, "1") << name;
        EXPECT_EQ(std::stoi(endsOf(row.at(5)).second), CountMItems(items))
            << name << " in the table of the settings";
        ++seen;
    }
    EXPECT_EQ(seen, 7);
    ReleaseResource(GetMenu(kAnnoFontMenu));  // the one that no popup of the dialog has in use
}

TEST_F(RidersFileDocument, NumbersAreAcceptedFromOneEndOfTheirRangeToTheOther)
{
    const std::map<std::string, int16_t> kinds = {
        {"freqStr", kFreqKind}, {"angleStr", kAngleKind}, {"flatStr", kFlatKind}};
    auto accepted = [&](const std::string &name, const std::string &text) {
        return name == "annoSizeStr" ? DoSizeStrCheck(P(text), false)
                                     : DoFreqStrCheck(P(text), kinds.at(name), false);
    };
    const std::map<std::string, std::pair<std::string, std::string>> outside = {{"freqStr", {"0.9999", "999.1"}},
                                                                                {"angleStr", {"", "360.1"}},
                                                                                {"flatStr", {"0.1999", "200.1"}},
                                                                                {"annoSizeStr", {"3", "31"}}};
    auto rows = fields();
    for (const auto &[name, beyond] : outside) {
        const auto [lowest, highest] = endsOf(rows.at(name).at(5));
        EXPECT_TRUE(accepted(name, lowest)) << name << " " << lowest;
        EXPECT_TRUE(accepted(name, highest)) << name << " " << highest;
        EXPECT_TRUE(beyond.first.empty() || !accepted(name, beyond.first)) << name;
        EXPECT_FALSE(accepted(name, beyond.second)) << name;
    }
}

TEST_F(RidersFileDocument, NewSettingsAreWhatStandsUnderAtFirst)
{
    makeRecords();
    auto rows = fields();
    const std::map<std::string, std::string> texts = {
        {"freqStr", plain(settings.freqStr)},   {"angleStr", plain(settings.angleStr)},
        {"flatStr", plain(settings.flatStr)},   {"annoSizeStr", plain(settings.annoSizeStr)},
        {"spotName", plain(settings.spotName)}, {"annoText", plain(settings.annoText)}};
    for (const auto &[name, text] : texts)
        EXPECT_EQ(rows.at(name).at(6), text) << name;
    const std::map<std::string, int> numbers = {
        {"freqItem", settings.freqItem},         {"angleItem", settings.angleItem},
        {"spotItem", settings.spotItem},         {"flatItem", settings.flatItem},
        {"annoItem", settings.annoItem},         {"errorItem", settings.errorItem},
        {"annoFontItem", settings.annoFontItem}, {"closeAfterMake", settings.closeAfterMake},
        {"savePosition", settings.savePosition}, {"spotImported", settings.spotImported},
        {"useColor", settings.useColor},         {"spareFlag1", settings.spareFlag1},
        {"spareFlag2", settings.spareFlag2}};
    for (const auto &[name, number] : numbers)
        EXPECT_EQ(rows.at(name).at(6), std::to_string(number)) << name;
}

TEST_F(RidersFileDocument, APieceIsTheFilesNamedBesideIt)
{
    for (const TableRow &row : table("Piece")) {
        if (row.at(1) == "value")
            continue;
        std::string bytes;
        for (const std::string &file : quotedIn(row.at(2)))
            bytes += sourceText("resources/ps/" + file);
        EXPECT_TRUE(bytes == pieceBytes(std::stoi(row.at(1)))) << row.at(0);
    }
}

TEST_F(RidersFileDocument, EachBuiltInDotShapeIsTheFileNamedBesideIt)
{
    MenuHandle menu = GetMenu(16138);
    ASSERT_NE(menu, nullptr);
    std::vector<TableRow> rows = table("Item");
    // The others are the printer's own, two dividers and the import.
    EXPECT_EQ(rows.size() + 4, static_cast<size_t>(CountMItems(menu)))
        << "each dot shape has a row in the second table of docs/riders-file.md";
    for (const TableRow &row : rows) {
        Str255 text;
        GetItem(menu, static_cast<int16_t>(std::stoi(row.at(0))), text);
        EXPECT_EQ(plain(text), row.at(1));
        EXPECT_TRUE(sourceText("resources/ps/" + quotedIn(row.at(3)).at(0)) == pieceBytes(std::stoi(row.at(2))))
            << row.at(1);
    }
}

TEST_F(RidersFileDocument, AMadeFileIsThePiecesInTheOrderOfTheTable)
{
    BigInt16 PrefsRec::*const popups[] = {&PrefsRec::freqItem, &PrefsRec::angleItem, &PrefsRec::spotItem,
                                          &PrefsRec::flatItem, &PrefsRec::annoItem,  &PrefsRec::errorItem};
    chooseEverything();
    ASSERT_EQ(make(), 1);
    EXPECT_TRUE(contentsOf(file()) == promised()) << "with everything chosen";
    for (BigInt16 PrefsRec::*const popup : popups) {
        chooseEverything();
        const int16_t chosen = settings.*popup;
        chooseNothing();
        choose(popup, chosen);
        ASSERT_EQ(make(), 1);
        EXPECT_TRUE(contentsOf(file()) == promised()) << "with one popup chosen";
    }
}

TEST_F(RidersFileDocument, ItsOpeningLineIsOneThatIsWritten)
{
    const std::string text = sourceText(kPath);
    const size_t at = text.find(riders::apply::kOpeningWord);
    ASSERT_NE(at, std::string::npos);
    const std::string line = text.substr(at, text.find('\n', at) + 1 - at);
    auto marker = riders::apply::parseOpening(line);
    ASSERT_TRUE(marker) << line;
    EXPECT_TRUE(marker->landscape);
    EXPECT_EQ(marker->length, 5120u);
    EXPECT_NE(text.find("    " + std::string(riders::apply::kLandscapeLine)), std::string::npos);
    EXPECT_NE(text.find("    " + std::string(riders::apply::kClosingLine)), std::string::npos);
}

TEST_F(RidersFileDocument, HeadersThatHoldAFormatNameTheDocument)
{
    for (const char *path : {"source/settingsRecord.h", "source/ktRiderSections.h", "source/ktSpot.h",
                             "host/apply/markers.h", "resources/pieces.res"})
        EXPECT_NE(sourceText(path).find(kPath), std::string::npos) << path << " does not name " << kPath;
}
