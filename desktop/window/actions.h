// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

namespace desktop {

/// All menu actions except the commands of the module.
enum class ActionId {
    open,
    add,
    save,
    save_as,
    save_foreground,
    export_picture,
    close_scene,
    quit,
    undo,
    redo,
    select_all,
    select_none,
    select_invert,
    select_surface,
    make_foreground,
    make_background,
    make_hidden,
    make_shown,
    swap_roles,
    fit,
    view_perspective,
    view_front,
    view_back,
    view_left,
    view_right,
    view_top,
    view_bottom,
    parallel,
    wireframe,
    grid,
    axes,
    zoom_in,
    zoom_out,
    show_lists,
    reset_layout,
    manual,
    count
};

inline constexpr auto action_count = static_cast<std::size_t>(ActionId::count);

/// The condition for an action to be enabled. While a panel is open only `always` is.
enum class ActionNeeds { always, nothing, layers, foreground, undo, redo };

struct ActionSpec {
    ActionId id = ActionId::count;
    const char* menu = nullptr;     ///< title of its menu; a new title starts a menu
    const char* text = nullptr;     ///< text of the menu entry
    const char* shortcut = nullptr; ///< in Qt's portable form
    const char* tip = nullptr;
    ActionNeeds needs = ActionNeeds::nothing;
    bool checkable = false;
    bool checked = false;
    bool line_before = false; ///< a separator precedes the entry
};

/// All actions in menu order.
[[nodiscard]] std::span<const ActionSpec> action_specs() noexcept;

} // namespace desktop
