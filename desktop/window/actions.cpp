// SPDX-License-Identifier: MIT
#include "desktop/window/actions.h"

#include <array>

namespace desktop {

namespace {

using Id = ActionId;
using Needs = ActionNeeds;

constexpr const char* file = "&File";
constexpr const char* edit = "&Edit";
constexpr const char* select = "&Select";
constexpr const char* layer = "&Layer";
constexpr const char* view = "&View";
constexpr const char* help = "&Help";

// clang-format off
constexpr std::array<ActionSpec, action_count> specs{{
    {Id::open, file, "&Open...", "Ctrl+O", "Begin a scene with the files that you choose"},
    {Id::add, file, "&Add...", "Ctrl+Shift+O", "Add files to the scene, as background layers"},
    {Id::save, file, "&Save", "Ctrl+S", "Write all layers to the scene's file", Needs::layers, false, false, true},
    {Id::save_as, file, "Save &As...", "Ctrl+Shift+S", "Write all layers to another file", Needs::layers},
    {Id::save_foreground, file, "Save &Foreground As...", "Ctrl+Alt+S", "Write only the foreground layers, as the command line does", Needs::foreground},
    {Id::export_picture, file, "&Export Picture...", "F12", "Write what the view shows as a PNG picture, in any size", Needs::layers, false, false, true},
    {Id::close_scene, file, "&Close Scene", "Ctrl+W", "Empty the window", Needs::layers, false, false, true},
    {Id::quit, file, "&Quit", "Ctrl+Q", "Close the window", Needs::nothing},
    {Id::undo, edit, "&Undo", "Ctrl+Z", "Take the last edit back", Needs::undo},
    {Id::redo, edit, "&Redo", "Ctrl+Shift+Z", "Make the edit that was taken back again", Needs::redo},
    {Id::select_all, select, "&All", "Ctrl+A", "Select all foreground polygons", Needs::foreground},
    {Id::select_none, select, "&None", "Ctrl+Shift+A", "Select nothing, which for a command is everything", Needs::foreground},
    {Id::select_invert, select, "&Invert", "Ctrl+I", "Select what is not selected, and nothing else", Needs::foreground},
    {Id::select_surface, select, "By &Surface", "Ctrl+Shift+F", "Select the foreground polygons with the surface that is chosen in the list", Needs::foreground},
    {Id::make_foreground, layer, "Make &Foreground", "Ctrl+1", "Commands work on the chosen layers", Needs::layers},
    {Id::make_background, layer, "Make &Background", "Ctrl+2", "Commands look at the chosen layers; their contents are what is cloned", Needs::layers},
    {Id::make_hidden, layer, "&Hide", "Ctrl+3", "The chosen layers are neither shown nor used", Needs::layers},
    {Id::make_shown, layer, "&Show Only", "Ctrl+4", "The chosen layers are shown, and commands leave them alone", Needs::layers},
    {Id::swap_roles, layer, "S&wap Foreground and Background", "Ctrl+5", "Make the model the ground and the ground the model, as after opening files in the wrong order", Needs::layers, false, false, true},
    {Id::fit, view, "&Fit", "Home", "Show everything", Needs::always},
    {Id::view_perspective, view, "&Perspective", "0", "Look from above and behind, as a person sees it", Needs::always, false, false, true},
    {Id::view_front, view, "F&ront", "1", "Look from the front", Needs::always},
    {Id::view_back, view, "&Back", "Ctrl+Alt+1", "Look from behind", Needs::always},
    {Id::view_right, view, "R&ight", "3", "Look from the right", Needs::always},
    {Id::view_left, view, "&Left", "Ctrl+Alt+3", "Look from the left", Needs::always},
    {Id::view_top, view, "&Top", "7", "Look from above", Needs::always},
    {Id::view_bottom, view, "B&ottom", "Ctrl+Alt+7", "Look from below", Needs::always},
    {Id::parallel, view, "Para&llel", "5", "Show near and far things equally large", Needs::always, true},
    {Id::wireframe, view, "&Wireframe", "W", "Show the edges of polygons", Needs::always, true, false, true},
    {Id::grid, view, "&Grid", "G", "Show a grid on the ground; its squares are powers of ten of a metre", Needs::always, true, true},
    {Id::axes, view, "&Axes", "A", "Show the axes: x red, y green, z blue", Needs::always, true, true},
    {Id::zoom_in, view, "Zoom &In", "+", "Go nearer", Needs::always, false, false, true},
    {Id::zoom_out, view, "Zoom &Out", "-", "Go farther away", Needs::always},
    {Id::show_lists, view, "&Side Lists", "F9", "Show the lists of layers, surfaces and maps", Needs::always, true, true, true},
    {Id::reset_layout, view, "R&eset Layout", "Shift+F9", "Put lists, toolbar and panel back to where they were at first, in their first sizes", Needs::always},
    {Id::manual, help, "&Keys and Mouse", "F1", "Tell how to find one's way", Needs::always},
}};
// clang-format on

} // namespace

std::span<const ActionSpec> action_specs() noexcept { return specs; }

} // namespace desktop
