// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <QWidget>

#include "desktop/window/workspace.h"

class QSplitter;
class QTreeWidget;

namespace desktop {

/// The side panel with lists of layers (with roles), surfaces, and vertex maps.
class SideLists : public QWidget {
    Q_OBJECT

public:
    explicit SideLists(QWidget* parent);

    /// Updates the lists from the scene; keeps selected entries that still exist.
    void show_scene(const Workspace& workspace);

    /// Gives every list an equal share of the height.
    void reset_layout();

    /// Document indices of the selected layers.
    [[nodiscard]] std::vector<std::size_t> chosen_layers() const;
    /// The selected surface; empty: none.
    [[nodiscard]] std::string chosen_surface() const;
    /// The map that colours the view; empty: none.
    [[nodiscard]] std::string chosen_map() const;

    [[nodiscard]] QTreeWidget& layers() noexcept { return *layers_; }
    [[nodiscard]] QTreeWidget& surfaces() noexcept { return *surfaces_; }
    [[nodiscard]] QTreeWidget& maps() noexcept { return *maps_; }

signals:
    /// The user changed the role of a layer (index in the document).
    void role_chosen(std::size_t layer, modeler::LayerRole role);
    /// The user chose a map; see `chosen_map`.
    void map_chosen();
    /// A surface was activated with Enter or a double click.
    void surface_activated();

private:
    [[nodiscard]] static QString name_of_layer(const Workspace& workspace, std::size_t layer);
    bool eventFilter(QObject* watched, QEvent* event) override;
    void show_layers(const Workspace& workspace);
    void show_surfaces(const mesh::Document& document);
    void show_maps(const mesh::Document& document);

    QSplitter* splitter_;
    QTreeWidget* layers_;
    QTreeWidget* surfaces_;
    QTreeWidget* maps_;
};

} // namespace desktop
