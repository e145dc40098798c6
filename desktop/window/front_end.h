// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QElapsedTimer>
#include <QWidget>

#include "desktop/panel/panel_dialog.h"
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
        std::function<void(bool open)> panel; ///< a panel was opened, or closed
        std::function<bool()> quieten;        ///< stops all other threads' work; false: not now
        std::function<void()> resume;         ///< lets them go on
    };

    WindowFrontEnd(QWidget& parent, Preview& preview, PresetStore& store, Host host);

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

    /// Names the boxes of the command that runs next.
    void set_command(const QString& name) { command_ = name; }

    /// Whether this is the child that tries a run out.
    [[nodiscard]] bool in_child() const noexcept { return in_child_; }
    /// In the child: the error boxes that the command wanted to show.
    [[nodiscard]] const std::vector<modeler::Message>& child_errors() const noexcept
    {
        return child_errors_;
    }
    /// The panel's window while it is open, or null.
    [[nodiscard]] PanelDialog* dialog() noexcept { return dialog_.get(); }

private:
    void open_panel(modeler::FormPanel& panel);
    [[nodiscard]] bool begin_preview();
    [[nodiscard]] QWidget* parent() const;

    QWidget& parent_;
    Preview& preview_;
    PresetStore& store_;
    Host host_;
    QString command_;
    std::unique_ptr<PanelDialog> dialog_;
    QElapsedTimer since_ok_;
    bool in_child_ = false;
    std::vector<modeler::Message> child_errors_;
};

} // namespace desktop
