#include "support/toolbox_test.h"

#include "toolbox/memory.h"
#include "toolbox/scrap.h"

namespace {

class ScrapTest : public ToolboxTest {
protected:
    static int32_t put(ResType type, const std::string &bytes)
    {
        return PutScrap(static_cast<int32_t>(bytes.size()), type, bytes.data());
    }
    static std::string got(ResType type)
    {
        Handle handle = NewHandle(0);
        int32_t length = GetScrap(handle, type, nullptr);
        EXPECT_EQ(length, GetHandleSize(handle));
        std::string bytes(*handle, static_cast<std::size_t>(GetHandleSize(handle)));
        DisposeHandle(handle);
        return bytes;
    }
};

TEST_F(ScrapTest, FreshScrapIsEmpty)
{
    EXPECT_EQ(ScrapInfo.scrapSize, 0);
    EXPECT_GT(ScrapInfo.scrapState, 0);
    int32_t offset = 5;
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', &offset), noTypeErr);
    EXPECT_EQ(offset, 5);
}

TEST_F(ScrapTest, SizeCountsEightPerEntryAndDataPaddedToEven)
{
    ZeroScrap();
    put('TEXT', "abc");
    EXPECT_EQ(ScrapInfo.scrapSize, 8 + 4);
    put('sty!', "12");
    EXPECT_EQ(ScrapInfo.scrapSize, 8 + 4 + 8 + 2);
    const std::string stored("TEXT\0\0\0\3abc\0sty!\0\0\0\2" "12", 22);
    EXPECT_EQ(std::string(*ScrapInfo.scrapHandle, 22), stored);
    int32_t offset = 0;
    EXPECT_EQ(GetScrap(nullptr, 'sty!', &offset), 2);
    EXPECT_EQ(offset, 20);
}

TEST_F(ScrapTest, FirstEntryOfATypeIsTheOneFound)
{
    ZeroScrap();
    put('TEXT', "first");
    put('TEXT', "second");
    EXPECT_EQ(got('TEXT'), "first");
    EXPECT_EQ(machine.clipboardText(), "first");
}

TEST_F(ScrapTest, ZeroEmptiesAndChangesTheCount)
{
    ZeroScrap();
    int16_t count = ScrapInfo.scrapCount;
    put('TEXT', "x");
    EXPECT_EQ(ScrapInfo.scrapCount, count);
    ZeroScrap();
    EXPECT_NE(ScrapInfo.scrapCount, count);
    EXPECT_EQ(ScrapInfo.scrapSize, 0);
    EXPECT_EQ(machine.clipboardText(), "");
}

TEST_F(ScrapTest, TextGoesOutAsUtf8WithLineFeeds)
{
    ZeroScrap();
    put('TEXT', "caf\x8E\rdue");
    EXPECT_EQ(machine.clipboardText(), "café\ndue");
    EXPECT_EQ(got('TEXT'), "caf\x8E\rdue");
}

TEST_F(ScrapTest, AnotherProgramsTextIsBroughtIn)
{
    ZeroScrap();
    put('TEXT', "mine");
    int16_t count = ScrapInfo.scrapCount;
    machine.putOnClipboard("thé\r\nfür\nall ☃");
    EXPECT_EQ(got('TEXT'), "th\x8E\rf\x9Fr\rall ?");
    EXPECT_NE(ScrapInfo.scrapCount, count);
    machine.putOnClipboard("");
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', nullptr), noTypeErr);
}

TEST_F(ScrapTest, ClipboardThatFoundNoMemoryIsBroughtInLater)
{
    machine.putOnClipboard("there");
    toolbox::faults::failAllocation(1);
    EXPECT_EQ(GetScrap(nullptr, 'TEXT', nullptr), noTypeErr);
    EXPECT_EQ(got('TEXT'), "there");
}

TEST_F(ScrapTest, ClipboardFilledBeforeTheStartIsThere)
{
    machine.putOnClipboard("before");
    restart();
    EXPECT_EQ(ScrapInfo.scrapSize, 8 + 6);
    EXPECT_EQ(got('TEXT'), "before");
}

TEST_F(ScrapTest, OtherTypesStayInside)
{
    ZeroScrap();
    put('PICT', "p");
    EXPECT_EQ(machine.clipboardText(), "");
    EXPECT_EQ(got('PICT'), "p");
}

TEST_F(ScrapTest, BadLengthsAndFullMemoryChangeNothing)
{
    ZeroScrap();
    put('TEXT', "kept");
    EXPECT_EQ(PutScrap(-1, 'PICT', "x"), paramErr);
    EXPECT_EQ(PutScrap(0x7FFFFFFF, 'PICT', "x"), memFullErr);
    toolbox::faults::failAllocation(1, true);
    EXPECT_EQ(put('PICT', "more"), memFullErr);
    toolbox::faults::clear();
    EXPECT_EQ(ScrapInfo.scrapSize, 12);
    EXPECT_EQ(got('TEXT'), "kept");
}

TEST_F(ScrapTest, LeavesNothingBehind)
{
    ZeroScrap();
    put('TEXT', std::string(1000, 'x'));
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
}

}  // namespace
