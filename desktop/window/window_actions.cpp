// SPDX-License-Identifier: MIT
// Menus, toolbar and commands.
#include <algorithm>
#include <cstring>

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QToolBar>

#include "desktop/text.h"
#include "desktop/window/main_window.h"

namespace desktop {

void MainWindow::build_actions()
{
    QMenu* menu = nullptr;
    const char* title = nullptr;
    for (const ActionSpec& spec : action_specs()) {
        if (title == nullptr || std::strcmp(title, spec.menu) != 0) {
            title = spec.menu;
            menu = menuBar()->addMenu(tr(title));
            menu->setObjectName(title);
        }
        if (spec.line_before)
            menu->addSeparator();
        QAction* const made = menu->addAction(tr(spec.text));
        made->setShortcut(QKeySequence(spec.shortcut));
        made->setToolTip(tr(spec.tip));
        made->setStatusTip(tr(spec.tip));
        made->setCheckable(spec.checkable);
        made->setChecked(spec.checked);
        made->setIconText(made->iconText()); // buttons keep their text, and so their width
        actions_[static_cast<std::size_t>(spec.id)] = made;
        if (spec.id == ActionId::add) {
            recent_menu_ = menu->addMenu(tr("Open &Recent"));
            build_recent_menu(*recent_menu_);
        }
    }
    auto* const bar = addToolBar(tr("Commands"));
    bar->setObjectName("commands");
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const ActionId id : {ActionId::open, ActionId::add, ActionId::save, ActionId::undo,
                              ActionId::redo, ActionId::fit})
        bar->addAction(action(id));
    bar->addSeparator();
}

void MainWindow::build_recent_menu(QMenu& menu)
{
    menu.setObjectName("recent");
    connect(&menu, &QMenu::aboutToShow, &menu, [this, &menu] {
        menu.clear();
        for (const QString& file : QSettings().value("recent").toStringList()) {
            const QString name = menu.fontMetrics().elidedText(
                printable(file), Qt::ElideMiddle, menu.fontMetrics().averageCharWidth() * 60);
            QAction* const entry = menu.addAction(in_menu(name), this, [this, file] {
                if (confirm_discard())
                    run_when_idle([this, file] { open({to_path(file)}); });
            });
            entry->setToolTip(tool_tip(printable(file)));
        }
        menu.setToolTipsVisible(true);
        if (menu.isEmpty())
            menu.addAction(tr("(no files yet)"))->setEnabled(false);
    });
}

void MainWindow::connect_actions()
{
    const auto on = [this](ActionId id, std::function<void()> work) {
        connect(action(id), &QAction::triggered, this, std::move(work));
    };
    on(ActionId::open, [this] { ask_and_open(false); });
    on(ActionId::add, [this] { ask_and_open(true); });
    on(ActionId::save, [this] { save(); });
    on(ActionId::save_as, [this] { ask_and_save(false); });
    on(ActionId::save_foreground, [this] { ask_and_save(true); });
    on(ActionId::export_picture, [this] { ask_and_export(); });
    on(ActionId::close_scene, [this] { close_scene(); });
    on(ActionId::quit, [this] { close(); });
    on(ActionId::undo, [this] { run_when_idle([this] { undo_or_redo(true); }); });
    on(ActionId::redo, [this] { run_when_idle([this] { undo_or_redo(false); }); });
    on(ActionId::select_all,
       [this] { select([](modeler::Modeler& session) { desktop::select_all(session, true); }); });
    on(ActionId::select_none,
       [this] { select([](modeler::Modeler& session) { desktop::select_all(session, false); }); });
    on(ActionId::select_invert, [this] { select(invert_selection); });
    on(ActionId::select_surface, [this] {
        select([this](modeler::Modeler& session) {
            select_surface(session, lists_->chosen_surface());
        });
    });
    on(ActionId::make_foreground, [this] { choose_role(modeler::LayerRole::foreground); });
    on(ActionId::make_background, [this] { choose_role(modeler::LayerRole::background); });
    on(ActionId::make_hidden, [this] { choose_role(modeler::LayerRole::hidden); });
    on(ActionId::make_shown, [this] { choose_role(modeler::LayerRole::shown); });
    on(ActionId::swap_roles, [this] { run_when_idle([this] { swap_roles(); }); });
    on(ActionId::fit, [this] { viewport_->fit(); });
    using View = picture::StandardView;
    for (const auto& [id, view] :
         {std::pair(ActionId::view_perspective, View::perspective),
          std::pair(ActionId::view_front, View::front), std::pair(ActionId::view_back, View::back),
          std::pair(ActionId::view_left, View::left), std::pair(ActionId::view_right, View::right),
          std::pair(ActionId::view_top, View::top), std::pair(ActionId::view_bottom, View::bottom)})
        on(id, [this, view = view] {
            viewport_->look_from(view);
            const bool flat = viewport_->camera().projection == picture::Projection::orthographic;
            action(ActionId::parallel)->setChecked(flat);
        });
    on(ActionId::parallel, [this] {
        viewport_->set_projection(action(ActionId::parallel)->isChecked()
                                      ? picture::Projection::orthographic
                                      : picture::Projection::perspective);
    });
    on(ActionId::wireframe,
       [this] { viewport_->set_wireframe(action(ActionId::wireframe)->isChecked()); });
    on(ActionId::grid, [this] { viewport_->set_grid(action(ActionId::grid)->isChecked()); });
    on(ActionId::axes, [this] { viewport_->set_axes(action(ActionId::axes)->isChecked()); });
    on(ActionId::zoom_in, [this] { viewport_->zoom(0.8); });
    on(ActionId::zoom_out, [this] { viewport_->zoom(1.25); });
    on(ActionId::show_lists, [this] {
        findChild<QDockWidget*>("lists")->setVisible(action(ActionId::show_lists)->isChecked());
    });
    on(ActionId::reset_layout, [this] { reset_layout(); });
    on(ActionId::manual, [this] { show_manual(); });
}

/// Creates the menu and buttons of the module's commands.
void MainWindow::build_commands()
{
    auto* const menu = new QMenu(tr("&Command"), this);
    menuBar()->insertMenu(menuBar()->actions().back(), menu);
    auto* const bar = findChild<QToolBar*>("commands");
    for (const modeler::Server& server : workspace_.module()->servers()) {
        if (server.class_name != modeler::mesh_edit_class)
            continue;
        QAction* const made = menu->addAction(in_menu(printable(server.button_name)));
        const auto number = static_cast<int>(commands_.size()) + 1;
        made->setShortcut(
            QKeySequence(number == 1 ? QString("Ctrl+D") : QString("Ctrl+Alt+F%1").arg(number)));
        const QString tip = tr("Run the command %1").arg(printable(server.user_name));
        made->setToolTip(tool_tip(tip));
        made->setStatusTip(tip);
        made->setData(to_qt(std::string_view(server.name)));
        connect(made, &QAction::triggered, this, [this, name = server.name] { run_command(name); });
        bar->addAction(made);
        commands_.push_back(made);
    }
}

void MainWindow::update_actions()
{
    const modeler::Modeler& session = workspace_.session();
    const bool foreground = std::find(session.roles().begin(), session.roles().end(),
                                      modeler::LayerRole::foreground) != session.roles().end();
    const auto possible = [&](ActionNeeds needs) {
        switch (needs) {
        case ActionNeeds::always:
        case ActionNeeds::nothing:
            return true;
        case ActionNeeds::layers:
            return !workspace_.empty();
        case ActionNeeds::foreground:
            return foreground;
        case ActionNeeds::undo:
            return session.can_undo();
        case ActionNeeds::redo:
            return session.can_redo();
        }
        return false;
    };
    for (const ActionSpec& spec : action_specs())
        action(spec.id)->setEnabled(possible(spec.needs) &&
                                    (!panel_open_ || spec.needs == ActionNeeds::always));
    recent_menu_->setEnabled(!panel_open_);
    action(ActionId::undo)->setText((tr("&Undo ") + in_menu(last_command_)).trimmed());
    action(ActionId::redo)->setText((tr("&Redo ") + in_menu(last_command_)).trimmed());
    std::size_t next = 0;
    if (workspace_.module() == nullptr)
        return;
    for (const modeler::Server& server : workspace_.module()->servers())
        if (server.class_name == modeler::mesh_edit_class && next < commands_.size())
            commands_[next++]->setEnabled(!panel_open_ && session.enabled(server));
}

void MainWindow::show_manual()
{
    QMessageBox box(
        QMessageBox::Information, tr("Keys and Mouse"),
        tr("<p><b>Looking around.</b> Right button or Alt and left button: orbit. Middle button, "
           "or "
           "Shift with these: pan. Wheel: zoom at the pointer. Arrow keys: orbit; with Shift: pan. "
           "Page Up and Page Down: zoom. Home: show everything.</p>"
           "<p><b>Selecting.</b> Click a polygon, or drag a rectangle: what is seen in it is "
           "selected. With Shift it is added; with Ctrl a click changes a polygon over, and a "
           "rectangle takes out of the selection. Only foreground layers can be selected; nothing "
           "selected counts as everything.</p>"
           "<p><b>Working.</b> Mark layers as foreground or background in the list, then run a "
           "command. Every other key is shown in the menus.</p>"),
        QMessageBox::Ok, this);
    box.setTextFormat(Qt::RichText); // ours, every word of it
    box.exec();
}

} // namespace desktop
