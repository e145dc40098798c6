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

/// The rectangle, moved and shrunk until it lies on one of the screens: the one that shows most of
/// it, or the first. Unchanged when there is no screen.
[[nodiscard]] QRect clamp_to_screens(QRect wanted, const QList<QRect>& screens);

/// The place of a panel in a main window: docked beside the view, or floating where the user put
/// it. The program's settings remember place and size. Closing the dock cancels the panel.
class PanelDock : public QDockWidget {
public:
    /// Shows the panel in the window, as it was left the last time. Takes the dialog over.
    PanelDock(PanelDialog* dialog, QMainWindow& window);
    PanelDock(const PanelDock&) = delete;
    PanelDock& operator=(const PanelDock&) = delete;
    /// Remembers the place, and gives the window back what room it had to gain.
    ~PanelDock() override;

    /// Forgets place and size of the panel for the next time that one is opened.
    static void forget_place();
    /// Docks the panel at the right, as wide as it wants to be.
    void reset_place();

    [[nodiscard]] PanelDialog& dialog() noexcept { return *dialog_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void remember();

    QMainWindow& window_;
    PanelDialog* dialog_;
    QSize size_before_; ///< of the window
    QSize size_opened_;
};

} // namespace desktop
