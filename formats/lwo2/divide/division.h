// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// Divides a layer that has more points or polygons than a file can index in one layer.
///
/// The point order is kept and cut at positions where no polygon has points on both sides, so
/// connected polygons, such as those of a clone, stay together. Each polygon goes with its points,
/// in order. Elements read from a file stay in the first part. Memory: one bit per point, plus one
/// number per point of a part if it has too many polygons.
///
/// @param whole  the layout of the undivided layer
/// @param limit  maximum number of points and of polygons of a part
/// @param title  display name of the layer, for messages
/// @return the parts in order; name and number of each are still those of the layer
/// @throws LimitError if the layer cannot be divided
[[nodiscard]] std::vector<LayerPart> divide(const Layout& whole, std::uint32_t limit,
                                            const std::string& title);

/// Assigns names and numbers to the parts of divided layers. The first part keeps those of the
/// layer; further parts get the name with " (2)" and so on appended, and a free layer number.
class PartNames {
public:
    explicit PartNames(const mesh::Document& document);

    /// Names the parts of one layer. @throws LimitError if there are no free layer numbers
    void name(std::vector<LayerPart>& parts, const std::string& title);

private:
    std::vector<bool> taken_;
    std::size_t next_ = 0; ///< start of the search for a free number
};

} // namespace formats::lwo2
