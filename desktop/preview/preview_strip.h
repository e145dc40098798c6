// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <QWidget>

#include "desktop/presets/preset_store.h"
#include "modeler/form_panel.h"

class QCheckBox;
class QLabel;

namespace desktop {

class PresetBar;
class Preview;

/// The host's controls below a panel's form: warnings, preview switch and status, option for a new
/// layer, presets.
class PreviewStrip : public QWidget {
public:
    /// All arguments must outlive the strip.
    PreviewStrip(modeler::FormPanel& panel, Preview& preview, PresetStore& store, QWidget* parent);

    /// Shows warnings before a run; hidden if there are none.
    void warn(const std::vector<std::string>& sentences);

    /// The check box for putting the clones into a new layer.
    [[nodiscard]] QCheckBox& own_layer() noexcept { return *own_layer_; }

    [[nodiscard]] PresetBar& presets() noexcept { return *presets_; }

private:
    QCheckBox* switch_;
    QCheckBox* own_layer_;
    QLabel* status_;
    QLabel* warnings_;
    PresetBar* presets_;
};

} // namespace desktop
