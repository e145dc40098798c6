// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

#include <QDialog>
#include <QSize>

#include "desktop/pictures/picture_options.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace desktop {

/// Dialog for the options of exporting a picture of the view. Size and background are saved in the
/// application settings.
class PictureDialog : public QDialog {
    Q_OBJECT

public:
    /// @param shown  the current view: size in pixels, and visible elements
    PictureDialog(const PictureOptions& shown, QWidget* parent);

    [[nodiscard]] PictureOptions options() const;

    /// Saves size and background.
    void accept() override;

private:
    void build(const PictureOptions& shown);
    void restore();
    void apply_size(int choice);
    void size_changed();
    void background_changed();

    QSize view_;
    QComboBox* sizes_;
    QSpinBox* width_;
    QSpinBox* height_;
    QComboBox* background_;
    QCheckBox* grid_;
    QCheckBox* axes_;
    QCheckBox* selection_;
    QLabel* problem_;
    QPushButton* go_on_ = nullptr;
    /// State of the check boxes (grid, axes, selection) before the background became transparent;
    /// empty if it is not transparent.
    std::optional<std::array<bool, 3>> saved_guides_;
};

} // namespace desktop
