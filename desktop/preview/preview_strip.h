// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "desktop/presets/preset_store.h"
#include "modeler/form_panel.h"

class QCheckBox;
class QLabel;

namespace desktop {

class PresetBar;
class Preview;

/// The host's own part of a panel's window: the preview switch, how the preview stands, presets.
class PreviewStrip : public QWidget {
public:
    /// All are used as long as the strip lives.
    PreviewStrip(modeler::FormPanel& panel, Preview& preview, PresetStore& store, QWidget* parent);

    [[nodiscard]] PresetBar& presets() noexcept { return *presets_; }

private:
    QCheckBox* switch_;
    QLabel* status_;
    PresetBar* presets_;
};

} // namespace desktop
