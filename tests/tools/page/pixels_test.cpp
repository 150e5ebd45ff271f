#include "tests/tools/page/pixels.h"

#include <gtest/gtest.h>
#include <png.h>

#include "tests/support/files.h"

namespace {

using vrl_test::Colour;

TEST(Pixels, AreReadRowByRow) {
    vrl_test::TemporaryFolder const folder;
    std::string const file = folder / "a.png";
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = 2;
    image.height = 2;
    image.format = PNG_FORMAT_RGB;
    unsigned char const bytes[] = {1, 2, 3, 4, 5, 6, 1, 2, 3, 7, 8, 9};
    ASSERT_NE(png_image_write_to_file(&image, file.c_str(), 0, bytes, 0, nullptr), 0);
    auto const pixels = vrl_test::pixelsOf(file);
    EXPECT_EQ(pixels.at(1, 0), (Colour{4, 5, 6}));
    EXPECT_EQ(pixels.at(1, 1), (Colour{7, 8, 9}));
    EXPECT_EQ(pixels.count({1, 2, 3}, 0, 2), 2u);
    EXPECT_EQ(pixels.count({1, 2, 3}, 1, 2), 0u);
}

TEST(Pixels, AreNotReadFromWhatIsNoBitmap) {
    vrl_test::TemporaryFolder const folder;
    EXPECT_THROW(vrl_test::pixelsOf(vrl_test::writeFile(folder / "a.png", "text")), std::runtime_error);
}

}  // namespace
