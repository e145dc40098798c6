// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// The model is too small relative to the ground for its clones to be visible, or larger than the
/// ground. The usual cause is a different length unit.
struct SizeMismatch {
    double model = 0.0;  ///< longest side of the background's bounding box, metres
    double ground = 0.0; ///< longest side of the foreground's bounding box, metres
    double factor = 1.0; ///< suggested scale of the model, a power of ten
};

/// Compares the bounding boxes of the layers; random sizes of clones are not considered. Empty if
/// the sizes are plausible or one of them is 0.
[[nodiscard]] std::optional<SizeMismatch> size_mismatch(const mesh::Document& document,
                                                        const std::vector<LayerRole>& roles);

/// The warning: both sizes, the consequence, and what to do.
[[nodiscard]] std::string to_sentence(const SizeMismatch& mismatch);

} // namespace modeler
