// SPDX-License-Identifier: MIT
#pragma once

namespace modeler {

/// What a layer is to a command: foreground layers are worked on, background layers are looked at,
/// hidden ones are neither counted, scanned nor listed.
enum class LayerRole { foreground, background, hidden };

} // namespace modeler
