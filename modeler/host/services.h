// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/messages.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"

namespace modeler {

/// The host's services by their names; null for any other name or use. Outside an activation the
/// functions of all tables answer with null, 0 or nothing.
[[nodiscard]] void* look_up_service(const char* service, int use_mode) noexcept;

[[nodiscard]] LWMessageFuncs* message_functions() noexcept;
[[nodiscard]] LWObjectFuncs* object_functions() noexcept;
[[nodiscard]] LWMonitorFuncs* monitor_functions() noexcept;
[[nodiscard]] LWXPanelFuncs* panel_functions() noexcept;

} // namespace modeler
