// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// A model that is so small beside the ground that its clones cannot be seen, or larger than the
/// ground. Mostly one of the two is in another unit.
struct SizeMismatch {
    double model = 0.0;  ///< longest side of the box around the background, in metres
    double ground = 0.0; ///< the same of the foreground
    double factor = 1.0; ///< power of ten by which the model would be scaled to fit
};

/// Compares the layers' points as they are; sizes that the command draws are not looked at. Empty
/// where the sizes go together, and where one of them is nothing.
[[nodiscard]] std::optional<SizeMismatch> size_mismatch(const mesh::Document& document,
                                                        const std::vector<LayerRole>& roles);

/// The sentence that tells it: both sizes, what comes of them, and what to do.
[[nodiscard]] std::string to_sentence(const SizeMismatch& mismatch);

} // namespace modeler
