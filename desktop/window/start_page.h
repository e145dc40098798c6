// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include <QFrame>

class QToolButton;
class QVBoxLayout;

namespace desktop {

/// What stands in the view while the scene is empty: a place to drop files on, files that were used
/// lately, and the example scene. Covers the widget that it is made over.
class StartPage : public QFrame {
    Q_OBJECT

public:
    explicit StartPage(QWidget* over);

    /// Looks at what there is to be opened, and comes into sight.
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
    QVBoxLayout* files_; ///< in `recent_`, a button for each
};

/// The folder of the example objects that come with the program; empty: not found.
[[nodiscard]] std::filesystem::path example_folder();

} // namespace desktop
