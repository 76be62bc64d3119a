// The dot shapes that come with the program are spot function files which the plug-in imports.
#include "source/open_settings.h"

#include "screens/shapes.h"
#include "source/ktSpot.h"

namespace {

const std::filesystem::path kShapes = std::filesystem::path(RIDERS_SOURCE_DIR) / "resources" / "shapes";

class InstalledShapes : public OpenSettings {};

TEST_F(InstalledShapes, CanBeImportedInTheDialog)
{
    int imported = 0;
    for (const auto &entry : std::filesystem::directory_iterator(kShapes)) {
        const std::string name = entry.path().filename().string();
        user.answerOpen(entry.path());
        Boolean done = false;
        guarded([&] { done = DoSpotImport(); });
        EXPECT_TRUE(done) << name;
        EXPECT_EQ(plain(settings.spotName), name);
        ASSERT_TRUE(gSpotHandle) << name;
        EXPECT_EQ(std::string(*gSpotHandle, static_cast<size_t>(gSpotLength)),
                  riders::screens::shapeIn(entry.path()).body);
        ++imported;
    }
    EXPECT_TRUE(user.idle());
    EXPECT_EQ(imported, 21);
}

}  // namespace
