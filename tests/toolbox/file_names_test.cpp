// Names, case, aliases.
#include "files/names.h"
#include "support/toolbox_test.h"
#include "toolbox/files.h"

using namespace toolbox;
namespace fs = std::filesystem;

namespace {

class FileNamesTest : public ToolboxTest {
protected:
    OSErr opens(const std::string &macName)
    {
        int16_t refNum = 0;
        OSErr error = FSOpen(P(macName), 0, &refNum);
        if (error == noErr)
            FSClose(refNum);
        return error;
    }
    std::string macName(const std::string &linuxName) { return folders::macName(folder.path(), linuxName); }
};

}  // namespace

TEST_F(FileNamesTest, ImpossibleNamesAreRefused)
{
    for (const std::string &name :
         {std::string(""), std::string("a:b"), std::string("._a"), std::string("."), std::string(".."),
          std::string("a\0b", 3), std::string(64, 'x')})
        EXPECT_EQ(Create(P(name), 0, 'ttxt', 'TEXT'), bdNamErr) << name;
    EXPECT_TRUE(fs::is_empty(folder.path()));
    EXPECT_EQ(opens("._a"), bdNamErr);
}

TEST_F(FileNamesTest, LongestNameIsSixtyThreeBytesHoweverLongInLinux)
{
    std::string name(63, '\xC9');   // three bytes each in UTF-8
    EXPECT_EQ(Create(P(name), 0, 'RIDR', 'pref'), noErr);
    EXPECT_TRUE(fs::exists(folder / utf8FromRoman(name)));
    EXPECT_TRUE(fs::exists(folder / ("._" + utf8FromRoman(name))));
    EXPECT_EQ(macName(utf8FromRoman(name)), name);
}

TEST_F(FileNamesTest, SlashAndColonChangePlaces)
{
    EXPECT_EQ(Create(P("in/out"), 0, 'ttxt', 'TEXT'), noErr);
    EXPECT_TRUE(fs::exists(folder / "in:out"));
    EXPECT_EQ(macName("in:out"), "in/out");
    EXPECT_EQ(Create(P("../escape"), 0, 'ttxt', 'TEXT'), noErr);
    EXPECT_TRUE(fs::exists(folder / "..:escape"));
}

TEST_F(FileNamesTest, NamesAreMacRomanInsideAndUtf8Outside)
{
    EXPECT_EQ(Create(P("caf\x8E"), 0, 'ttxt', 'TEXT'), noErr);
    EXPECT_TRUE(fs::exists(folder / "café"));
    EXPECT_TRUE(traced("file create \"café\" -> 0"));
}

TEST_F(FileNamesTest, OpensWhateverTheCaseButTheExactNameFirst)
{
    writeFile(folder / "Riders File", "one");
    EXPECT_EQ(opens("RIDERS file"), noErr);
    writeFile(folder / "RIDERS FILE", "three");
    int16_t refNum;
    ASSERT_EQ(FSOpen(P("RIDERS FILE"), 0, &refNum), noErr);
    int32_t end = 0;
    GetEOF(refNum, &end);
    EXPECT_EQ(end, 5);
    FSClose(refNum);
    writeFile(folder / "\u00c9t\u00e9", "");
    EXPECT_EQ(opens("\x8Et\x83"), noErr);
    EXPECT_EQ(opens("ete"), fnfErr);
}

TEST_F(FileNamesTest, DecomposedNamesOnDiskAreFound)
{
    writeFile(folder / "cafe\u0301", "text");
    EXPECT_EQ(macName("cafe\u0301"), "caf\x8E");
    EXPECT_EQ(opens("caf\x8E"), noErr);
    EXPECT_EQ(FSDelete(P("caf\x8E"), 0), noErr);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(FileNamesTest, TwoSpellingsOfOneNameAreBothReachable)
{
    writeFile(folder / "cafe\u0301", "decomposed");
    writeFile(folder / "café", "c");
    EXPECT_EQ(macName("café"), "caf\x8E");
    std::string other = macName("cafe\u0301");
    EXPECT_NE(other, "caf\x8E");
    int16_t refNum;
    ASSERT_EQ(FSOpen(P(other), 0, &refNum), noErr);
    int32_t end = 0;
    GetEOF(refNum, &end);
    EXPECT_EQ(end, 10);
    FSClose(refNum);
}

TEST_F(FileNamesTest, NamesThatDoNotFitGetAliases)
{
    std::string longName = std::string(80, 'x') + ".riders";
    for (const std::string &linuxName :
         {longName, std::string("日本語.txt"), std::string("bad\xFF" "bytes"), std::string(255, 'y')}) {
        writeFile(folder / linuxName, linuxName);
        std::string alias = macName(linuxName);
        EXPECT_LE(alias.size(), 63u);
        EXPECT_EQ(macName(linuxName), alias);
        EXPECT_EQ(opens(alias), noErr) << linuxName;
        EXPECT_EQ(folders::pathOf(0, 0, P(alias)), folder / linuxName);
        EXPECT_EQ(Create(P(alias), 0, 'ttxt', 'TEXT'), dupFNErr);
        EXPECT_EQ(contentsOf(folder / linuxName), linuxName);
    }
    EXPECT_TRUE(macName(longName).ends_with(".riders"));
    EXPECT_EQ(macName("日本語.txt"), "???#1.txt");
}

TEST_F(FileNamesTest, AliasesDifferFromOneAnotherAndFromFiles)
{
    writeFile(folder / "???#1.txt", "a real one");
    std::string first = macName("日本語.txt"), second = macName("中国語.txt");
    EXPECT_EQ(first, "???#2.txt");
    EXPECT_EQ(second, "???#3.txt");
}

TEST_F(FileNamesTest, ReplacingThroughAnAliasKeepsTheLinuxName)
{
    writeFile(folder / "日本語", "old");
    std::string alias = macName("日本語");
    writeFile(folder / "KTTemp1", "new");
    EXPECT_EQ(Rename(P(alias), 0, P("KTTemp2")), noErr);
    EXPECT_EQ(Rename(P("KTTemp1"), 0, P(alias)), noErr);
    EXPECT_EQ(FSDelete(P("KTTemp2"), 0), noErr);
    EXPECT_EQ(contentsOf(folder / "日本語"), "new");
}

TEST_F(FileNamesTest, NameTooLongForACompanionStillOpens)
{
    std::string linuxName(254, 'n');
    writeFile(folder / linuxName, "text");
    std::string alias = macName(linuxName);
    FInfo info{};
    EXPECT_EQ(GetFInfo(P(alias), 0, &info), noErr);
    EXPECT_EQ(info.fdType, static_cast<OSType>('TEXT'));
    info.fdType = 'PICT';
    EXPECT_EQ(SetFInfo(P(alias), 0, &info), bdNamErr);
    EXPECT_EQ(Rename(P(alias), 0, P("short")), noErr);
    EXPECT_EQ(contentsOf(folder / "short"), "text");
}

TEST_F(FileNamesTest, SortAsPeopleSort)
{
    using files::compareNames;
    std::vector<std::string> sorted = {"1", "2b", "10", "\x83tude", "Etudes", "file 2", "File 010", "file 10 a",
                                       "Zebra"};
    for (std::size_t i = 0; i < sorted.size(); ++i)
        for (std::size_t j = 0; j < sorted.size(); ++j)
            EXPECT_EQ(compareNames(sorted[i], sorted[j]) < 0, i < j) << sorted[i] << " / " << sorted[j];
    EXPECT_NE(compareNames("a", "A"), 0);
    EXPECT_EQ(compareNames("a", "a"), 0);
}
