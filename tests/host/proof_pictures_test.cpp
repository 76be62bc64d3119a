// The pictures of a proof in files.
#include <png.h>

#include "looking/pictures/png_file.h"
#include "support/toolbox_test.h"

namespace {

namespace looking = riders::looking;

// Few colours are written as indices into a list of them; the picture is the same.
TEST(ProofPictures, APictureIsReadBackAsItWasWritten)
{
    TemporaryFolder folder;
    for (const int colours : {1, 2, 3, 16, 17, 256, 257, 700})
        for (const int width : {1, 7, 9, 100}) {
            looking::Picture picture{width, 701, {}};
            for (int i = 0; i < width * 701; ++i) {
                const int colour = i * 7 % colours;
                picture.pixels.push_back({static_cast<std::uint8_t>(colour),
                                          static_cast<std::uint8_t>(colour >> 8),
                                          static_cast<std::uint8_t>(255 - colour)});
            }
            looking::writePicture(folder / "picture.png", picture, 96);
            png_image read{};
            read.version = PNG_IMAGE_VERSION;
            ASSERT_TRUE(png_image_begin_read_from_file(&read, (folder / "picture.png").c_str())) << read.message;
            read.format = PNG_FORMAT_RGB;
            ASSERT_EQ(read.width, static_cast<unsigned>(width));
            ASSERT_EQ(read.height, 701u);
            std::vector<looking::Colour> pixels(picture.pixels.size());
            ASSERT_TRUE(png_image_finish_read(&read, nullptr, pixels.data(), 0, nullptr)) << read.message;
            EXPECT_TRUE(pixels == picture.pixels) << colours << " colours, " << width << " wide";
        }
}

}  // namespace
