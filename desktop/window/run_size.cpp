// SPDX-License-Identifier: MIT
#include "desktop/window/run_size.h"

#include <algorithm>
#include <cstdint>
#include <variant>

#include "formats/clone_size.h"
#include "formats/errors.h"
#include "modeler/position_memory.h"
#include "settings/table.h"

namespace desktop {

std::string run_size_problem(const modeler::Modeler& session, const modeler::FormPanel& panel)
{
    const modeler::Control* const control = panel.find(settings::find_setting("clone_num")->label);
    const int* const clones = control == nullptr ? nullptr : std::get_if<int>(&control->value);
    if (clones == nullptr)
        return {};
    formats::CopiedMesh clone;
    for (std::size_t i = 0; i < session.roles().size(); ++i)
        if (session.roles()[i] == modeler::LayerRole::background)
            formats::add_clone_of(session.document().layers[i], clone);
    try {
        formats::check_copies_fit(clone, static_cast<std::uint64_t>(std::max(0, *clones)));
    } catch (const formats::LimitError& error) {
        return error.what();
    }
    return modeler::position_memory_problem(*clones);
}

} // namespace desktop
