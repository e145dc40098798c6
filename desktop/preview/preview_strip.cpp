// SPDX-License-Identifier: MIT
#include "desktop/preview/preview_strip.h"

#include <algorithm>

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "desktop/presets/preset_bar.h"
#include "desktop/preview/preview.h"
#include "desktop/text.h"

namespace desktop {

PreviewStrip::PreviewStrip(modeler::FormPanel& panel, Preview& preview, PresetStore& store,
                           QWidget* parent)
    : QWidget(parent), switch_(new QCheckBox(tr("&Preview"), this)),
      own_layer_(new QCheckBox(tr("&Keep the clones in a layer of their own"), this)),
      status_(new QLabel(this)), warnings_(new QLabel(this)),
      presets_(new PresetBar(panel, store, this))
{
    setObjectName("strip");
    switch_->setObjectName("preview");
    switch_->setToolTip(tr("Show in the view what OK would give with these values"));
    status_->setObjectName("preview status");
    status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status_->setTextFormat(Qt::PlainText); // may be a command's own words
    status_->setWordWrap(true);
    status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const int in_line = std::max(0, (switch_->sizeHint().height() - fontMetrics().height()) / 2);
    status_->setContentsMargins(0, in_line, 0, 0); // the switch has its text in its middle
    status_->setMinimumHeight(2 * fontMetrics().lineSpacing() + in_line); // the strip keeps still
    status_->setAccessibleName(tr("Preview status"));
    own_layer_->setObjectName("own layer");
    own_layer_->setToolTip(tr("The layer is shown, and is no ground: the next run puts no clones "
                              "onto these. Without it they become a part of the ground"));
    warnings_->setObjectName("warnings");
    warnings_->setTextFormat(Qt::PlainText); // names of layers are in it
    warnings_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    warnings_->setWordWrap(true);
    warnings_->setAccessibleName(tr("Warnings"));
    warnings_->hide();
    auto* const line = new QFrame(this);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    auto* const first = new QHBoxLayout;
    first->addWidget(switch_, 0, Qt::AlignTop);
    first->addWidget(status_, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(line);
    column->addWidget(warnings_);
    column->addLayout(first);
    column->addWidget(own_layer_);
    column->addWidget(presets_);
    connect(switch_, &QCheckBox::toggled, this,
            [&preview](bool on) { preview.switch_by_person(on); });
    connect(&preview, &Preview::switched, this, [this](bool on) {
        const QSignalBlocker quiet(switch_);
        switch_->setChecked(on);
    });
    connect(&preview, &Preview::status, status_, &QLabel::setText);
}

void PreviewStrip::warn(const std::vector<std::string>& sentences)
{
    QStringList lines;
    for (const std::string& sentence : sentences)
        lines.append(tr("Warning: %1.").arg(printable(sentence)));
    warnings_->setText(lines.join('\n'));
    warnings_->setVisible(!lines.isEmpty());
}

} // namespace desktop
