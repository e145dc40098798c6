// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "picture/scene/scene.h"

namespace picture {

/// Maps surface tags of a document to their appearance. Shared by all layers of the document, since
/// there may be tens of thousands of surfaces and layers.
class SurfaceIndex {
public:
    /// Builds the index for the layer's document, unless it is already that of this document. Keeps
    /// pointers to the document's tags and looks. @throws std::bad_alloc
    void set_document(const SceneLayer& layer);

    /// The appearance of the surface, or null.
    [[nodiscard]] const mesh::SurfaceLook* look(mesh::TagIndex tag) const noexcept
    {
        return tag < looks_.size() ? looks_[tag] : nullptr;
    }

    /// The cosine of the surface's smoothing angle; `flat` if it is shaded flat.
    [[nodiscard]] float cosine(mesh::TagIndex tag) const noexcept
    {
        return tag < cosines_.size() ? cosines_[tag] : flat;
    }

    static constexpr float flat = 2.0F; ///< larger than every cosine

private:
    const mesh::TagList* tags_ = nullptr;
    std::span<const mesh::SurfaceLook> given_;
    std::vector<const mesh::SurfaceLook*> looks_;
    std::vector<float> cosines_;
};

} // namespace picture
