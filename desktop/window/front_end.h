// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QElapsedTimer>
#include <QMainWindow>

#include "desktop/panel/panel_dialog.h"
#include "desktop/panel/panel_dock.h"
#include "desktop/presets/preset_store.h"
#include "desktop/preview/preview.h"
#include "modeler/front_end.h"
#include "modeler/modeler.h"

namespace desktop {

/// Thrown when the user cancels a run: the command ends, and its edit is rolled back.
class RunCancelled : public std::exception {};

/// Front end of the window: message boxes, progress dialog, and docked panel. In the child process
/// of a preview it shows nothing and only records error messages. Used on the main thread.
class WindowFrontEnd : public modeler::FrontEnd {
public:
    /// Callbacks to the window. All are called on the main thread, never in a child process.
    struct Host {
        /// A panel is about to open, with this preferred width in pixels, or was closed.
        std::function<void(bool open, int width)> panel;
        std::function<bool()> pause;  ///< pauses all other threads; false: not possible now
        std::function<void()> resume; ///< resumes them
        /// Called on OK: the reason against a run with the panel's values; empty: none.
        std::function<std::string(const modeler::FormPanel&)> problem;
        /// Whether a file belongs to the scene and so must not be overwritten.
        std::function<bool(const std::filesystem::path&)> is_of_scene;
        /// Initial state of the option "own layer", read when a panel opens.
        std::function<bool()> wants_own_layer;
        /// Receives the state of that option when a panel opens and whenever the user changes it.
        std::function<void(bool)> use_own_layer;
        /// Sentence about the slopes of the ground, appended to an error message if the panel
        /// limits slopes.
        std::function<std::string()> ground_slopes;
        /// Advice for a scene without a model, appended to every error message; may be empty.
        std::function<std::string()> missing_model;
        /// Warnings about the scene, shown in the panel.
        std::function<std::vector<std::string>()> warnings;
    };

    WindowFrontEnd(QMainWindow& parent, Preview& preview, PresetStore& store, Host host);

    void info(std::string_view line1, std::string_view line2) override;
    void error(std::string_view line1, std::string_view line2) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view line1,
                           std::string_view line2) override;
    [[nodiscard]] std::unique_ptr<modeler::Progress>
    begin_progress(std::string_view title, std::string_view caption) override;
    [[nodiscard]] bool run_panel(modeler::FormPanel& panel) override;

    /// Seconds since the last panel was closed with OK.
    [[nodiscard]] double seconds_at_work() const
    {
        return static_cast<double>(since_ok_.elapsed()) / 1000.0;
    }

    /// How many clones the panel that was left with OK asked for; empty: it does not say, or there
    /// was none.
    [[nodiscard]] std::optional<int> clones_asked() const noexcept { return clones_asked_; }

    /// Sets the name of the next command, used as title of its message boxes.
    void set_command(const QString& name)
    {
        command_ = name;
        slopes_limited_ = false;
        clones_asked_.reset();
    }

    /// Whether this is the child process of a preview.
    [[nodiscard]] bool in_child() const noexcept { return in_child_; }
    /// In the child: the error messages of the command.
    [[nodiscard]] const std::vector<modeler::Message>& child_errors() const noexcept
    {
        return child_errors_;
    }
    /// Resets the position of the panel to the default, now and for the next time.
    void reset_panel_place();

    /// The panel while it is open, or null.
    [[nodiscard]] PanelDialog* dialog() noexcept
    {
        return dock_ != nullptr ? &dock_->dialog() : nullptr;
    }

private:
    void open_panel(modeler::FormPanel& panel);
    void close_panel() noexcept;
    [[nodiscard]] bool ask_in_panel(modeler::FormPanel& panel);
    [[nodiscard]] bool begin_preview(const modeler::FormPanel& panel);
    [[nodiscard]] QWidget* parent() const;
    [[nodiscard]] std::string with_advice(std::string_view text) const;

    QMainWindow& parent_;
    Preview& preview_;
    PresetStore& store_;
    Host host_;
    QString command_;
    std::unique_ptr<PanelDock> dock_;
    bool panel_open_ = false;     ///< a panel is open and not answered yet
    bool slopes_limited_ = false; ///< the last answered panel limits the slopes
    std::optional<int> clones_asked_;
    QElapsedTimer since_ok_;
    bool in_child_ = false;
    std::vector<modeler::Message> child_errors_;
};

} // namespace desktop
