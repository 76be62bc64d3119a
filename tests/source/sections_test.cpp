#include "source/open_settings.h"
#include "support/riders_pieces.h"

#include "source/dotShapes.h"
#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktMakeRiders.h"
#include "source/ktSpot.h"
#include "source/popup.h"
#include "toolbox/files.h"

namespace {

class Sections : public OpenSettings {
protected:
    using Writer = OSErr (*)(int16_t);

    // What the writer writes into an empty file.
    std::string written(Writer writer)
    {
        int16_t refNum = openFile();
        gTotalLength = 0;
        EXPECT_EQ(writer(refNum), noErr);
        FSClose(refNum);
        std::string bytes = contentsOf(folder / "section");
        EXPECT_EQ(gTotalLength, static_cast<int32_t>(bytes.size()));
        return bytes;
    }

    int16_t openFile()
    {
        int16_t refNum = 0;
        auto here = toolbox::folders::workingDirectory(folder.path());
        FSDelete(P("section"), *here);
        EXPECT_EQ(Create(P("section"), *here, 'ttxt', 'TEXT'), noErr);
        EXPECT_EQ(FSOpen(P("section"), *here, &refNum), noErr);
        return refNum;
    }

    // What stands between the two pieces.
    std::string value(Writer writer, int before, int after)
    {
        std::string bytes = written(writer), head = pieceBytes(before), tail = pieceBytes(after);
        if (bytes.size() < head.size() + tail.size()) {
            ADD_FAILURE() << "only " << bytes.size() << " bytes";
            return {};
        }
        EXPECT_EQ(bytes.substr(0, head.size()), head);
        EXPECT_EQ(bytes.substr(bytes.size() - tail.size()), tail);
        return bytes.substr(head.size(), bytes.size() - head.size() - tail.size());
    }

    void setText(unsigned char *field, const std::string &text, int capacity = 15)
    {
        toolbox::setPascal(field, text, capacity);
    }
};

TEST_F(Sections, BeginIsHeaderAndBeginPiece)
{
    EXPECT_EQ(written(WriteBegin), pieceBytes(16499) + pieceBytes(16500));
}

TEST_F(Sections, HeaderHasTheMagicInItsFirstLine)
{
    EXPECT_EQ(written(WriteBegin).substr(0, 12), "%!Zu3_Riders");
}

TEST_F(Sections, FrequencyItemIsWrittenWithoutItsUnit)
{
    choose(&PrefsRec::freqItem, 5);
    EXPECT_EQ(value(WriteFreq, 16501, 16502), "35");
    choose(&PrefsRec::freqItem, 14);
    EXPECT_EQ(value(WriteFreq, 16501, 16502), "100");
}

TEST_F(Sections, AngleItemIsWrittenWithoutItsSign)
{
    choose(&PrefsRec::angleItem, 6);
    EXPECT_EQ(value(WriteAngle, 16503, 16504), "45");
    choose(&PrefsRec::angleItem, 4);
    EXPECT_EQ(value(WriteAngle, 16503, 16504), "22.5");
}

TEST_F(Sections, FlatnessItemIsWrittenWhole)
{
    choose(&PrefsRec::flatItem, 2);
    EXPECT_EQ(value(WriteFlat, 16560, 16561), "0.2");
    choose(&PrefsRec::flatItem, 12);
    EXPECT_EQ(value(WriteFlat, 16560, 16561), "100");
}

TEST_F(Sections, LastItemWritesTheTypedValue)
{
    setText(settings.freqStr, "53.5");
    setText(settings.angleStr, "17");
    setText(settings.flatStr, "4.25");
    chooseLast(&PrefsRec::freqItem);
    chooseLast(&PrefsRec::angleItem);
    chooseLast(&PrefsRec::flatItem);
    EXPECT_EQ(value(WriteFreq, 16501, 16502), "53.5");
    EXPECT_EQ(value(WriteAngle, 16503, 16504), "17");
    EXPECT_EQ(value(WriteFlat, 16560, 16561), "4.25");
}

TEST_F(Sections, DecimalCommaBecomesAPeriod)
{
    configuration.decimalPoint = ',';
    reopen();
    setText(settings.freqStr, "85,5");
    chooseLast(&PrefsRec::freqItem);
    EXPECT_EQ(value(WriteFreq, 16501, 16502), "85.5");
    EXPECT_EQ(plain(settings.freqStr), "85,5");
    setText(settings.flatStr, "0,5");
    chooseLast(&PrefsRec::flatItem);
    EXPECT_EQ(value(WriteFlat, 16560, 16561), "0.5");
}

TEST_F(Sections, MenuItemsKeepTheirPeriodWithADecimalComma)
{
    configuration.decimalPoint = ',';
    reopen();
    choose(&PrefsRec::angleItem, 4);
    EXPECT_EQ(value(WriteAngle, 16503, 16504), "22.5");
}

TEST_F(Sections, EveryItemWithAValueWritesABareNumber)
{
    for (auto [setting, writer, before, after] :
         {std::tuple{&PrefsRec::freqItem, &WriteFreq, 16501, 16502},
          std::tuple{&PrefsRec::angleItem, &WriteAngle, 16503, 16504},
          std::tuple{&PrefsRec::flatItem, &WriteFlat, 16560, 16561}}) {
        for (int16_t item = 2; item < CountMItems(PopupRecord(popupOf(setting))->menu); ++item) {
            choose(setting, item);
            std::string number = value(writer, before, after);
            ASSERT_FALSE(number.empty());
            EXPECT_EQ(number.find_first_not_of("0123456789."), std::string::npos) << number;
        }
    }
}

TEST_F(Sections, DotShapesAreTheItemsFromTheThirdOn)
{
    for (int16_t index = 0; index < kDotShapeCount; ++index) {
        choose(&PrefsRec::spotItem, 3 + index);
        EXPECT_EQ(value(WriteSpot, 16506, 16507), pieceBytes(kDotShapes[index].piece)) << "item " << 3 + index;
    }
}

TEST_F(Sections, FirstSevenDotShapesKeepTheirItems)
{
    for (int16_t item = 3; item <= 9; ++item) {
        choose(&PrefsRec::spotItem, item);
        EXPECT_EQ(value(WriteSpot, 16506, 16507), pieceBytes(16128 + item - 3)) << "item " << item;
    }
}

TEST_F(Sections, DividersOfTheSpotMenuWriteNoBody)
{
    for (int16_t item : {2, 3 + kDotShapeCount}) {
        choose(&PrefsRec::spotItem, item);
        EXPECT_EQ(value(WriteSpot, 16506, 16507), "") << "item " << item;
    }
}

TEST_F(Sections, LastSpotItemWritesTheImportedBody)
{
    const std::string body("{ dup mul\0\r\n exch }", 19);
    importSpot(body);
    EXPECT_EQ(value(WriteSpot, 16506, 16507), body);
}

TEST_F(Sections, ImportedBodyOfNoBytesWritesNothing)
{
    importSpot("");
    EXPECT_EQ(value(WriteSpot, 16506, 16507), "");
}

TEST_F(Sections, LastSpotItemWithoutAnImportWritesNothing)
{
    chooseLast(&PrefsRec::spotItem);
    gSpotLength = 17;
    EXPECT_EQ(value(WriteSpot, 16506, 16507), "");
}

TEST_F(Sections, SpotUsesTheSettingNotThePopup)
{
    choose(&PrefsRec::spotItem, 3);
    settings.spotItem = 4;
    EXPECT_EQ(value(WriteSpot, 16506, 16507), pieceBytes(16129));
}

TEST_F(Sections, NinthItemOfASpotMenuOfNineIsTheImport)
{
    importSpot("mine");
    MenuHandle own = PopupRecord(gSpotPopInfo)->menu;
    MenuHandle nine = NewMenu(999, P("nine"));
    AppendMenu(nine, P("1;2;3;4;5;6;7;8;9"));
    PopupRecord(gSpotPopInfo)->menu = nine;
    settings.spotItem = 9;
    EXPECT_EQ(value(WriteSpot, 16506, 16507), "mine");
    PopupRecord(gSpotPopInfo)->menu = own;
    DisposeMenu(nine);
}

TEST_F(Sections, CountWrittenBackLandsInTheSpotLength)
{
    importSpot("mine");
    int16_t refNum = openFile();
    toolbox::faults::failFileCall(toolbox::FileCall::write, 2, dskFulErr);
    EXPECT_EQ(WriteSpot(refNum), dskFulErr);
    EXPECT_EQ(gSpotLength, 0);
    FSClose(refNum);
}

TEST_F(Sections, AnnotationIsFontSizeAndTextAsTyped)
{
    const std::string typed = "Film (\\) for Tom's \xA1 shirt";
    setText(settings.annoSizeStr, "12");
    setText(settings.annoText, typed, 255);
    toolbox::setPascal(gFontNameStr, "Courier-Bold");
    EXPECT_EQ(written(WriteAnno), pieceBytes(16508) + "Courier-Bold" + pieceBytes(16509) + "12" +
                                      pieceBytes(16510) + typed + pieceBytes(16511));
}

TEST_F(Sections, EmptyAnnotationWritesItsPiecesBackToBack)
{
    setText(settings.annoText, "", 255);
    EXPECT_NE(written(WriteAnno).find(pieceBytes(16510) + pieceBytes(16511)), std::string::npos);
}

TEST_F(Sections, AnnotationKeepsItsDecimalComma)
{
    configuration.decimalPoint = ',';
    reopen();
    setText(settings.annoText, "1,5 mm", 255);
    EXPECT_NE(written(WriteAnno).find("1,5 mm"), std::string::npos);
}

TEST_F(Sections, AnnotationsFontAndSizeKeepTheirDecimalComma)
{
    configuration.decimalPoint = ',';
    reopen();
    setText(settings.annoSizeStr, "9,5");
    toolbox::setPascal(gFontNameStr, "Gill,Sans");
    std::string all = written(WriteAnno);
    EXPECT_NE(all.find(pieceBytes(16508) + "Gill,Sans" + pieceBytes(16509) + "9,5" + pieceBytes(16510)),
              std::string::npos);
}

// What only a damaged record can hold: a length beyond its field.
TEST_F(Sections, ValuesAndSizeAreWrittenUpTo15Characters)
{
    const std::string whole = "123456789012345";
    for (unsigned char *own : {settings.freqStr, settings.angleStr, settings.flatStr})
        setText(own, whole);
    for (auto setting : {&PrefsRec::freqItem, &PrefsRec::angleItem, &PrefsRec::flatItem})
        chooseLast(setting);
    for (unsigned char length : {15, 16, 40}) {
        settings.freqStr[0] = settings.angleStr[0] = settings.flatStr[0] = length;
        EXPECT_EQ(value(WriteFreq, 16501, 16502), whole);
        EXPECT_EQ(value(WriteAngle, 16503, 16504), whole);
        EXPECT_EQ(value(WriteFlat, 16560, 16561), whole);
        setText(settings.annoSizeStr, whole);
        settings.annoSizeStr[0] = length;
        EXPECT_NE(written(WriteAnno).find(pieceBytes(16509) + whole + pieceBytes(16510)), std::string::npos);
    }
}

TEST_F(Sections, AnnotationOf255IsWrittenWhole)
{
    const std::string longest(255, 'x');
    setText(settings.annoText, longest, 255);
    EXPECT_NE(written(WriteAnno).find(pieceBytes(16510) + longest + pieceBytes(16511)), std::string::npos);
}

TEST_F(Sections, FontNameIsCutTo63)
{
    toolbox::setPascal(gFontNameStr, std::string(70, 'F'));
    EXPECT_NE(written(WriteAnno).find(pieceBytes(16508) + std::string(63, 'F') + pieceBytes(16509)),
              std::string::npos);
}

TEST_F(Sections, ScreenCheckErrorHandlerAndSetupAreOnePieceEach)
{
    EXPECT_EQ(written(WriteScreenCheck), pieceBytes(16135));
    EXPECT_EQ(written(WriteError), pieceBytes(16520));
    EXPECT_EQ(written(WriteEnd), pieceBytes(16600));
}

TEST_F(Sections, WriterStopsAtTheFirstFailedPiece)
{
    choose(&PrefsRec::freqItem, 5);
    int16_t refNum = openFile();
    toolbox::faults::failFileCall(toolbox::FileCall::write, 2, ioErr);
    EXPECT_EQ(WriteFreq(refNum), ioErr);
    FSClose(refNum);
    EXPECT_EQ(contentsOf(folder / "section"), pieceBytes(16501));
}

struct Missing {
    int16_t id;
    OSErr (*writer)(int16_t);
    int number;
    int16_t spotItem;
};

class MissingPiece : public Sections, public ::testing::WithParamInterface<Missing> {};

TEST_P(MissingPiece, IsFatalWithItsOwnNumber)
{
    const Missing &missing = GetParam();
    removeResource('TEXT', missing.id);
    choose(&PrefsRec::freqItem, 5);
    choose(&PrefsRec::angleItem, 5);
    choose(&PrefsRec::flatItem, 5);
    choose(&PrefsRec::spotItem, missing.spotItem);
    int16_t refNum = openFile();
    dismiss();
    EXPECT_FALSE(guarded([&] { missing.writer(refNum); }));
    EXPECT_TRUE(traced(params(message(16129), "\r\rID = " + std::to_string(missing.number), " (text resource)")));
}

// Some numbers stand for two pieces.
INSTANTIATE_TEST_SUITE_P(
    Each, MissingPiece,
    ::testing::Values(Missing{16499, WriteBegin, 11, 1}, Missing{16500, WriteBegin, 11, 1},
                      Missing{16506, WriteSpot, 20, 3}, Missing{16128, WriteSpot, 21, 3},
                      Missing{16129, WriteSpot, 22, 4}, Missing{16130, WriteSpot, 23, 5},
                      Missing{16131, WriteSpot, 24, 6}, Missing{16132, WriteSpot, 25, 7},
                      Missing{16133, WriteSpot, 26, 8}, Missing{16134, WriteSpot, 27, 9},
                      Missing{16507, WriteSpot, 28, 3}, Missing{16135, WriteScreenCheck, 29, 1},
                      Missing{16501, WriteFreq, 13, 1}, Missing{16502, WriteFreq, 14, 1},
                      Missing{16503, WriteAngle, 15, 1}, Missing{16504, WriteAngle, 16, 1},
                      Missing{16560, WriteFlat, 17, 1}, Missing{16561, WriteFlat, 17, 1},
                      Missing{16508, WriteAnno, 18, 1}, Missing{16509, WriteAnno, 19, 1},
                      Missing{16510, WriteAnno, 20, 1}, Missing{16511, WriteAnno, 21, 1},
                      Missing{16520, WriteError, 29, 1}, Missing{16600, WriteEnd, 12, 1}),
    [](const auto &info) { return "Text" + std::to_string(info.param.id); });

}  // namespace
