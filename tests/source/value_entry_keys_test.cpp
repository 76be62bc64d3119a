// Keys in the dialog for a value, and pasting.
#include "source/value_entry_dialog.h"

namespace value_entry_dialog {
namespace {

TEST_F(ValueEntry, SixteenthCharacterBeeps)
{
    user.type("123456789012345");
    user.then([&] { EXPECT_EQ(machine.beeps(), 0); });
    user.type("6");
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 1);
        EXPECT_EQ(field(), "123456789012345");
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, DigitReplacesASelectionInAFullField)
{
    user.type("123456789012345");
    user.then([] { SelIText(gTheDialog, 4, 3, 6); });
    user.type("0");
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 0);
        EXPECT_EQ(field(), "1230789012345");
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, OtherCharactersBeep)
{
    user.type("a- ,");
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 4);
        EXPECT_EQ(field(), "45");
    });
    user.key("tab");
    user.then([&] { EXPECT_EQ(machine.beeps(), 5); });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, OnlyTheUsersSeparatorIsTaken)
{
    reopenWith(',');
    user.type("1,5");
    user.type(".");
    user.then([&] {
        EXPECT_EQ(field(), "1,5");
        EXPECT_EQ(machine.beeps(), 1);
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, BackspaceAndArrowsEdit)
{
    user.key("right");
    user.key("left");
    user.key("backspace");
    user.then([&] { EXPECT_EQ(field(), "5"); });
    user.key("escape");
    run(kFreqKind);
}

class HeldKey : public ValueEntry {
protected:
    // Whether the filter takes a repeat of the key; false: lets it through.
    bool repeated(char key, uint16_t modifiers = 0)
    {
        EventRecord event{};
        event.what = autoKey;
        event.message = static_cast<unsigned char>(key);
        event.modifiers = modifiers;
        int16_t itemHit = 0;
        bool taken = FreqFilter(gTheDialog, &event, &itemHit);
        EXPECT_EQ(itemHit, 0);
        return taken;
    }
};

TEST_F(HeldKey, OnlyDigitsAndEditingKeysRepeat)
{
    user.then([&] {
        for (char key : {'0', '9', '\x08', '\x1C', '\x1F'})
            EXPECT_FALSE(repeated(key)) << static_cast<int>(key);
        EXPECT_EQ(machine.beeps(), 0);
        for (char key : {'.', '\r', '\x03', '\x1B', 'a'})
            EXPECT_TRUE(repeated(key)) << static_cast<int>(key);
        EXPECT_TRUE(repeated('v', cmdKey));
        EXPECT_TRUE(repeated('1', cmdKey));
        EXPECT_EQ(machine.beeps(), 7);
    });
    user.type("123456789012345");
    user.then([&] {
        EXPECT_TRUE(repeated('1'));
        EXPECT_FALSE(repeated('\x08'));
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntry, PasteThatFitsIsTaken)
{
    paste("12.5");
    user.then([&] { EXPECT_EQ(field(), "12.5"); });
    user.key("return");
    EXPECT_TRUE(run(kFreqKind));
    EXPECT_EQ(plain(settings.freqStr), "12.5");
}

TEST_F(ValueEntry, PasteOf16CharactersIsRefusedWithAMessage)
{
    paste("1234567890123456");
    dismiss();
    user.in(kFreqDialogID);
    user.then([&] { EXPECT_EQ(field(), "45"); });
    user.key("escape");
    run(kFreqKind);
    EXPECT_TRUE(traced(params(message(16162))));
}

TEST_F(ValueEntry, PasteIsMeasuredWithWhatStaysInTheField)
{
    user.type("1234567890");
    paste("123456");
    dismiss();
    user.in(kFreqDialogID);
    user.then([] { SelIText(gTheDialog, 4, 0, 10); });
    paste("123456");
    user.then([&] { EXPECT_EQ(field(), "123456"); });
    user.key("escape");
    run(kFreqKind);
    EXPECT_EQ(tracedTimes(params(message(16162))), 1);
}

class ValueEntryBefore7 : public ValueEntry {
protected:
    void SetUp() override
    {
        ValueEntry::SetUp();
        reopenWith('.', 0x0605);
    }
};

TEST_F(ValueEntryBefore7, CutAndCopyReachTheDeskScrap)
{
    user.key("c", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.clipboardText(), "45");
        EXPECT_EQ(field(), "45");
    });
    user.key("x", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.clipboardText(), "45");
        EXPECT_EQ(field(), "");
    });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntryBefore7, PasteIsRefusedWhenTooLongAndSilentWithoutText)
{
    user.key("v", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.beeps(), 0);
        EXPECT_EQ(field(), "45");
    });
    user.putOnClipboard("1234567890123456");
    user.key("v", cmdKey);
    dismiss();
    user.in(kFreqDialogID);
    user.key("escape");
    run(kFreqKind);
    EXPECT_TRUE(traced(params(message(16162))));
}

TEST_F(ValueEntryBefore7, CopiedTextIsPasted)
{
    user.key("c", cmdKey);
    user.key("right");
    user.key("v", cmdKey);
    user.then([&] { EXPECT_EQ(field(), "4545"); });
    user.key("escape");
    run(kFreqKind);
}

TEST_F(ValueEntryBefore7, OtherCommandKeysBeep)
{
    user.key("q", cmdKey);
    user.then([&] { EXPECT_EQ(machine.beeps(), 1); });
    user.key("escape");
    run(kFreqKind);
}

}  // namespace
}  // namespace value_entry_dialog
