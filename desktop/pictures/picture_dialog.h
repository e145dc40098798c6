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

/// Asks what a picture of the view is to be like. The program's settings remember size and
/// background from one time to the next.
class PictureDialog : public QDialog {
    Q_OBJECT

public:
    /// `shown` is the view as it is: its size in pixels, and what is switched on in it.
    PictureDialog(const PictureOptions& shown, QWidget* parent);

    [[nodiscard]] PictureOptions options() const;

    /// Remembers what was chosen.
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
    /// What was ticked before the background became transparent; empty: it is not.
    std::optional<std::array<bool, 3>> saved_guides_;
};

} // namespace desktop
