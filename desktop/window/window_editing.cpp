// SPDX-License-Identifier: MIT
// Commands, undo, selection, roles.
#include <algorithm>
#include <exception>
#include <optional>

#include <fmt/format.h>

#include <QLocale>

#include "desktop/recovery/scene_keeper.h"
#include "desktop/text.h"
#include "desktop/window/main_window.h"
#include "desktop/window/scene_warnings.h"
#include "modeler/run_failure.h"
#include "picture/scene/picking.h"

namespace desktop {

namespace {

QString seconds_text(double seconds)
{
    constexpr double least = 0.05; // what is less would be shown as nothing
    return seconds < least ? MainWindow::tr("less than 0.1 s")
                           : MainWindow::tr("%1 s").arg(QLocale().toString(seconds, 'f', 1));
}

} // namespace

void MainWindow::run_command(const std::string& server)
{
    run_when_idle([this, server] { run_now(server); });
}

void MainWindow::run_now(const std::string& server)
{
    modeler::Module* const module = workspace_.module();
    if (module == nullptr)
        return;
    const modeler::Server* const known = module->find(modeler::mesh_edit_class, server);
    last_command_ = printable(known != nullptr ? known->user_name : server);
    front_end_.set_command(last_command_);
    warnings_ = scene_warnings(workspace_); // before a layer of the run's own is among the others
    const std::vector<LayerCount> before = count_layers(workspace_.session().document());
    SceneKeeper keeper;
    keep_scene(keeper);
    running_ = true;
    own_layer_ = false; // a command without a panel adds to the ground
    modeler::RunOptions options;
    options.own_layer = workspace_.clone_layer_name();
    options.wants_own_layer = [this] { return own_layer_; };
    modeler::RunResult result;
    std::string problem;
    try {
        result = workspace_.session().run(*module, server, front_end_, options);
        if (const std::string failure = modeler::run_failure(result); !failure.empty())
            problem = fmt::format("{}: {}", module->file().string(), failure);
    } catch (const RunCancelled&) {
        result.panel_cancelled = true;
    } catch (const std::exception& error) {
        problem = error.what();
    }
    if (front_end_.in_child()) {
        // In the child process of a preview: write the result and exit.
        if (!problem.empty())
            preview_.run().fail(problem);
        preview_.run().finish(workspace_.session().document(), before, front_end_.child_errors());
    }
    running_ = false;
    keeper.release();
    go_on_.start();
    const QString added =
        counted_points(result.points_added) + ", " + counted_polygons(result.polygons_added);
    if (result.applied) {
        workspace_.note_run();
        edit_texts_[workspace_.session().state()] = last_command_ + " (" + added + ")";
    }
    if (!problem.empty())
        report(problem);
    if (!result.applied) {
        tracer_.show_ghost(nullptr);
        update_state();
        if (problem.empty() && result.errors.empty() && !result.panel_cancelled)
            show_message(
                tr("%1: nothing was added; there are no clones to make, or the model has no "
                   "polygons")
                    .arg(last_command_));
        return;
    }
    show_document();
    const bool own_layer = workspace_.session().document().layers.size() > before.size();
    show_message(tr("%1, %2, %3 (clock %4, run %5 of this session)")
                     .arg(what_was_made(own_layer), added,
                          seconds_text(front_end_.seconds_at_work()),
                          to_qt(std::string_view(workspace_.clock())))
                     .arg(workspace_.runs()));
}

/// Description of the result of the last run.
QString MainWindow::what_was_made(bool own_layer) const
{
    const std::vector<modeler::LayerRole>& roles = workspace_.session().roles();
    const auto ground = std::find(roles.begin(), roles.end(), modeler::LayerRole::foreground);
    const auto layer =
        own_layer ? roles.size() - 1 : static_cast<std::size_t>(ground - roles.begin());
    const std::optional<int> clones = front_end_.clones_asked();
    const QString made = clones ? counted_clones(static_cast<std::size_t>(*clones)) : last_command_;
    return layer < roles.size() ? tr("%1 in %2").arg(made, printable(workspace_.layer_title(layer)))
                                : made;
}

/// Description of the edit that led to the current revision.
QString MainWindow::last_edit_text() const
{
    const auto found = edit_texts_.find(workspace_.session().state());
    return found != edit_texts_.end() ? found->second : last_command_;
}

void MainWindow::undo_or_redo(bool undo)
{
    modeler::Modeler& session = workspace_.session();
    if (undo ? !session.can_undo() : !session.can_redo())
        return;
    QString text;
    tracer_.forget_document(); // a layer may go
    try {
        text = tr("Undone: %1").arg(last_edit_text());
        undo ? session.undo() : session.redo();
    } catch (const std::bad_alloc&) {
        show_document();
        report("there is too little memory for that; nothing was changed");
        return;
    }
    if (!undo)
        text = tr("Redone: %1").arg(last_edit_text());
    show_document();
    show_message(text);
}

void MainWindow::select(const std::function<void(modeler::Modeler&)>& change)
{
    if (panel_open_ || running_)
        return;
    run_when_idle([this, change] {
        change(workspace_.session());
        show_selection();
    });
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
    // On the drawing thread, since it traces a ray per pixel.
    tracer_.post([this, shown, view = viewport_->view(), part, mode] {
        emit picked(
            {picture::visible_polygons(*shown.scene, view, part), shown.document_layers, mode});
    });
}

void MainWindow::take_picked(const Picked& picked)
{
    select([picked](modeler::Modeler& session) {
        std::vector<PolygonRef> polygons;
        const auto& layers = session.document().layers;
        for (const picture::PolygonId& one : picked.polygons) {
            // The document may have changed since the picture was rendered.
            const std::size_t layer = picked.document_layers[one.layer];
            if (layer < layers.size() && one.polygon < layers[layer].polygons.size())
                polygons.push_back({layer, one.polygon});
        }
        select_polygons(session, polygons, picked.mode);
    });
}

void MainWindow::choose_role(modeler::LayerRole role)
{
    for (const std::size_t layer : lists_->chosen_layers())
        set_role(layer, role);
}

void MainWindow::swap_roles()
{
    modeler::Modeler& session = workspace_.session();
    for (std::size_t i = 0; i < session.roles().size(); ++i) {
        if (session.roles()[i] == modeler::LayerRole::foreground)
            session.set_role(i, modeler::LayerRole::background);
        else if (session.roles()[i] == modeler::LayerRole::background)
            session.set_role(i, modeler::LayerRole::foreground);
    }
    show_document();
}

void MainWindow::set_role(std::size_t layer, modeler::LayerRole role)
{
    run_when_idle([this, layer, role] {
        if (layer >= workspace_.session().roles().size())
            return;
        workspace_.session().set_role(layer, role);
        show_document();
    });
}

} // namespace desktop
