// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/messages.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"

namespace modeler {

/// The function table of a host service by name; null for an unknown name or use mode. Outside an
/// activation the functions of all tables do nothing and return null or 0.
[[nodiscard]] void* look_up_service(const char* service, int use_mode) noexcept;

[[nodiscard]] LWMessageFuncs* message_functions() noexcept;
[[nodiscard]] LWObjectFuncs* object_functions() noexcept;
[[nodiscard]] LWMonitorFuncs* monitor_functions() noexcept;
[[nodiscard]] LWXPanelFuncs* panel_functions() noexcept;

} // namespace modeler
