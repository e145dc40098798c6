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

/// Element counts of a layer.
struct LayerCount {
    std::size_t points = 0;
    std::size_t polygons = 0;

    friend bool operator==(const LayerCount&, const LayerCount&) = default;
};

/// One count for each layer of the document, in its order.
[[nodiscard]] std::vector<LayerCount> count_layers(const mesh::Document& document);

/// The result of a trial run.
struct PreviewMesh {
    std::vector<modeler::Message> errors; ///< error messages of the command, or reason of failure
    std::deque<mesh::Layer> layers; ///< per layer of the document, the added points and polygons
                                    ///< with their surfaces
    std::size_t points = 0;         ///< total of all layers
    std::size_t polygons = 0;
};

/// Serialises the elements that were added to a document since `before`, for `read_preview`. Older
/// points used by added polygons are copied behind the new ones. Safe in a forked child.
/// @param file  file descriptor
/// @throws std::system_error if writing fails
void write_preview(int file, const mesh::Document& document, std::span<const LayerCount> before,
                   std::span<const modeler::Message> errors);

/// Serialises the result of a failed run: only error messages. @throws std::system_error
void write_failed_preview(int file, std::span<const modeler::Message> errors);

/// Deserialises the output of `write_preview`. @throws std::runtime_error if it is incomplete
[[nodiscard]] PreviewMesh read_preview(std::span<const std::byte> bytes);

} // namespace desktop
