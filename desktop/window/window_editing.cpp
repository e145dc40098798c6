// SPDX-License-Identifier: MIT
// Commands, undo, selection, roles.
#include <deque>
#include <exception>

#include <fmt/format.h>

#include <QLocale>
#include <QStatusBar>

#include "desktop/text.h"
#include "desktop/window/main_window.h"
#include "picture/scene/picking.h"

namespace desktop {

void MainWindow::run_command(const std::string& server)
{
    when_free([this, server] { run_now(server); });
}

void MainWindow::run_now(const std::string& server)
{
    modeler::Module* const module = workspace_.module();
    if (module == nullptr)
        return;
    const modeler::Server* const known = module->find(modeler::mesh_edit_class, server);
    last_command_ = to_qt(std::string_view(known != nullptr ? known->user_name : server));
    front_end_.set_command(last_command_);
    const std::vector<LayerCount> before = count_layers(workspace_.session().document());
    running_ = true;
    modeler::RunResult result;
    std::string problem;
    try {
        result = workspace_.session().run(*module, server, front_end_);
    } catch (const RunCancelled&) {
        result.panel_cancelled = true;
    } catch (const std::exception& error) {
        problem = error.what();
    }
    if (front_end_.in_child()) {
        // A copy of the window that only tries the run out: hands over what came of it, and is
        // gone.
        if (!problem.empty())
            preview_.run().fail(problem);
        preview_.run().finish(workspace_.session().document(), before, front_end_.child_errors());
    }
    running_ = false;
    workspace_.note_edits();
    if (!problem.empty())
        report(problem);
    if (!result.applied) {
        tracer_.show_ghost(nullptr);
        update_state();
        return;
    }
    show_document();
    const QLocale numbers;
    statusBar()->showMessage(
        tr("%1: %2 points and %3 polygons added in %4 s (clock %5, run %6 of this session)")
            .arg(last_command_, numbers.toString(static_cast<qulonglong>(result.points_added)),
                 numbers.toString(static_cast<qulonglong>(result.polygons_added)),
                 numbers.toString(front_end_.seconds_at_work(), 'f', 1),
                 to_qt(std::string_view(workspace_.clock())))
            .arg(workspace_.runs()));
}

void MainWindow::step_back(bool undo)
{
    try {
        if (undo && workspace_.session().can_undo())
            workspace_.undo();
        else if (!undo && workspace_.session().can_redo())
            workspace_.redo();
        show_document();
    } catch (const std::bad_alloc&) {
        report("there is too little memory for that; nothing was changed");
    }
}

void MainWindow::select(const std::function<void(modeler::Modeler&)>& change)
{
    if (panel_open_ || running_)
        return;
    change(workspace_.session());
    show_selection();
}

void MainWindow::select_at(const QPointF& at, Qt::KeyboardModifiers modifiers)
{
    const ShownScene shown = tracer_.shown();
    if (shown.scene == nullptr)
        return;
    const QPointF place = viewport_->to_picture(at);
    const SelectMode mode = (modifiers & Qt::ShiftModifier) != 0     ? SelectMode::add
                            : (modifiers & Qt::ControlModifier) != 0 ? SelectMode::toggle
                                                                     : SelectMode::replace;
    Picked found{{}, shown.document_layers, mode};
    if (const auto hit = picture::pick(*shown.scene, viewport_->view(), place.x(), place.y()))
        found.polygons.push_back(hit->polygon);
    take_picked(found);
}

void MainWindow::select_in(const QRect& over, Qt::KeyboardModifiers modifiers)
{
    const ShownScene shown = tracer_.shown();
    if (shown.scene == nullptr)
        return;
    const QPointF from = viewport_->to_picture(over.topLeft());
    const QPointF to = viewport_->to_picture(QPointF(over.right() + 1, over.bottom() + 1));
    const picture::PixelRectangle part{static_cast<int>(from.x()), static_cast<int>(from.y()),
                                       static_cast<int>(to.x()), static_cast<int>(to.y())};
    const SelectMode mode = (modifiers & Qt::ShiftModifier) != 0     ? SelectMode::add
                            : (modifiers & Qt::ControlModifier) != 0 ? SelectMode::remove
                                                                     : SelectMode::replace;
    // A line of sight for each pixel takes its time.
    tracer_.post([this, shown, view = viewport_->view(), part, mode] {
        emit picked(
            {picture::visible_polygons(*shown.scene, view, part), shown.document_layers, mode});
    });
}

void MainWindow::take_picked(const Picked& picked)
{
    std::vector<PolygonRef> polygons;
    const std::deque<mesh::Layer>& layers = workspace_.session().document().layers;
    for (const picture::PolygonId& one : picked.polygons) {
        // The document may have changed since the picture was made that was pointed at.
        const std::size_t layer = picked.document_layers[one.layer];
        if (layer < layers.size() && one.polygon < layers[layer].polygons.size())
            polygons.push_back({layer, one.polygon});
    }
    select([&](modeler::Modeler& session) { select_polygons(session, polygons, picked.mode); });
}

void MainWindow::choose_role(modeler::LayerRole role)
{
    for (const std::size_t layer : lists_->chosen_layers())
        set_role(layer, role);
}

void MainWindow::set_role(std::size_t layer, modeler::LayerRole role)
{
    when_free([this, layer, role] {
        if (layer >= workspace_.session().roles().size())
            return;
        workspace_.session().set_role(layer, role);
        show_document();
    });
}

} // namespace desktop
