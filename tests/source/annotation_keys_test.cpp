// Keys in the annotation dialog, and pasting.
#include "source/annotation_dialog.h"

namespace annotation_dialog {
namespace {

TEST_F(Annotation, SizeTakesFourDigitsOnly)
{
    typeSize("12.a");
    user.then([&] {
        EXPECT_EQ(field(kSize), "12");
        EXPECT_EQ(machine.beeps(), 2);
    });
    user.type("345");
    user.then([&] {
        EXPECT_EQ(field(kSize), "1234");
        EXPECT_EQ(machine.beeps(), 3);
    });
    user.press(2);
    run();
}

TEST_F(Annotation, TextTakes254Characters)
{
    fillText(std::string(253, 'x'));
    user.then([] { SelIText(gTheDialog, kText, 253, 253); });
    user.type("ab");
    user.then([&] {
        EXPECT_EQ(field(kText), std::string(253, 'x') + "a");
        EXPECT_EQ(machine.beeps(), 1);
    });
    user.press(2);
    run();
}

TEST_F(Annotation, TabMovesBetweenTheFields)
{
    user.key("tab");
    user.then([&] { EXPECT_EQ(currentField(), kSize); });
    user.key("tab");
    user.then([&] { EXPECT_EQ(currentField(), kText); });
    user.press(2);
    run();
    EXPECT_EQ(machine.beeps(), 0);
}

TEST_F(Annotation, HeldKeysNeedRoom)
{
    auto repeated = [](int key, int modifiers = 0) {
        EventRecord event{};
        event.what = autoKey;
        event.message = key;
        event.modifiers = modifiers;
        int16_t itemHit = 0;
        return AnnoFilter(gTheDialog, &event, &itemHit) != 0;
    };
    user.then([&] {
        EXPECT_FALSE(repeated('x'));
        EXPECT_FALSE(repeated(8));
    });
    fillText(std::string(254, 'x'));
    user.then([] { SelIText(gTheDialog, kText, 254, 254); });
    user.then([&] {
        EXPECT_TRUE(repeated('x'));
        EXPECT_TRUE(repeated(8));
    });
    user.key("tab");
    user.then([&] {
        EXPECT_FALSE(repeated('1'));
        EXPECT_FALSE(repeated(8));
        EXPECT_FALSE(repeated(9));
        EXPECT_FALSE(repeated(28));
        EXPECT_TRUE(repeated('.'));
        EXPECT_TRUE(repeated(13));
    });
    user.press(2);
    run();
}

TEST_F(Annotation, ReturnAndEnterConfirm)
{
    for (const char *key : {"return", "enter"}) {
        user.in(kAnnoDialogID);
        user.type(key);
        user.key(key);
        EXPECT_TRUE(run());
        EXPECT_EQ(plain(settings.annoText), key);
    }
    EXPECT_EQ(tracedTimes("flash \"OK\""), 2);
}

TEST_F(Annotation, EscapeAndCommandPeriodCancel)
{
    for (auto [key, modifiers] : {std::pair{"escape", 0}, std::pair{".", static_cast<int>(cmdKey)}}) {
        user.in(kAnnoDialogID);
        user.type("something else");
        user.key(key, static_cast<uint16_t>(modifiers));
        EXPECT_FALSE(run());
        EXPECT_EQ(plain(settings.annoText), "before");
    }
    EXPECT_EQ(tracedTimes("flash \"Cancel\""), 2);
}

TEST_F(Annotation, PeriodAloneIsTyped)
{
    user.type(".");
    user.key("enter");
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoText), ".");
}

TEST_F(Annotation, PasteTooLongIsRefusedInTheFieldsOwnWords)
{
    paste(std::string(255, 'x'));
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(field(kText), "before"); });
    user.key("tab");
    paste("12345");
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(field(kSize), "9"); });
    user.press(2);
    run();
    EXPECT_EQ(tracedTimes(params(message(16163))), 1);
    EXPECT_EQ(tracedTimes(params(message(16167))), 1);
}

TEST_F(Annotation, PasteThatJustFillsTheFieldIsTaken)
{
    paste(std::string(254, 'x'));
    user.then([&] { EXPECT_EQ(field(kText), std::string(254, 'x')); });
    user.key("tab");
    paste("1234");
    user.then([&] { EXPECT_EQ(field(kSize), "1234"); });
    user.press(2);
    run();
}

TEST_F(Annotation, PasteIsMeasuredWithWhatStaysInTheField)
{
    typeSize("123");
    paste("45");
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(field(kSize), "123"); });
    user.key("backspace");
    paste("45");
    user.then([&] { EXPECT_EQ(field(kSize), "1245"); });
    fillText(std::string(252, 'x'));
    user.key("tab");
    user.key("right");
    paste("abcd");
    dismiss();
    user.in(kAnnoDialogID);
    paste("ab");
    user.then([&] { EXPECT_EQ(field(kText), std::string(252, 'x') + "ab"); });
    user.press(2);
    run();
    EXPECT_EQ(tracedTimes(params(message(16163))), 1);
    EXPECT_EQ(tracedTimes(params(message(16167))), 1);
}

TEST_F(Annotation, PasteThatFitsReplacesTheSelection)
{
    paste("from elsewhere");
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoText), "from elsewhere");
}

TEST_F(Annotation, Before7CommandKeysAreDoneHere)
{
    reopenBefore7();
    user.key("x", cmdKey);
    user.then([&] {
        EXPECT_EQ(machine.clipboardText(), "before");
        EXPECT_EQ(field(kText), "");
    });
    user.key("v", cmdKey);
    user.key("v", cmdKey);
    user.key("q", cmdKey);
    user.then([&] {
        EXPECT_EQ(field(kText), "beforebefore");
        EXPECT_EQ(machine.beeps(), 1);
    });
    user.key("tab");
    user.key("v", cmdKey);
    dismiss();
    user.in(kAnnoDialogID);
    user.press(2);
    run();
    EXPECT_TRUE(traced(params(message(16167))));
}

}  // namespace
}  // namespace annotation_dialog
