// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QDockWidget>
#include <QList>
#include <QRect>
#include <QSize>

class QMainWindow;

namespace desktop {

class PanelDialog;

/// Moves and shrinks a rectangle to fit on one of the screens: the one with the largest overlap, or
/// the first. Unchanged if there is no screen.
[[nodiscard]] QRect clamp_to_screens(QRect wanted, const QList<QRect>& screens);

/// The dock widget of a panel: docked beside the view or floating. Position and size are saved in
/// the application settings. Closing the dock cancels the panel.
class PanelDock : public QDockWidget {
public:
    /// Shows the panel in the window at its saved position. Takes ownership of the dialog.
    PanelDock(PanelDialog* dialog, QMainWindow& window);
    PanelDock(const PanelDock&) = delete;
    PanelDock& operator=(const PanelDock&) = delete;
    /// Saves the position and undoes the widening of the window.
    ~PanelDock() override;

    /// Deletes the saved position and size.
    static void forget_place();
    /// Docks the panel at the right in its preferred width.
    void reset_place();

    [[nodiscard]] PanelDialog& dialog() noexcept { return *dialog_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void remember();

    QMainWindow& window_;
    PanelDialog* dialog_;
    QSize size_before_; ///< size of the window before opening
    QSize size_opened_;
};

} // namespace desktop
