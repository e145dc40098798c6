// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include <QFrame>

class QToolButton;
class QVBoxLayout;

namespace desktop {

/// Shown over the viewport while the scene is empty: drop area for files, recent files, and the
/// example scene. Resizes with the widget `over`.
class StartPage : public QFrame {
    Q_OBJECT

public:
    explicit StartPage(QWidget* over);

    /// Updates the list of recent files and shows the page.
    void appear();

signals:
    void open_asked();
    void examples_asked();
    void recent_asked(const QString& file);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void list_recent();
    void elide_names();

    QToolButton* examples_;
    QWidget* recent_;
    QVBoxLayout* files_; ///< in `recent_`, one button per file
};

/// The folder of the example objects that come with the program; empty: not found.
[[nodiscard]] std::filesystem::path example_folder();

} // namespace desktop
