#include "support/toolbox_test.h"

#include "toolbox/memory.h"
#include "toolbox/system.h"

namespace {

using System = ToolboxTest;

TEST_F(System, GestaltReturnsVersionAndQuickDraw)
{
    configuration.systemVersion = 0x0607;
    configuration.quickDrawVersion = 0x00FF;
    restart();
    int32_t result = 0;
    EXPECT_EQ(Gestalt('sysv', &result), noErr);
    EXPECT_EQ(result, 0x0607);
    EXPECT_EQ(Gestalt('qd  ', &result), noErr);
    EXPECT_EQ(result, 0xFF);
}

TEST_F(System, GestaltLeavesTheResultForWhatItDoesNotKnow)
{
    configuration.quickDrawKnown = false;
    restart();
    int32_t result = 77;
    EXPECT_EQ(Gestalt('qd  ', &result), gestaltUndefSelectorErr);
    EXPECT_EQ(Gestalt('what', &result), gestaltUndefSelectorErr);
    EXPECT_EQ(result, 77);
}

TEST_F(System, NumberFormatBeginsWithTheDecimalSeparator)
{
    configuration.decimalPoint = ',';
    restart();
    Handle format = IUGetIntl(0);
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(**format, ',');
    EXPECT_EQ((*format)[1], '.') << "thousands have another separator than decimals";
    EXPECT_EQ(GetHandleSize(format), 32);
    EXPECT_EQ(IUGetIntl(0), format);
    EXPECT_EQ(IUGetIntl(1), nullptr);
    EXPECT_EQ(toolbox::leftBehind(), toolbox::LeakReport{});
    configuration.decimalPoint = '.';
    restart();
    EXPECT_EQ((*IUGetIntl(0))[1], ',');
}

TEST_F(System, LocaleWithoutNumberFormatGivesNil)
{
    configuration.hasNumberFormat = false;
    restart();
    EXPECT_EQ(IUGetIntl(0), nullptr);
}

TEST_F(System, BeepReachesTheMachineAndIsTraced)
{
    SysBeep(1);
    EXPECT_EQ(machine.beeps(), 1);
    EXPECT_EQ(trace, std::vector<std::string>{"beep"});
}

TEST_F(System, ExitToShellTracesAndEndsTheProcess)
{
    EXPECT_THROW(ExitToShell(), toolbox::ProcessEnded);
    EXPECT_EQ(trace, std::vector<std::string>{"process ended"});
}

TEST_F(System, NumbersBecomeTextAndBack)
{
    Str255 text;
    for (int32_t number : {0, 7, -7, 2147483647, INT32_MIN}) {
        NumToString(number, text);
        EXPECT_EQ(plain(text), std::to_string(number));
        int32_t back = 1;
        StringToNum(text, &back);
        EXPECT_EQ(back, number);
    }
    int32_t number = 1;
    StringToNum(P("+12x9"), &number);
    EXPECT_EQ(number, 12);
    StringToNum(P(""), &number);
    EXPECT_EQ(number, 0);
}

TEST_F(System, ThereAre1024ToolboxTraps)
{
    EXPECT_NE(NGetTrapAddress(0xA86E, ToolTrap), NGetTrapAddress(0xAA6E, ToolTrap));
}

TEST_F(System, KnownTrapsDifferFromTheUnimplementedOne)
{
    int32_t unimplemented = NGetTrapAddress(0xA89F, ToolTrap);
    EXPECT_NE(NGetTrapAddress(0xA860, ToolTrap), unimplemented);
    EXPECT_NE(NGetTrapAddress(0xA1AD, OSTrap), unimplemented);
    EXPECT_NE(NGetTrapAddress(0xA991, ToolTrap), NGetTrapAddress(0xA990, ToolTrap));
    EXPECT_EQ(NGetTrapAddress(0xABFF, ToolTrap), unimplemented);
    EXPECT_EQ(NGetTrapAddress(0xA0FE, OSTrap), unimplemented);
}

TEST_F(System, EightPassedStringsAreValidAtOnce)
{
    std::vector<StringPtr> strings;
    for (int i = 0; i < 8; ++i)
        strings.push_back(ql_quorum_passtr(std::to_string(i).c_str()));
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(plain(strings[static_cast<std::size_t>(i)]), std::to_string(i));
    EXPECT_EQ(plain(ql_quorum_passtr(std::string(300, 'x').c_str())), std::string(255, 'x'));
    EXPECT_EQ(plain(ql_quorum_passtr("")), "");
}

TEST_F(System, StringsAreConvertedInPlace)
{
    char text[257] = "hello";
    StringPtr pascal = C2PStr(text);
    EXPECT_EQ(static_cast<void *>(pascal), text);
    EXPECT_EQ(plain(pascal), "hello");
    EXPECT_STREQ(P2CStr(pascal), "hello");
    memset(text, 'y', 256);
    text[256] = 0;
    EXPECT_EQ(plain(C2PStr(text)), std::string(255, 'y'));
}

class Sounds : public ToolboxTest {
protected:
    // A format 1 sound of four samples at 22050 per second.
    static std::string sound()
    {
        return std::string("\0\1\0\1\0\5\0\0\0\x80\0\1\x80\x51\0\0\0\0\0\x14"
                           "\0\0\0\0\0\0\0\4\x56\x22\0\0\0\0\0\0\0\0\0\0\0\x3C"
                           "\x80\x90\xA0\xB0",
                           46);
    }
    static OSErr play(const std::string &bytes, bool async = false)
    {
        Handle handle = nullptr;
        PtrToHand(bytes.data(), &handle, static_cast<Size>(bytes.size()));
        OSErr error = SndPlay(nullptr, handle, async);
        DisposeHandle(handle);
        return error;
    }
};

TEST_F(Sounds, SampledSoundIsPlayed)
{
    EXPECT_EQ(play(sound()), noErr);
    EXPECT_EQ(machine.soundsPlayed(), 1);
}

TEST_F(Sounds, WhatCannotBePlayedIsRefused)
{
    EXPECT_EQ(SndPlay(nullptr, nullptr, false), nilHandleErr);
    EXPECT_EQ(play(sound(), true), paramErr);
    for (std::size_t size = 0; size < sound().size(); ++size)
        EXPECT_EQ(play(sound().substr(0, size)), paramErr) << size;
    std::string compressed = sound();
    compressed[40] = '\xFE';
    EXPECT_EQ(play(compressed), paramErr);
    EXPECT_EQ(machine.soundsPlayed(), 0);
}

}  // namespace
