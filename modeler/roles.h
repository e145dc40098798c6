// SPDX-License-Identifier: MIT
#pragma once

namespace modeler {

/// What a layer is to a command: foreground layers are worked on, background layers are looked at;
/// hidden ones are neither counted, scanned nor listed, and so are those that are shown only, which
/// a person sees all the same (clones of earlier runs, say).
enum class LayerRole { foreground, background, hidden, shown };

/// Whether commands see a layer of this role at all.
[[nodiscard]] constexpr bool takes_part(LayerRole role) noexcept
{
    return role == LayerRole::foreground || role == LayerRole::background;
}

} // namespace modeler
