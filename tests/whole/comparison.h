// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/modeler.h"
#include "tests/literal/scene.h"
#include "tests/whole/literal_scene.h"

namespace whole {

/// How much of a document there was at one moment.
struct Extent {
    explicit Extent(const mesh::Document& document);

    struct Layer {
        std::size_t points = 0;
        std::size_t polygons = 0;
        std::vector<std::size_t> map_values; ///< of each map
    };
    std::vector<Layer> layers;
};

/// Compares what a real run left in the document with what the literal run says, to the last bit
/// (non-numbers alike, 0.0 and -0.0 alike): points, polygons with their types, points and tags,
/// the values and the absence of values in every map, the maps named as written, and that nothing
/// else changed. `before` is the extent before the run, `source` the scene of that moment.
/// Returns the differences, one line each; empty when both agree.
[[nodiscard]] std::vector<std::string> differences(const mesh::Document& document,
                                                   const std::vector<modeler::LayerRole>& roles,
                                                   const Extent& before, const LiteralScene& source,
                                                   const modeler::RunResult& real,
                                                   const literal::Result& expected);

} // namespace whole
