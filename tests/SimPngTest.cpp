// The display's PNG pictures decode, through libpng's own reader, to the frame's
// pixels: colour channels in their places and straight alpha kept.
#include <png.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "SimDisplay.h"

namespace {

std::vector<uint8_t> DecodeRgba(const std::string& png, png_uint_32& width, png_uint_32& height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, png.data(), png.size()) == 0) {
        ADD_FAILURE() << image.message;
        return {};
    }
    image.format = PNG_FORMAT_RGBA;
    std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0)
        << image.message;
    width = image.width;
    height = image.height;
    return pixels;
}

TEST(SimPngTest, AFrameDecodesToItsOwnPixels) {
    sim::Frame frame;
    frame.width = 3;
    frame.height = 2;
    frame.argb = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0x00000000, 0x80123456, 0xFFFFFFFF};
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    const std::vector<uint8_t> rgba = DecodeRgba(sim::EncodePng(frame), width, height);
    EXPECT_EQ(width, 3u);
    EXPECT_EQ(height, 2u);
    EXPECT_EQ(rgba, (std::vector<uint8_t>{0xFF, 0,    0,    0xFF, 0,    0xFF, 0,    0xFF,
                                          0,    0,    0xFF, 0xFF, 0,    0,    0,    0,
                                          0x12, 0x34, 0x56, 0x80, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(SimPngTest, AnEmptyFrameHasNoPicture) { EXPECT_EQ(sim::EncodePng(sim::Frame{}), ""); }

}  // namespace
