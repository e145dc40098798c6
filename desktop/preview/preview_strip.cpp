// SPDX-License-Identifier: MIT
#include "desktop/preview/preview_strip.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "desktop/presets/preset_bar.h"
#include "desktop/preview/preview.h"

namespace desktop {

PreviewStrip::PreviewStrip(modeler::FormPanel& panel, Preview& preview, PresetStore& store,
                           QWidget* parent)
    : QWidget(parent), switch_(new QCheckBox(tr("Pre&view"), this)), status_(new QLabel(this)),
      presets_(new PresetBar(panel, store, this))
{
    setObjectName("strip");
    switch_->setObjectName("preview");
    switch_->setToolTip(tr("Show in the view what OK would give with these values"));
    status_->setObjectName("preview status");
    status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const line = new QFrame(this);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    auto* const first = new QHBoxLayout;
    first->addWidget(switch_);
    first->addWidget(status_, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(line);
    column->addLayout(first);
    column->addWidget(presets_);
    connect(switch_, &QCheckBox::toggled, this,
            [&preview](bool on) { preview.switch_by_person(on); });
    connect(&preview, &Preview::switched, this, [this](bool on) {
        const QSignalBlocker quiet(switch_);
        switch_->setChecked(on);
    });
    connect(&preview, &Preview::status, status_, &QLabel::setText);
}

} // namespace desktop
