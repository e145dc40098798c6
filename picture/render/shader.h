// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "picture/render/guides.h"
#include "picture/render/light.h"
#include "picture/render/look.h"
#include "picture/render/samples.h"
#include "picture/scene/traced_scene.h"
#include "picture/view/view.h"

namespace picture {

/// The colour of one sample, premultiplied by its opacity.
struct ShadedSample {
    Float3 light;       ///< linear colour, premultiplied
    float cover = 1.0F; ///< opacity: 0 transparent, 1 opaque
};

/// Computes the colour along viewing rays: the lit scene, grid and axes, and the ghost.
/// Thread-safe.
class Shader {
public:
    Shader(std::shared_ptr<const Scene> scene, const View& view, Look look);

    /// One sample at a position of the picture in pixels. Opaque unless the background is
    /// transparent.
    [[nodiscard]] ShadedSample sample(double x, double y, const Samples& samples) const noexcept;

    /// The background at a height in pixels from the top of the picture.
    [[nodiscard]] ShadedSample background_at(double y) const noexcept;

private:
    [[nodiscard]] Float3 lit(const TracedScene& scene, const Hit& hit, const Float3& colour,
                             const Samples& samples) const noexcept;
    [[nodiscard]] Float3 colour_of(const Hit& hit) const noexcept;
    [[nodiscard]] Float3 map_colour(const Hit& hit) const noexcept;
    [[nodiscard]] bool is_selected(const Hit& hit) const noexcept;
    [[nodiscard]] bool is_on_edge(const Hit& hit, const Ray& ray) const noexcept;

    std::shared_ptr<const Scene> scene_;
    View view_;
    Look look_;
    Light light_;
    Guides guides_;
};

} // namespace picture
