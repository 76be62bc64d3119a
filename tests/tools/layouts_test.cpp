// Each kind of resource, byte for byte.
#include "tools/compile.h"

#define EXPECT_BYTES(text, hex) EXPECT_EQ(asHex(bytes(text)), asHex(fromHex(hex)))

TEST_F(Compile, StringIsAPascalString)
{
    EXPECT_BYTES("string 128 \"Hi\"", "02 4869");
    EXPECT_BYTES("string 128 \"\"", "00");
}

TEST_F(Compile, StringListCountsItsStrings)
{
    EXPECT_BYTES("strings 128 { \"a\" \"\" ; \"bc\"\n\"d\" }", "0004 01 61 00 02 6263 01 64");
    EXPECT_BYTES("strings 128 { }", "0000");
}

TEST_F(Compile, MenuHasFlagsTitleItemsAndAnEnd)
{
    EXPECT_BYTES("menu 129 \"File\" {\n"
                 "  \"Open\" key \"O\"\n"
                 "  divider\n"
                 "  \"Draft\" mark 0x12 disabled ; \"Quit\"\n"
                 "}",
                 "0081 0000 0000 0000 0000 FFFFFFF3 04 46696C65"
                 "04 4F70656E 00 4F 00 00"
                 "01 2D 00 00 00 00"
                 "05 4472616674 00 00 12 00"
                 "04 51756974 00 00 00 00"
                 "00");
}

TEST_F(Compile, MenuMayHaveADividerAfterTheLastEnableBit)
{
    std::string source = "menu 1 \"\" {\n";
    for (int i = 0; i < 31; ++i)
        source += "\"x\"\n";
    std::string data = bytes(source + "divider\n}");
    EXPECT_EQ(asHex(data.substr(10, 4)), "FFFFFFFF");
    EXPECT_EQ(complaint(source + "\"last\" disabled\n}"), "33: only the first 31 items can be disabled");
}

TEST_F(Compile, DialogHasTheDocumentedFields)
{
    EXPECT_BYTES("dialog 512 { size 420 254 ; at 22 34 ; kind dBox ; visible ; closebox ; items 512 }",
                 "0022 0016 0120 01BA 0001 0100 0100 00000000 0200 00");
    EXPECT_BYTES("dialog -3 { size 10 20 ; hidden ; kind movable ; title \"Hey\" ; refcon -2 }",
                 "0000 0000 0014 000A 0005 0000 0000 FFFFFFFE FFFD 03 486579");
}

TEST_F(Compile, DialogKindsHaveTheirNumbers)
{
    const char *kinds[] = {"document", "dBox", "plain", "alt", "noGrow", "movable"};
    for (int number = 0; number < 6; ++number) {
        std::string data = bytes(std::string("dialog 1 { size 1 1 ; kind ") + kinds[number] + " }");
        EXPECT_EQ(data[9], number) << kinds[number];
    }
}

TEST_F(Compile, AlertHasBoundsItemsAndStages)
{
    EXPECT_BYTES("alert 300 { size 300 100 ; at 40 60 ; items 301 ; stages 0x4444 }",
                 "003C 0028 00A0 0154 012D 4444");
    EXPECT_BYTES("alert 300 { size 1 1 }", "0000 0000 0001 0001 012C 5555");
}

TEST_F(Compile, ItemsArePaddedToEvenLengths)
{
    EXPECT_BYTES("items 1 {\n"
                 "  button 10 20 80 20 \"OK\"\n"
                 "  disabled text 1 2 3 4 \"abc\"\n"
                 "  user 0 0 5 5\n"
                 "  edit 0 0 0 0 \"\"\n"
                 "  checkbox 0 0 1 1 \"c\" ; radio 0 0 1 1 \"r\"\n"
                 "  icon 0 0 32 32 -1 ; disabled picture 0 0 1 1 300 ; control 0 0 1 1 5\n"
                 "}",
                 "0008"
                 "00000000 0014 000A 0028 005A 04 02 4F4B"
                 "00000000 0002 0001 0006 0004 88 03 616263 00"
                 "00000000 0000 0000 0005 0005 00 00"
                 "00000000 0000 0000 0000 0000 10 00"
                 "00000000 0000 0000 0001 0001 05 01 63 00"
                 "00000000 0000 0000 0001 0001 06 01 72 00"
                 "00000000 0000 0000 0020 0020 20 02 FFFF"
                 "00000000 0000 0000 0001 0001 C0 02 012C"
                 "00000000 0000 0000 0001 0001 07 02 0005");
    EXPECT_BYTES("items 1 {}", "FFFF");
}

TEST_F(Compile, VersionHasBothTextsBackToBack)
{
    EXPECT_BYTES("version 1 { number 0x01 0x23 0x80 7 ; region 2 ; short \"1.2.3\" ; long \"1.2.3, mine\" }",
                 "01 23 80 07 0002 05 312E322E33 0B 312E322E332C206D696E65");
}

TEST_F(Compile, ColorTableHasSeedFlagsAndCount)
{
    EXPECT_BYTES("colors 'dctb' 1 { part 0 0xDDDD 0x0102 65535 ; part 2 0 0 0 }",
                 "00000000 0000 0001 0000 DDDD 0102 FFFF 0002 0000 0000 0000");
    EXPECT_BYTES("colors 'cctb' 1 {}", "00000000 0000 FFFF");
}

TEST_F(Compile, FilesAreTakenAsTheyStand)
{
    std::filesystem::create_directory(folder / "ps");
    std::string body("line\r\nnext\n\0\xE9", 13);
    writeFile(folder / "ps" / "x.ps", body);
    EXPECT_EQ(bytes("text 5 file \"ps/x.ps\""), body);
    EXPECT_EQ(bytes("data 'ABC ' 5 file \"ps/x.ps\""), body);
}

TEST_F(Compile, SeveralFilesFollowOneAnotherWithNothingBetween)
{
    writeFile(folder / "a.ps", "no line end");
    writeFile(folder / "b.ps", "");
    writeFile(folder / "c.ps", " here\n");
    EXPECT_EQ(bytes("text 5 files { \"a.ps\" ; \"b.ps\"\n \"c.ps\" }"), "no line end here\n");
    EXPECT_EQ(bytes("data 'ABC ' 5 files {}"), "");
}

TEST_F(Compile, HexIsTakenInPairs)
{
    EXPECT_BYTES("hex 'ABC ' 5 { 00 ff 0A\n DEADBEEF ; 78 }", "00 FF 0A DEADBEEF 78");
}

TEST_F(Compile, SoundIsFormatOneEightBitMono)
{
    auto wave = [](const std::string &channelsRateBits, const std::string &samples) {
        std::string data = fromHex(samples);
        std::string body = "WAVEfmt " + fromHex("10000000 0100" + channelsRateBits) + "data" +
                           std::string(1, static_cast<char>(data.size())) + std::string(3, '\0') + data;
        return "RIFF" + std::string(1, static_cast<char>(body.size())) + std::string(3, '\0') + body;
    };
    std::string head = "0001 0001 0005 00000080 0001 8051 0000 00000014"
                       "00000000 0000000%N AC440000 00000000 00000000 00 3C";
    auto expected = [&](const std::string &count, const std::string &samples) {
        std::string text = head;
        return text.replace(text.find("%N"), 2, count) + samples;
    };
    writeFile(folder / "a.wav", wave("0100 44AC0000 44AC0000 0100 0800", "00 80 FF"));
    EXPECT_BYTES("sound 1 file \"a.wav\"", expected("3", "00 80 FF"));
    writeFile(folder / "b.wav", wave("0100 44AC0000 88580100 0200 1000", "0080 0000 FF7F FFFF"));
    EXPECT_BYTES("sound 1 file \"b.wav\"", expected("4", "00 80 FF 7F"));
    writeFile(folder / "c.wav", wave("0200 44AC0000 88580100 0200 0800", "00 FF 10 20"));
    EXPECT_BYTES("sound 1 file \"c.wav\"", expected("2", "7F 18"));
}
