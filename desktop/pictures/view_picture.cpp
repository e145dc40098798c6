// SPDX-License-Identifier: MIT
#include "desktop/pictures/view_picture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "picture/maps/legend.h"
#include "picture/render/progressive.h"

namespace desktop {

namespace {

picture::View view_of(const picture::View& shown, const PictureOptions& options)
{
    const auto aspect = [](int width, int height) { return static_cast<double>(width) / height; };
    picture::Camera camera = shown.camera();
    camera.height *= std::max(1.0, aspect(shown.width(), shown.height()) /
                                       aspect(options.width, options.height));
    return {camera, options.width, options.height};
}

picture::Look look_of(const ShownView& shown, const PictureOptions& options)
{
    picture::Look look = shown.look;
    look.grid = options.grid;
    look.axes = options.axes;
    if (!options.selection)
        look.selected = nullptr;
    // Composite over white afterwards: tone mapping would make a white background grey.
    look.backdrop.transparent = options.background != PictureBackground::as_shown;
    return look;
}

void lay_on_white(picture::Image& image)
{
    for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
        const unsigned cover = image.rgba[i + 3];
        for (std::size_t j = i; j < i + 3; ++j)
            image.rgba[j] = static_cast<std::uint8_t>(
                (image.rgba[j] * cover + 255 * (255 - cover) + 127) / 255);
        image.rgba[i + 3] = 255;
    }
}

} // namespace

std::optional<picture::Image> draw_view(const ShownView& shown, const PictureOptions& options,
                                        unsigned passes, WorkState& state)
{
    const picture::View view = view_of(shown.view, options);
    picture::Progressive picture(shown.scene, view, look_of(shown, options));
    picture::Work work;
    work.cancel = &state.cancelled;
    work.progress = [&](std::size_t done, std::size_t tiles) {
        state.share = (static_cast<float>(picture.passes()) +
                       static_cast<float>(done) / static_cast<float>(tiles)) /
                      static_cast<float>(passes);
    };
    while (picture.passes() < passes)
        if (!picture.add_pass(work))
            return std::nullopt;
    picture::Image image = picture.image();
    if (options.background == PictureBackground::white)
        lay_on_white(image);
    if (shown.look.map != nullptr)
        picture::draw_legend(image, *shown.look.map,
                             shown.scale * options.height / shown.view.height());
    return image;
}

} // namespace desktop
