// Which values pass, and what becomes of those that do not.
#include "source/value_entry_dialog.h"

namespace value_entry_dialog {
namespace {

class ValueCheck : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
    }

    bool passes(const std::string &text, int16_t kind)
    {
        P copy(text);
        bool passed = DoFreqStrCheck(copy, kind, false);
        EXPECT_EQ(plain(copy), text) << "the text was changed";
        EXPECT_FALSE(traced("dialog"));
        return passed;
    }
};

TEST_F(ValueCheck, FrequencyIsFrom1To999)
{
    for (const char *text : {"1", "999", "1.5", "998.9999", "0.9999e"})
        EXPECT_EQ(passes(text, kFreqKind), std::string(text) != "0.9999e") << text;
    for (const char *text : {"", "0", "0.9999", "999.0001", "-1", "1a", "1.2.3", "."})
        EXPECT_FALSE(passes(text, kFreqKind)) << text;
}

TEST_F(ValueCheck, AngleIsFrom0To360)
{
    for (const char *text : {"0", "360", ".5", "22.5", "0.0001"})
        EXPECT_TRUE(passes(text, kAngleKind)) << text;
    for (const char *text : {"", ".", "360.5", "361", "-1", "4 5"})
        EXPECT_FALSE(passes(text, kAngleKind)) << text;
}

TEST_F(ValueCheck, FlatnessIsFrom02To200)
{
    for (const char *text : {"0.2", "200", "1", ".25"})
        EXPECT_TRUE(passes(text, kFlatKind)) << text;
    for (const char *text : {"", "0.19", "0.1999", "200.5", "."})
        EXPECT_FALSE(passes(text, kFlatKind)) << text;
}

TEST_F(ValueCheck, FourDecimalsAreTheMost)
{
    EXPECT_TRUE(passes("12.3456", kFreqKind));
    EXPECT_FALSE(passes("12.34567", kFreqKind));
}

TEST_F(ValueCheck, WholeNumberOfFourCharactersFails)
{
    EXPECT_TRUE(passes("100", kFreqKind));
    EXPECT_FALSE(passes("0100", kFreqKind));
    EXPECT_FALSE(passes("0045", kAngleKind));
}

TEST_F(ValueCheck, SeparatorIsTheUsers)
{
    environment.decimalPt = ',';
    EXPECT_TRUE(passes("22,5", kAngleKind));
    EXPECT_FALSE(passes("22.5", kAngleKind));
}

TEST_F(ValueCheck, UnknownKindMindsOnlyTheForm)
{
    EXPECT_TRUE(passes("100000", 8));
    EXPECT_TRUE(passes("", 4));
    EXPECT_FALSE(passes("1a", 8));
    EXPECT_FALSE(passes("1.2.3", 8));
}

TEST_F(ValueEntry, BoundsPass)
{
    for (const char *text : {"1", "999"})
        expectStored(kFreqKind, text, settings.freqStr, text);
    for (const char *text : {"360", "0"})
        expectStored(kAngleKind, text, settings.angleStr, text);
    for (const char *text : {"0.2", "200"})
        expectStored(kFlatKind, text, settings.flatStr, text);
}

TEST_F(ValueEntry, NumbersAreTidied)
{
    expectStored(kFreqKind, "007", settings.freqStr, "7");
    expectStored(kFreqKind, "12.500", settings.freqStr, "12.5");
    expectStored(kFreqKind, "12.", settings.freqStr, "12");
    expectStored(kFreqKind, "12.000", settings.freqStr, "12");
}

TEST_F(ValueEntry, EmptyAngleIs0)
{
    for (const char *text : {"", "00", ".", "0.0"})
        expectStored(kAngleKind, text, settings.angleStr, "0");
    expectStored(kAngleKind, ".5", settings.angleStr, "0.5");
    expectStored(kAngleKind, "00.5", settings.angleStr, "0.5");
}

TEST_F(ValueEntry, FrequencyOutOfRangeIsCorrected)
{
    expectRefusal(kFreqKind, "0.9999", {16141, "1"});
    expectRefusal(kFreqKind, "999.0001", {16141, "999"});
    expectRefusal(kFreqKind, "1234", {16141, "999"});
    expectRefusal(kFreqKind, "", {16141, "45"});
    expectRefusal(kFreqKind, ".", {16141, "45"});
}

TEST_F(ValueEntry, AngleOutOfRangeIsCorrected)
{
    expectRefusal(kAngleKind, "360.1", {16142, "360"});
}

TEST_F(ValueEntry, FlatnessOutOfRangeIsCorrected)
{
    expectRefusal(kFlatKind, "0.19", {16143, "0.2"});
    expectRefusal(kFlatKind, "200.5", {16143, "200"});
    expectRefusal(kFlatKind, ".", {16143, "3"});
}

TEST_F(ValueEntry, LowestFlatnessHasTheUsersSeparator)
{
    reopenWith(',');
    expectRefusal(kFlatKind, "0,19", {16143, "0,2"});
}

TEST_F(ValueEntry, FifthDecimalIsCutOff)
{
    expectRefusal(kFreqKind, "12.34567", {16144, "12.3456"});
}

TEST_F(ValueEntry, TwoSeparatorsAreRefusedOnOKOnly)
{
    expectRefusal(kFreqKind, "1.2.3", {16140, "45"});
}

TEST_F(ValueEntry, PastedLettersAreRefusedOnOKOnly)
{
    expectRefusal(kFreqKind, "1a", {16132, "45"});
}

TEST_F(ValueEntry, RefusedValueCanBeConfirmedNext)
{
    user.type("5000");
    user.key("return");
    dismiss();
    user.in(kFreqDialogID);
    user.key("return");
    EXPECT_TRUE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), "999");
}

TEST_F(ValueEntry, EnterIsRefusedAndConfirmsAsReturnDoes)
{
    user.type("5000");
    user.key("enter");
    dismiss();
    user.in(kFreqDialogID);
    user.then([&] {
        EXPECT_EQ(field(), "999");
        EXPECT_EQ(plain(settings.freqStr), "45") << "nothing is stored yet";
    });
    user.key("enter");
    EXPECT_TRUE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), "999");
    EXPECT_EQ(tracedTimes("flash \"OK\""), 2);
    EXPECT_TRUE(traced(params(message(16141))));
}

}  // namespace
}  // namespace value_entry_dialog
