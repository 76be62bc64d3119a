// What text and size of an annotation may be, and what is refused.
#include "source/annotation_dialog.h"

namespace annotation_dialog {
namespace {

class SizeCheck : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        makeRecords();
    }
    bool passes(const std::string &text)
    {
        P copy(text);
        bool passed = DoSizeStrCheck(copy, false);
        EXPECT_EQ(plain(copy), text);
        EXPECT_FALSE(traced("dialog"));
        return passed;
    }
};

TEST_F(SizeCheck, IsAWholeNumberFrom4To30)
{
    for (const char *text : {"4", "30", "12", "0012"})
        EXPECT_TRUE(passes(text)) << text;
    for (const char *text : {"", "3", "31", "12.0", "12.5", "1a", "1.2.3", "-9"})
        EXPECT_FALSE(passes(text)) << text;
}

TEST_F(Annotation, EverySizeOfTheMenuPassesTheCheck)
{
    user.then([&] {
        MenuHandle menu = PopupRecord(gAnnoSizePopInfo)->menu;
        for (int16_t item = 1; item <= CountMItems(menu); ++item) {
            Str255 size;
            GetItem(menu, item, size);
            EXPECT_TRUE(DoSizeStrCheck(size, false)) << plain(size);
        }
    });
    user.press(2);
    run();
}

TEST_F(Annotation, EmptyTextIsRefused)
{
    user.key("backspace");
    expectRefused(16145, [&] { EXPECT_EQ(field(kText), "before"); });
}

TEST_F(Annotation, EmptiedTextGoesBackToTheOneFromBeforeTheDialog)
{
    user.type("new text");
    typeSize("99");
    user.key("return");
    dismiss();
    user.in(kAnnoDialogID);
    user.then([&] { EXPECT_EQ(plain(settings.annoText), "new text"); });
    user.key("tab");
    user.key("backspace");
    expectRefused(16145, [&] { EXPECT_EQ(field(kText), "before"); });
}

TEST_F(Annotation, TextOf255IsCutTo254AndRefused)
{
    fillText(std::string(255, 'x'));
    expectRefused(16145, [&] { EXPECT_EQ(field(kText), std::string(254, 'x')); });
}

TEST_F(Annotation, TextOf254Passes)
{
    fillText(std::string(254, 'x'));
    user.press(1);
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoText), std::string(254, 'x'));
}

TEST_F(Annotation, SizesOutOfRangeAreCorrected)
{
    typeSize("3");
    expectRefused(16166, [&] { EXPECT_EQ(field(kSize), "4"); });
    user.in(kAnnoDialogID);
    typeSize("31");
    expectRefused(16166, [&] { EXPECT_EQ(field(kSize), "30"); });
    user.in(kAnnoDialogID);
    typeSize("");
    expectRefused(16166, [&] { EXPECT_EQ(field(kSize), "4"); });
}

TEST_F(Annotation, BoundsPassAndLeadingZerosGo)
{
    for (auto [typed, stored] : {std::pair{"4", "4"}, std::pair{"30", "30"}, std::pair{"0012", "12"}}) {
        user.in(kAnnoDialogID);
        typeSize(typed);
        user.key("return");
        EXPECT_TRUE(run());
        EXPECT_EQ(plain(settings.annoSizeStr), stored);
    }
}

// The field takes no more than four by key or by paste; a host can put more into it.
TEST_F(Annotation, SizeIsCutTo15CharactersBeforeItsLeadingZerosGo)
{
    fill(kSize, std::string(13, '0') + "12345");
    user.key("return");
    EXPECT_TRUE(run());
    EXPECT_EQ(plain(settings.annoSizeStr), "12");
}

TEST_F(Annotation, SizeWithASeparatorIsRefusedThoughItsZerosCouldGo)
{
    user.key("tab");
    user.key("backspace");
    paste("12.0");
    expectRefused(16165, [&] { EXPECT_EQ(field(kSize), "9"); });
}

TEST_F(Annotation, SizePopupsChoiceIsWhatAWrongSizeGoesBackTo)
{
    for (auto [pasted, words] : {std::pair{"1a", 16132}, std::pair{"12.0", 16165}}) {
        SCOPED_TRACE(pasted);
        user.in(kAnnoDialogID);
        user.choose(kSizes, "24");
        user.key("backspace");
        paste(pasted);
        expectRefused(static_cast<int16_t>(words), [&] { EXPECT_EQ(field(kSize), "24"); });
        EXPECT_EQ(plain(settings.annoSizeStr), "9");
    }
}

TEST_F(Annotation, TextIsStoredThoughTheSizeIsRefused)
{
    user.type("new text");
    typeSize("99");
    expectRefused(16166, [&] { EXPECT_EQ(plain(settings.annoText), "new text"); });
    EXPECT_EQ(plain(settings.annoText), "before");
}

}  // namespace
}  // namespace annotation_dialog
