#include "tests/tools/page/pixels.h"

#include <png.h>

#include <stdexcept>

namespace vrl_test {

std::size_t Pixels::count(Colour const& colour, std::size_t from, std::size_t to) const {
    std::size_t found = 0;
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = from; x < to; ++x) found += at(x, y) == colour;
    return found;
}

Pixels pixelsOf(std::string const& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.c_str())) throw std::runtime_error(file + ": " + image.message);
    image.format = PNG_FORMAT_RGB;
    Pixels pixels;
    pixels.width = image.width;
    pixels.height = image.height;
    pixels.colours.resize(pixels.width * pixels.height);
    if (!png_image_finish_read(&image, nullptr, pixels.colours.data(), 0, nullptr))
        throw std::runtime_error(file + ": " + image.message);
    return pixels;
}

}  // namespace vrl_test
