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

/// Thrown through a run whose user has cancelled it: the command ends, and its edit is dropped.
class RunCancelled : public std::exception {};

/// Shows in windows what a running command shows. In the child that tries a run out it shows
/// nothing, and only remembers.
class WindowFrontEnd : public modeler::FrontEnd {
public:
    /// What the window does for a panel. All are called on the window's thread, never in a child.
    struct Host {
        /// A panel is about to be opened, and wants so much of the window's width; or was closed.
        std::function<void(bool open, int width)> panel;
        std::function<bool()> pause;  ///< stops all other threads' work; false: not now
        std::function<void()> resume; ///< lets them go on
        /// What speaks against a run with the panel's values; empty: nothing. Asked on OK.
        std::function<std::string(const modeler::FormPanel&)> problem;
        /// Whether a file belongs to the scene, so that nothing else may be written there.
        std::function<bool(const std::filesystem::path&)> is_of_scene;
        /// Whether what the command adds gets a layer of its own: asked when a panel opens, and
        /// told then and whenever the person changes it.
        std::function<bool()> wants_own_layer;
        std::function<void(bool)> use_own_layer;
        /// What slopes the ground has, as a sentence: told beside a refusal where they are limited.
        std::function<std::string()> ground_slopes;
        /// What to do where the scene has nothing to be cloned: told beside every refusal.
        std::function<std::string()> missing_model;
        /// What a person should know of the scene before a run.
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

    /// Seconds since the last panel was left with OK.
    [[nodiscard]] double seconds_at_work() const
    {
        return static_cast<double>(since_ok_.elapsed()) / 1000.0;
    }

    /// How many clones the panel that was left with OK asked for; empty: it does not say, or there
    /// was none.
    [[nodiscard]] std::optional<int> clones_asked() const noexcept { return clones_asked_; }

    /// Names the boxes of the command that runs next.
    void set_command(const QString& name)
    {
        command_ = name;
        slopes_limited_ = false;
        clones_asked_.reset();
    }

    /// Whether this is the child that tries a run out.
    [[nodiscard]] bool in_child() const noexcept { return in_child_; }
    /// In the child: the error boxes that the command wanted to show.
    [[nodiscard]] const std::vector<modeler::Message>& child_errors() const noexcept
    {
        return child_errors_;
    }
    /// Puts the panel to where it was at first, now where it is open and the next time it is.
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
    bool panel_open_ = false;     ///< and not answered yet
    bool slopes_limited_ = false; ///< by the values of the panel that was answered last
    std::optional<int> clones_asked_;
    QElapsedTimer since_ok_;
    bool in_child_ = false;
    std::vector<modeler::Message> child_errors_;
};

} // namespace desktop
