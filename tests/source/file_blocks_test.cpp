#include "support/plugin_test.h"

#include "source/fileBlocks.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"

namespace {

class FileBlocks : public PluginTest {};

TEST_F(FileBlocks, TenKilobytesStayFree)
{
    int32_t room = MaxMem(nullptr);
    EXPECT_TRUE(FitsInMemory(room - 10241));
    EXPECT_FALSE(FitsInMemory(room - 10240));
    EXPECT_FALSE(FitsInMemory(room));
}

TEST_F(FileBlocks, BlockIsLockedOnlyWhileItIsRead)
{
    writeFile(folder / "Bytes", "twelve bytes");
    int16_t refNum = 0;
    ASSERT_EQ(FSOpen(P("Bytes"), *toolbox::folders::workingDirectory(folder.path()), &refNum), noErr);
    Handle block = NewHandleClear(12);
    int8_t unlocked = HGetState(block);
    bool wasLocked = false;
    toolbox::trace::setSink([&](const std::string &line) {
        if (line.starts_with("file read"))
            wasLocked = HGetState(block) != unlocked;
    });
    int32_t count = 12;
    EXPECT_EQ(ReadLocked(refNum, block, &count), noErr);
    toolbox::trace::setSink({});
    EXPECT_EQ(std::string(*block, 12), "twelve bytes");
    EXPECT_TRUE(wasLocked);
    EXPECT_EQ(HGetState(block), unlocked);
    DisposeHandle(block);
    FSClose(refNum);
}

}  // namespace
