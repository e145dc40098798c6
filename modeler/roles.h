// SPDX-License-Identifier: MIT
#pragma once

namespace modeler {

/// The role of a layer for commands. Commands edit foreground layers and read background layers.
/// Hidden and shown layers are invisible to commands; shown ones are still displayed (for example
/// clones of earlier runs).
enum class LayerRole { foreground, background, hidden, shown };

/// Whether layers of this role are visible to commands.
[[nodiscard]] constexpr bool takes_part(LayerRole role) noexcept
{
    return role == LayerRole::foreground || role == LayerRole::background;
}

} // namespace modeler
