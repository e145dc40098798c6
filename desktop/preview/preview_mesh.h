// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/modeler.h"

namespace desktop {

/// How much a layer holds.
struct LayerCount {
    std::size_t points = 0;
    std::size_t polygons = 0;

    friend bool operator==(const LayerCount&, const LayerCount&) = default;
};

/// One count for each layer of the document, in its order.
[[nodiscard]] std::vector<LayerCount> count_layers(const mesh::Document& document);

/// What a run that was tried out came to.
struct PreviewMesh {
    std::vector<modeler::Message> errors; ///< boxes that the command showed, or why it failed
    std::deque<mesh::Layer> layers; ///< for each layer of the document what it gained: points,
                                    ///< polygons over them, and the surfaces of these
    std::size_t points = 0;         ///< in all layers
    std::size_t polygons = 0;
};

/// Writes what a document gained since it held `before`, for `read_preview`. Polygons that use
/// older points bring copies of these along, behind the new ones. Uses nothing but memory and the
/// file.
/// @throws std::system_error when the file does not take it
void write_preview(int file, const mesh::Document& document, std::span<const LayerCount> before,
                   std::span<const modeler::Message> errors);

/// The same without a document, for a run that failed.
void write_failed_preview(int file, std::span<const modeler::Message> errors);

/// Reads what `write_preview` wrote. @throws std::runtime_error when it is not whole.
[[nodiscard]] PreviewMesh read_preview(std::span<const std::byte> bytes);

} // namespace desktop
