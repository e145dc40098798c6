// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QMainWindow>

#include "desktop/preview/preview.h"
#include "desktop/viewport/tracer.h"
#include "desktop/viewport/viewport.h"
#include "desktop/window/actions.h"
#include "desktop/window/front_end.h"
#include "desktop/window/selection.h"
#include "desktop/window/side_lists.h"
#include "desktop/window/workspace.h"

class QLabel;

namespace desktop {

/// Polygons of a shown scene that were pointed at.
struct Picked {
    std::vector<picture::PolygonId> polygons;
    std::vector<std::size_t> document_layers; ///< of the shown scene
    SelectMode mode = SelectMode::replace;
};

/// The window: a scene of object files, looked at and worked on.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    using Paths = std::vector<std::filesystem::path>;

    MainWindow();
    ~MainWindow() override;

    /// Loads the module that belongs to the program; a box tells when that fails.
    void load_module();

    /// Begins a scene with files, or adds them to the one that is there. A box tells which of them
    /// failed, and why; the others are there. Returns false when one failed.
    bool open(const Paths& files);
    bool add(const Paths& files);
    /// Returns false when it failed, after a box that tells why.
    bool save_to(const std::filesystem::path& file, bool foreground_only);
    /// Renders the view of the moment in full quality, beside the window; a box tells when it
    /// fails.
    void export_picture_to(const std::filesystem::path& file, unsigned passes = 64);

    /// Runs a command of the module with its panel, or says why it cannot.
    void run_command(const std::string& server);

    /// Selects what is seen at a place of the viewport, or everything seen in a part of it.
    void select_at(const QPointF& at, Qt::KeyboardModifiers modifiers);
    void select_in(const QRect& over, Qt::KeyboardModifiers modifiers);

    /// Makes a layer, by its position in the document, foreground, background or hidden.
    void set_role(std::size_t layer, modeler::LayerRole role);

    [[nodiscard]] Workspace& workspace() noexcept { return workspace_; }
    [[nodiscard]] Viewport& viewport() noexcept { return *viewport_; }
    [[nodiscard]] Tracer& tracer() noexcept { return tracer_; }
    [[nodiscard]] SideLists& lists() noexcept { return *lists_; }
    [[nodiscard]] WindowFrontEnd& front_end() noexcept { return front_end_; }
    [[nodiscard]] Preview& preview() noexcept { return preview_; }
    [[nodiscard]] QAction* action(ActionId id) const noexcept
    {
        return actions_[static_cast<std::size_t>(id)];
    }
    /// The actions of the module's commands, in the module's order.
    [[nodiscard]] const std::vector<QAction*>& commands() const noexcept { return commands_; }

signals:
    /// From the drawing thread: what a rectangle was drawn around is known.
    void picked(const desktop::Picked& picked);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // main_window.cpp
    void build_lists();
    void show_document();
    void show_selection();
    void update_state();
    void when_free(std::function<void()> work);
    void do_waiting();
    void do_aside(const std::function<void()>& work);
    void report(const std::string& problem);
    void panel_is_open(bool open);

    // window_actions.cpp
    void build_actions();
    void build_recent_menu(QMenu& menu);
    void connect_actions();
    void build_commands();
    void update_actions();
    void show_manual();

    // window_files.cpp
    bool read_files(const Paths& files);
    void ask_and_open(bool adding);
    bool save();
    bool ask_and_save(bool foreground_only);
    void ask_and_export();
    void close_scene();
    /// Returns true when the scene may go.
    [[nodiscard]] bool let_go();
    void remember(const std::filesystem::path& file);

    // window_editing.cpp
    void run_now(const std::string& server);
    void step_back(bool undo);
    void select(const std::function<void(modeler::Modeler&)>& change);
    void take_picked(const Picked& picked);
    void choose_role(modeler::LayerRole role);

    Workspace workspace_;
    Tracer tracer_;
    Preview preview_;
    PresetStore presets_;
    WindowFrontEnd front_end_;
    Viewport* viewport_;
    SideLists* lists_;
    QLabel* counts_;
    std::array<QAction*, action_count> actions_{};
    std::vector<QAction*> commands_;
    std::deque<std::function<void()>> waiting_; ///< for the document to be read
    QString last_command_;
    bool panel_open_ = false;
    bool running_ = false;
    bool aside_ = false;    ///< another thread works on the document, and input waits
    bool fit_next_ = false; ///< the next scene that comes is the first of its document
};

} // namespace desktop
