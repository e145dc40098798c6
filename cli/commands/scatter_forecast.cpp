// SPDX-License-Identifier: MIT
#include "cli/commands/scatter_forecast.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include <fmt/format.h>

#include "cli/errors.h"
#include "formats/clone_kinds.h"
#include "formats/clone_size.h"
#include "formats/errors.h"
#include "modeler/background_layers.h"
#include "modeler/position_memory.h"

namespace cli {

void validate_result_size(const mesh::Document& document, std::span<const modeler::LayerRole> roles,
                          std::int64_t clones, bool own_layer, const std::string& output)
{
    const std::vector<const mesh::Layer*> models = modeler::background_layers(document, roles);
    formats::CopiedMesh clone;
    for (const mesh::Layer* const layer : models)
        formats::add_clone_of(*layer, clone);
    // Without a new layer, clones are added to the first layer of the ground.
    const mesh::Layer empty;
    const mesh::Layer* target = &empty;
    const auto ground = std::find(roles.begin(), roles.end(), modeler::LayerRole::foreground);
    if (!own_layer && ground != roles.end())
        target = &document.layers[static_cast<std::size_t>(ground - roles.begin())];
    try {
        if (clones > 0)
            formats::check_clone_kinds(*target, models);
        formats::check_copies_fit(clone,
                                  static_cast<std::uint64_t>(std::max<std::int64_t>(0, clones)));
    } catch (const formats::LimitError& error) {
        throw Failure(ExitStatus::output, fmt::format("{}: {}", output, error.what()),
                      {output, {}});
    }
    if (const std::string problem = modeler::position_memory_problem(clones); !problem.empty())
        throw Failure(ExitStatus::host, problem);
}

} // namespace cli
