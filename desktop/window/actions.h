// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

namespace desktop {

/// Everything that the menus offer, besides the commands of the module.
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

/// When an action can be used. None but those for `always` can while a panel is open.
enum class ActionNeeds { always, nothing, layers, foreground, undo, redo };

struct ActionSpec {
    ActionId id = ActionId::count;
    const char* menu = nullptr;     ///< title of its menu; a title that is new begins one
    const char* text = nullptr;     ///< as it stands there
    const char* shortcut = nullptr; ///< in Qt's portable form
    const char* tip = nullptr;
    ActionNeeds needs = ActionNeeds::nothing;
    bool checkable = false;
    bool checked = false;
    bool line_before = false;
};

/// All of them, in the order of the menus.
[[nodiscard]] std::span<const ActionSpec> action_specs() noexcept;

} // namespace desktop
