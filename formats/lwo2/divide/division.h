// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// Divides a layer that has more points or polygons than one layer of the file can number.
///
/// The points stay in their order and are divided between two of them, where no polygon has points
/// on both sides: clones, whose points stand side by side, stay whole, and so does everything that
/// polygons connect. Each polygon goes where its points go, in its order. What came from a file
/// stays together in the first part. Memory is a bit for each point, and a number for each point of
/// one part where there are too many polygons.
///
/// @param whole  the layout of the undivided layer
/// @param limit  most points or polygons of one part
/// @param title  the layer in messages
/// @return the parts with their points and polygons, in order; their names and numbers are the
///         layer's own still
/// @throws LimitError where there is no place to divide.
[[nodiscard]] std::vector<LayerPart> divide(const Layout& whole, std::uint32_t limit,
                                            const std::string& title);

/// Gives further parts of layers their names and numbers: the first part keeps the layer's own, a
/// further one gets its name with " (2)" and so on behind it, and a number that no layer of the
/// document has.
class PartNames {
public:
    explicit PartNames(const mesh::Document& document);

    /// @throws LimitError when there are no numbers left.
    void name(std::vector<LayerPart>& parts, const std::string& title);

private:
    std::vector<bool> taken_;
    std::size_t next_ = 0; ///< where the search for a free number begins
};

} // namespace formats::lwo2
