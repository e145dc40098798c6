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

/// What is seen along a line of sight.
struct ShadedSample {
    Float3 light;       ///< linear, and as much of it as `cover` lets be seen
    float cover = 1.0F; ///< 0: nothing is there, 1: nothing behind it is seen
};

/// What is seen along one line of sight: the scene in its light, the guides, and the ghost.
class Shader {
public:
    Shader(std::shared_ptr<const Scene> scene, const View& view, Look look);

    /// One sample through a place of the picture. On a backdrop that is not transparent it covers
    /// all.
    [[nodiscard]] ShadedSample sample(double x, double y, const Samples& samples) const noexcept;

    /// What is seen where nothing is, at a height of the picture in pixels from its upper edge.
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
