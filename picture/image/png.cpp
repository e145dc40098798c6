// SPDX-License-Identifier: MIT
#include "picture/image/png.h"

#include <new>
#include <string>

#include <lodepng.h>

namespace picture {

namespace {

constexpr unsigned out_of_memory = 83; ///< the library's number for it

void check(unsigned error)
{
    if (error == out_of_memory)
        throw std::bad_alloc();
    if (error != 0)
        throw PngError(std::string("no PNG picture: ") + lodepng_error_text(error));
}

} // namespace

std::vector<std::byte> encode_png(const Image& image)
{
    lodepng::State state; // as it stands, it takes RGBA
    state.encoder.auto_convert = 0;
    state.info_png.color.colortype = LCT_RGB;
    std::vector<unsigned char> encoded;
    check(lodepng::encode(encoded, image.rgba, static_cast<unsigned>(image.width),
                          static_cast<unsigned>(image.height), state));
    const auto* const bytes = reinterpret_cast<const std::byte*>(encoded.data());
    return {bytes, bytes + encoded.size()};
}

Image decode_png(std::span<const std::byte> bytes)
{
    unsigned width = 0;
    unsigned height = 0;
    Image image;
    check(lodepng::decode(image.rgba, width, height,
                          reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    return image;
}

} // namespace picture
