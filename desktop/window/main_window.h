// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QMainWindow>
#include <QTimer>

#include "desktop/pictures/picture_options.h"
#include "desktop/preview/preview.h"
#include "desktop/viewport/tracer.h"
#include "desktop/viewport/viewport.h"
#include "desktop/window/actions.h"
#include "desktop/window/front_end.h"
#include "desktop/window/selection.h"
#include "desktop/window/side_lists.h"
#include "desktop/window/workspace.h"

class QLabel;
class QMenu;

namespace desktop {

class SceneKeeper;
class StartPage;
class StatusLine;
struct KeptScene;
struct WorkState;

/// Polygons picked in the viewport.
struct Picked {
    std::vector<picture::PolygonId> polygons;
    std::vector<std::size_t> document_layers; ///< document layer of each scene layer
    SelectMode mode = SelectMode::replace;
};

/// The main window: displays and edits a scene of object files.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    using Paths = std::vector<std::filesystem::path>;

    MainWindow();
    ~MainWindow() override;

    /// Loads the program's module; shows a message box on failure.
    void load_module();

    /// Opens files as a new scene, or adds them to the scene. Files that fail are listed in a
    /// message box; the others are loaded. Returns false if one failed.
    bool open(const Paths& files);
    bool add(const Paths& files);
    /// Saves the scene. Returns false on failure, after a message box.
    bool save_to(const std::filesystem::path& file, bool foreground_only);
    /// Picture options that match the current view.
    [[nodiscard]] PictureOptions shown_picture() const;
    /// Renders the current view in full quality with a progress dialog and writes it to a file.
    /// Returns false if it was cancelled or, after a message box, failed.
    bool export_picture_to(const std::filesystem::path& file, const PictureOptions& options,
                           unsigned passes = 64);

    /// Asks the user about each recovered scene (see kept_scenes.h) until one is opened. Returns
    /// whether one was opened.
    bool offer_kept_scenes();

    /// The message of the last operation in the status bar.
    [[nodiscard]] QString message() const;

    /// Reports an unexpected exception and offers to save the scene.
    void report_failure(std::string_view what);

    /// Runs a command of the module with its panel; reports why if it cannot run.
    void run_command(const std::string& server);

    /// Selects the polygon at a point, or the visible polygons in a rectangle, in widget
    /// coordinates. The modifiers choose the SelectMode.
    void select_at(const QPointF& at, Qt::KeyboardModifiers modifiers);
    void select_in(const QRect& over, Qt::KeyboardModifiers modifiers);

    /// Sets the role of the layer at this index of the document.
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
    /// The menu actions of the module's commands, in the order of the module.
    [[nodiscard]] const std::vector<QAction*>& commands() const noexcept { return commands_; }

signals:
    /// Emitted on the drawing thread: the result of picking in a rectangle.
    void picked(const desktop::Picked& picked);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct BackgroundScope;

    // main_window.cpp
    void build_lists();
    void build_start_page();
    void show_document();
    void show_selection();
    void update_state();
    void show_message(const QString& text);
    void run_when_idle(std::function<void()> work);
    void run_pending();
    void run_in_background(const std::function<void()>& work);
    void run_with_progress(const QString& title, const QString& caption,
                           const std::function<void(WorkState&)>& work);
    void report(const std::string& problem);
    void use_own_layer(bool on);
    void panel_is_open(bool open, int panel_width);
    void hide_lists_for_panel(int panel_width);
    void reset_layout();

    // window_actions.cpp
    void build_actions();
    void build_recent_menu(QMenu& menu);
    void connect_actions();
    void build_commands();
    void update_actions();
    void show_manual();

    // window_files.cpp
    bool read_files(const Paths& files, bool anew);
    void ask_and_open(bool adding);
    bool save();
    bool ask_and_save(bool foreground_only);
    [[nodiscard]] bool may_replace(const std::filesystem::path& file, bool foreground_only);
    void close_scene();
    /// Asks about unsaved changes. Returns true if the scene may be discarded.
    [[nodiscard]] bool confirm_discard();
    void remember(const std::filesystem::path& file) noexcept;

    // window_pictures.cpp
    void ask_and_export();

    // window_recovery.cpp
    void keep_scene(SceneKeeper& keeper);
    bool open_kept(const KeptScene& scene);
    void forget_kept() noexcept;

    // window_editing.cpp
    void run_now(const std::string& server);
    void undo_or_redo(bool undo);
    [[nodiscard]] QString what_was_made(bool own_layer) const;
    [[nodiscard]] QString last_edit_text() const;
    void select(const std::function<void(modeler::Modeler&)>& change);
    void take_picked(const Picked& picked);
    void choose_role(modeler::LayerRole role);
    void swap_roles();

    Workspace workspace_;
    Tracer tracer_;
    Preview preview_;
    PresetStore presets_;
    WindowFrontEnd front_end_;
    Viewport* viewport_;
    StartPage* start_page_;
    SideLists* lists_;
    StatusLine* status_;
    QLabel* counts_;
    QMenu* recent_menu_ = nullptr;
    std::array<QAction*, action_count> actions_{};
    std::vector<QAction*> commands_;
    std::deque<std::function<void()>> pending_; ///< work to do when the document is not being read
    QTimer go_on_;                              ///< calls `run_pending` from the event loop
    QString last_command_;
    std::map<std::uint64_t, QString> edit_texts_; ///< undo texts by document revision
    std::filesystem::path kept_file_;             ///< recovery file of the scene; empty: none
    bool panel_open_ = false;
    bool lists_hidden_ = false;                          ///< hidden while the panel is open
    int lists_width_ = 0;                                ///< before the panel was opened
    std::optional<picture::Camera> camera_before_panel_; ///< where the view was fitted for it
    bool running_ = false;
    std::vector<std::string> warnings_; ///< warnings for the panel of the running command
    bool own_layer_ = false;            ///< for what the command adds that runs
    bool reporting_failure_ = false;    ///< of a failure
    bool background_running_ = false;   ///< another thread works on the document, and input waits
    bool fit_next_ = false;             ///< the next scene that comes is the first of its document
};

} // namespace desktop
