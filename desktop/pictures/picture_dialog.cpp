// SPDX-License-Identifier: MIT
#include "desktop/pictures/picture_dialog.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>

namespace desktop {

namespace {

constexpr auto size_key = "picture/size";
constexpr auto background_key = "picture/background";

/// Sizes to choose from; those of the view are not known before.
enum SizeChoice { view_size, twice_the_view, full_hd, ultra_hd, own_size };

QSpinBox* pixel_field(const QString& name, QWidget* parent)
{
    auto* const field = new QSpinBox(parent);
    field->setRange(1, most_picture_pixels_a_side);
    field->setAccessibleName(name);
    field->setSuffix(PictureDialog::tr(" px"));
    return field;
}

} // namespace

PictureDialog::PictureDialog(const PictureOptions& shown, QWidget* parent)
    : QDialog(parent), view_(shown.width, shown.height), sizes_(new QComboBox(this)),
      width_(pixel_field(tr("Width"), this)), height_(pixel_field(tr("Height"), this)),
      background_(new QComboBox(this)), grid_(new QCheckBox(tr("&Grid"), this)),
      axes_(new QCheckBox(tr("&Axes"), this)), selection_(new QCheckBox(tr("Se&lection"), this)),
      problem_(new QLabel(this))
{
    setObjectName("picture");
    setWindowTitle(tr("Export Picture"));
    build(shown);
    restore();
    background_changed();
    connect(background_, &QComboBox::currentIndexChanged, this, &PictureDialog::background_changed);
    connect(sizes_, &QComboBox::activated, this, &PictureDialog::apply_size);
    for (QSpinBox* const field : {width_, height_})
        connect(field, &QSpinBox::valueChanged, this, [this] {
            sizes_->setCurrentIndex(own_size);
            size_changed();
        });
    apply_size(sizes_->currentIndex());
}

void PictureDialog::build(const PictureOptions& shown)
{
    sizes_->addItems({tr("As the view"), tr("Twice the view"), tr("1920 by 1080"),
                      tr("3840 by 2160"), tr("As typed")});
    sizes_->setObjectName("sizes");
    width_->setObjectName("width");
    height_->setObjectName("height");
    background_->addItems({tr("As in the view"), tr("White"), tr("Transparent")});
    background_->setObjectName("background");
    grid_->setChecked(shown.grid);
    axes_->setChecked(shown.axes);
    selection_->setChecked(shown.selection);
    selection_->setToolTip(tr("Tint the selected polygons, as the view does"));
    problem_->setWordWrap(true);
    problem_->setMinimumHeight(2 * fontMetrics().lineSpacing()); // the dialog keeps still
    auto* const sides = new QHBoxLayout;
    sides->addWidget(width_);
    sides->addWidget(new QLabel(tr("by"), this));
    sides->addWidget(height_);
    sides->addStretch(1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    go_on_ = buttons->addButton(tr("&Choose File..."), QDialogButtonBox::AcceptRole);
    go_on_->setDefault(true);
    auto* const form = new QFormLayout(this);
    form->addRow(tr("&Size:"), sizes_);
    form->addRow(QString(), sides);
    form->addRow(tr("&Background:"), background_);
    form->addRow(tr("Show:"), grid_);
    form->addRow(QString(), axes_);
    form->addRow(QString(), selection_);
    form->addRow(problem_);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PictureDialog::restore()
{
    const QSettings settings;
    const QSize size = settings.value(size_key).toSize();
    if (size.isValid()) {
        sizes_->setCurrentIndex(own_size);
        width_->setValue(size.width());
        height_->setValue(size.height());
    } else {
        sizes_->setCurrentIndex(
            std::clamp<int>(settings.value(size_key).toInt(), view_size, ultra_hd));
    }
    background_->setCurrentIndex(
        std::clamp(settings.value(background_key).toInt(), 0, background_->count() - 1));
}

void PictureDialog::apply_size(int choice)
{
    QSize size = view_;
    switch (choice) {
    case twice_the_view:
        size = view_ * 2;
        break;
    case full_hd:
        size = {1920, 1080};
        break;
    case ultra_hd:
        size = {3840, 2160};
        break;
    case own_size:
        size = {width_->value(), height_->value()};
        break;
    default:
        break;
    }
    {
        const QSignalBlocker quiet_width(width_);
        const QSignalBlocker quiet_height(height_);
        width_->setValue(size.width());
        height_->setValue(size.height());
    }
    size_changed();
}

void PictureDialog::size_changed()
{
    const auto pixels = std::int64_t{width_->value()} * height_->value();
    const bool too_many = pixels > most_picture_pixels;
    problem_->setText(too_many ? tr("A picture may have %1 million pixels; these are %2 million.")
                                     .arg(most_picture_pixels / 1000000)
                                     .arg(pixels / 1000000)
                               : QString());
    go_on_->setEnabled(!too_many);
}

/// A transparent picture is usually composited over another one, so guides and selection are off by
/// default.
void PictureDialog::background_changed()
{
    const bool transparent =
        background_->currentIndex() == static_cast<int>(PictureBackground::transparent);
    if (transparent == saved_guides_.has_value())
        return;
    if (transparent) {
        saved_guides_ = {grid_->isChecked(), axes_->isChecked(), selection_->isChecked()};
        for (QCheckBox* const box : {grid_, axes_, selection_})
            box->setChecked(false);
        return;
    }
    const auto [grid, axes, selection] = *saved_guides_;
    saved_guides_.reset();
    grid_->setChecked(grid);
    axes_->setChecked(axes);
    selection_->setChecked(selection);
}

PictureOptions PictureDialog::options() const
{
    return {width_->value(),
            height_->value(),
            static_cast<PictureBackground>(background_->currentIndex()),
            grid_->isChecked(),
            axes_->isChecked(),
            selection_->isChecked()};
}

void PictureDialog::accept()
{
    QSettings settings;
    if (sizes_->currentIndex() == own_size)
        settings.setValue(size_key, QSize(width_->value(), height_->value()));
    else
        settings.setValue(size_key, sizes_->currentIndex());
    settings.setValue(background_key, background_->currentIndex());
    QDialog::accept();
}

} // namespace desktop
