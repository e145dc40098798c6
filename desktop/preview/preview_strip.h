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

/// The host's own part of a panel's window: warnings, the preview switch, how the preview stands,
/// whether clones get a layer of their own, presets.
class PreviewStrip : public QWidget {
public:
    /// All are used as long as the strip lives.
    PreviewStrip(modeler::FormPanel& panel, Preview& preview, PresetStore& store, QWidget* parent);

    /// Shows sentences that a person should know before a run; none: takes no room.
    void warn(const std::vector<std::string>& sentences);

    /// The switch that gives the clones of a run a layer of their own.
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
