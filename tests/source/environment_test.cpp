#include "support/plugin_test.h"

#include "toolbox/quickdraw.h"
#include "toolbox/system.h"
#include "source/utilities.h"

namespace {

class Environment : public PluginTest {
protected:
    // Measures again, in a session as configured now.
    void measure()
    {
        restartPlugin();
        environment = EnvirInfo{};
        gEnvirInfo = &environment;
        GetEnvirInfo();
    }
};

std::vector<int> sides(const Rect &r)
{
    return {r.top, r.left, r.bottom, r.right};
}

TEST_F(Environment, RecordIs52BytesLaidOutAsDocumented)
{
    EXPECT_EQ(sizeof(EnvirInfo), 52u);
    EXPECT_EQ(offsetof(EnvirInfo, versionStr), 5u);
    EXPECT_EQ(offsetof(EnvirInfo, screenRect), 38u);
    EXPECT_EQ(offsetof(EnvirInfo, decimalPt), 48u);
}

TEST_F(Environment, ColourQuickDrawBeginsAt0x100)
{
    configuration.quickDrawVersion = 0x0FF;
    measure();
    EXPECT_EQ(environment.hasColorQD, 0);
    configuration.quickDrawVersion = 0x100;
    measure();
    EXPECT_EQ(environment.hasColorQD, 1);
}

TEST_F(Environment, ScreenRectIsMovedInEverywhereButAtTheTop)
{
    measure();
    EXPECT_EQ(sides(environment.screenRect), (std::vector<int>{0, 4, 476, 636}));
    configuration.quickDrawVersion = 0;
    measure();
    EXPECT_EQ(sides(environment.screenRect), (std::vector<int>{0, 4, 476, 636}));
}

TEST_F(Environment, ScreenRectIsTheMainDisplaysOfSeveral)
{
    machine.setDisplays({{{0, 0, 768, 1024}, 8}, {{0, 1024, 480, 1664}, 32}});
    measure();
    EXPECT_EQ(sides(environment.screenRect), (std::vector<int>{0, 4, 764, 1020}));
    EXPECT_EQ(environment.pixDepth, 8);
}

TEST_F(Environment, SystemVersionIsGestalts)
{
    configuration.systemVersion = 0x0608;
    measure();
    EXPECT_EQ(environment.sysVersion, 0x0608);
    EXPECT_EQ(SystemVersionCheck(), noErr);
}

TEST_F(Environment, DepthIsOneWithoutColourQuickDraw)
{
    for (int depth : {1, 2, 4, 8, 32}) {
        machine.setDisplays({{{0, 0, 480, 640}, depth}});
        configuration.quickDrawVersion = 0x0230;
        measure();
        EXPECT_EQ(environment.pixDepth, depth);
        configuration.quickDrawVersion = 0;
        measure();
        EXPECT_EQ(environment.pixDepth, 1);
    }
}

TEST_F(Environment, DepthFollowsTheDisplayWhenReadAgain)
{
    measure();
    machine.setDisplays({{{0, 0, 480, 640}, 1}});
    EXPECT_EQ(GetCurPixDepth(), 1);
    EXPECT_EQ(environment.pixDepth, 1);
}

TEST_F(Environment, SeparatorIsTheLocalesOrAPeriod)
{
    configuration.decimalPoint = ',';
    measure();
    EXPECT_EQ(environment.decimalPt, ',');
    configuration.hasNumberFormat = false;
    measure();
    EXPECT_EQ(environment.decimalPt, '.');
}

TEST_F(Environment, VersionTextIsThePluginsOwn)
{
    measure();
    EXPECT_EQ(plain(environment.versionStr), text(16200, 1) + kPluginVersion);
}

TEST_F(Environment, UnknownQuickDrawEndsTheProcess)
{
    configuration.quickDrawKnown = false;
    for (int selector : {kSelectStartUp, kSelectAbout, kSelectCommand}) {
        restartPlugin();
        dismiss();
        call(selector);
        EXPECT_TRUE(ended) << selector;
        EXPECT_TRUE(traced(params(message(16129), "\r\rID = 2", " (gestalt QD)"))) << selector;
        EXPECT_TRUE(traced("process ended"));
        EXPECT_TRUE(registered.empty());
        EXPECT_TRUE(traced("dialog 16129 shown at 110,104")) << "on the screen, though it is not measured yet";
    }
}

TEST_F(Environment, TrapTypeIsBit11)
{
    EXPECT_EQ(GetTrapType(0xA89F), ToolTrap);
    EXPECT_EQ(GetTrapType(0xA822), ToolTrap);
    EXPECT_EQ(GetTrapType(0xA022), OSTrap);
}

TEST_F(Environment, TrapsAreAvailableExceptTheUnimplementedOne)
{
    EXPECT_EQ(NumToolboxTraps(), 1024);
    EXPECT_TRUE(TrapAvailable(0xA86E));
    EXPECT_FALSE(TrapAvailable(0xA89F));
    EXPECT_FALSE(TrapAvailable(0xAC00)) << "beyond the table of 1024";
}

}  // namespace
