// SPDX-License-Identifier: MIT
#include "desktop/window/run_size.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "formats/clone_kinds.h"
#include "formats/clone_size.h"
#include "formats/errors.h"
#include "modeler/background_layers.h"
#include "modeler/position_memory.h"
#include "settings/table.h"

namespace desktop {

std::string run_size_problem(const modeler::Modeler& session, const modeler::FormPanel& panel,
                             bool own_layer)
{
    const modeler::Control* const control = panel.find(settings::find_setting("clone_num")->label);
    const int* const clones = control == nullptr ? nullptr : std::get_if<int>(&control->value);
    if (clones == nullptr)
        return {};
    const mesh::Layer empty;
    const mesh::Layer* target = own_layer ? &empty : nullptr;
    const auto ground =
        std::find(session.roles().begin(), session.roles().end(), modeler::LayerRole::foreground);
    if (target == nullptr && ground != session.roles().end()) // clones are added to it then
        target =
            &session.document().layers[static_cast<std::size_t>(ground - session.roles().begin())];
    const std::vector<const mesh::Layer*> models =
        modeler::background_layers(session.document(), session.roles());
    formats::CopiedMesh clone;
    for (const mesh::Layer* const layer : models)
        formats::add_clone_of(*layer, clone);
    try {
        if (*clones > 0 && target != nullptr)
            formats::check_clone_kinds(*target, models);
        formats::check_copies_fit(clone, static_cast<std::uint64_t>(std::max(0, *clones)));
    } catch (const formats::LimitError& error) {
        return error.what();
    }
    return modeler::position_memory_problem(*clones);
}

} // namespace desktop
