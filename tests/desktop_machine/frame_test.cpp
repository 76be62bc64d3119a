#include "desktop/wayland_frame.h"

#include "support/toolbox_test.h"

namespace {

TEST(FrameTest, APluginOfLibdecorIsASharedObjectInItsFolder)
{
    using toolbox::desktop::hasFramePlugin;
    TemporaryFolder folder;
    EXPECT_FALSE(hasFramePlugin({}));
    EXPECT_FALSE(hasFramePlugin(folder / "none"));
    EXPECT_FALSE(hasFramePlugin(folder.path()));
    writeFile(folder / "README", "no plugin");
    EXPECT_FALSE(hasFramePlugin(folder.path()));
    writeFile(folder / "libdecor-cairo.so", "");
    EXPECT_TRUE(hasFramePlugin(folder.path()));
}

}  // namespace
