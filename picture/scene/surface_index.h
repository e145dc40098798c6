// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "picture/scene/scene.h"

namespace picture {

/// What the surfaces of a document look like, by the tags that name them. Its layers share it:
/// there may be tens of thousands of surfaces and as many layers.
class SurfaceIndex {
public:
    /// Makes it that of the layer's document, unless it is that already. Points into what the layer
    /// points to. @throws std::bad_alloc
    void set_document(const SceneLayer& layer);

    /// The look of the surface; null: it has none.
    [[nodiscard]] const mesh::SurfaceLook* look(mesh::TagIndex tag) const noexcept
    {
        return tag < looks_.size() ? looks_[tag] : nullptr;
    }

    /// The cosine of the surface's smoothing angle; `flat` where it has none.
    [[nodiscard]] float cosine(mesh::TagIndex tag) const noexcept
    {
        return tag < cosines_.size() ? cosines_[tag] : flat;
    }

    static constexpr float flat = 2.0F; ///< no cosine reaches it

private:
    const mesh::TagList* tags_ = nullptr;
    std::span<const mesh::SurfaceLook> given_;
    std::vector<const mesh::SurfaceLook*> looks_;
    std::vector<float> cosines_;
};

} // namespace picture
