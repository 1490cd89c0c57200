// The display's pictures as PNG files, through libpng's simplified API (which keeps
// libpng's error jumps inside the library). The native layer is mostly transparent,
// so deflate shrinks a 1280x720 frame from megabytes to a few kilobytes.
#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

#include "SimDisplay.h"

namespace sim {

std::string EncodePng(const Frame& frame) {
    if (frame.Empty()) {
        return std::string();
    }
    // 0xAARRGGBB words to RGBA bytes, whatever the host's byte order.
    std::vector<uint8_t> rgba;
    rgba.reserve(frame.argb.size() * 4);
    for (uint32_t px : frame.argb) {
        rgba.push_back(static_cast<uint8_t>(px >> 16));
        rgba.push_back(static_cast<uint8_t>(px >> 8));
        rgba.push_back(static_cast<uint8_t>(px));
        rgba.push_back(static_cast<uint8_t>(px >> 24));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(frame.width);
    image.height = static_cast<png_uint_32>(frame.height);
    image.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string png(size, '\0');
    if (png_image_write_to_memory(&image, png.data(), &size, 0, rgba.data(), 0, nullptr) == 0) {
        png_image_free(&image);
        return std::string();
    }
    png.resize(size);
    return png;
}

}  // namespace sim
