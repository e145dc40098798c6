// SPDX-License-Identifier: MIT
#include "desktop/window/side_lists.h"

#include <algorithm>

#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QSplitter>
#include <QToolTip>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "desktop/text.h"
#include "mesh/vertex_map.h"

namespace desktop {

namespace {

constexpr int text_role = Qt::UserRole; ///< bytes of a name, which need not be UTF-8

QTreeWidget* add_list(QSplitter& splitter, const QString& title, const QStringList& columns)
{
    auto* const part = new QWidget(&splitter);
    auto* const column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const label = new QLabel(title, part);
    auto* const list = new QTreeWidget(part);
    label->setBuddy(list);
    list->setAccessibleName(QString(title).remove('&'));
    list->setObjectName(QString(title).remove('&'));
    list->setHeaderLabels(columns);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setTextElideMode(Qt::ElideMiddle); // the ends of long names tell them apart
    list->header()->setStretchLastSection(false);
    // In a narrow list the name stays readable; the other columns can be scrolled into view.
    list->header()->setMinimumSectionSize(list->fontMetrics().averageCharWidth() * 7);
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    column->addWidget(label);
    column->addWidget(list);
    return list;
}

QTreeWidgetItem* add_row(QTreeWidget& list, const std::string& name, const QString& shown,
                         const QStringList& more)
{
    auto* const item = new QTreeWidgetItem(&list, QStringList(shown) + more);
    item->setData(0, text_role, QByteArray::fromStdString(name));
    item->setToolTip(0, tool_tip(shown));
    for (int i = 1; i <= more.size(); ++i)
        item->setTextAlignment(i, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

std::string name_of(const QTreeWidgetItem* item)
{
    return item != nullptr ? item->data(0, text_role).toByteArray().toStdString() : std::string();
}

void choose(QTreeWidget& list, const std::string& name)
{
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        if (name_of(list.topLevelItem(i)) == name)
            return list.setCurrentItem(list.topLevelItem(i));
}

QString kind_of(const mesh::VertexMap& map)
{
    switch (map.type()) {
    case mesh::map_wght:
        return SideLists::tr("weight");
    case mesh::map_txuv:
        return SideLists::tr("texture");
    case mesh::map_morf:
    case mesh::map_spot:
        return SideLists::tr("morph");
    case mesh::map_mnvw:
        return SideLists::tr("subpatch weight");
    default:
        return printable(mesh::to_text(map.type()));
    }
}

} // namespace

SideLists::SideLists(QWidget* parent)
    : QWidget(parent), splitter_(new QSplitter(Qt::Vertical, this))
{
    layers_ =
        add_list(*splitter_, tr("&Layers"), {tr("Name"), tr("Role"), tr("Points"), tr("Polygons")});
    surfaces_ = add_list(*splitter_, tr("S&urfaces"), {tr("Name"), tr("Polygons")});
    maps_ = add_list(*splitter_, tr("Vertex &maps"), {tr("Name"), tr("Kind"), tr("Points")});
    layers_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layers_->setToolTip(tr("Commands work on foreground layers, look at background layers, and "
                           "leave layers alone that are hidden or only shown"));
    surfaces_->setToolTip(tr("Double-click selects the polygons with a surface"));
    maps_->setToolTip(tr("Choose a weight map to colour the view by it"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(splitter_);
    for (QTreeWidget* const list : {layers_, surfaces_, maps_})
        list->viewport()->installEventFilter(this);
    connect(maps_, &QTreeWidget::currentItemChanged, this, &SideLists::map_chosen);
    connect(surfaces_, &QTreeWidget::itemActivated, this, &SideLists::surface_activated);
}

void SideLists::reset_layout() { splitter_->setSizes({1, 1, 1}); }

/// Disabled lists show the reason as tool tip instead of those of their entries.
bool SideLists::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip || isEnabled())
        return QWidget::eventFilter(watched, event);
    const auto* const help = static_cast<QHelpEvent*>(event); // NOLINT(*-static-cast-downcast)
    QToolTip::showText(help->globalPos(),
                       tool_tip(tr("The scene cannot be changed while a panel is "
                                   "open; press OK or Cancel there first")),
                       this);
    return true;
}

void SideLists::show_scene(const Workspace& workspace)
{
    show_layers(workspace);
    show_surfaces(workspace.session().document());
    show_maps(workspace.session().document());
}

/// The layer's name or, if empty, that of its file; with the file name appended if another layer
/// has the same name.
QString SideLists::name_of_layer(const Workspace& workspace, std::size_t layer)
{
    const auto& layers = workspace.session().document().layers;
    const QString file = printable(workspace.file_of(layer).stem());
    const QString own = printable(layers[layer].name);
    if (own.isEmpty() || own == file || file.isEmpty())
        return own.isEmpty() ? file : own;
    const auto same = std::count_if(layers.begin(), layers.end(), [&](const mesh::Layer& other) {
        return other.name == layers[layer].name;
    });
    return same > 1 ? own + " (" + file + ")" : own;
}

void SideLists::show_layers(const Workspace& workspace)
{
    const std::vector<std::size_t> chosen = chosen_layers();
    layers_->clear();
    const auto& layers = workspace.session().document().layers;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const QString name = name_of_layer(workspace, i);
        QTreeWidgetItem* const item = add_row(
            *layers_, layers[i].name, name,
            {{}, number_text(layers[i].points.size()), number_text(layers[i].polygons.size())});
        const std::filesystem::path& from = workspace.file_of(i);
        item->setToolTip(
            0, tool_tip(name + "\n" + (from.empty() ? tr("made by a run") : printable(from))));
        auto* const roles = new QComboBox(layers_);
        roles->addItems({tr("foreground"), tr("background"), tr("hidden"), tr("shown")});
        roles->setCurrentIndex(static_cast<int>(workspace.session().roles()[i]));
        roles->setAccessibleName(tr("Role of layer %1").arg(name));
        connect(roles, &QComboBox::activated, this, [this, i](int index) {
            emit role_chosen(i, static_cast<modeler::LayerRole>(index));
        });
        layers_->setItemWidget(item, 1, roles);
        if (std::find(chosen.begin(), chosen.end(), i) != chosen.end())
            item->setSelected(true);
    }
}

void SideLists::show_surfaces(const mesh::Document& document)
{
    const std::string chosen = chosen_surface();
    std::vector<std::size_t> counts(document.tags.size());
    for (const mesh::Layer& layer : document.layers)
        for (std::size_t i = 0; i < layer.polygons.size(); ++i)
            if (layer.polygons.surface(i) != mesh::no_tag)
                ++counts[layer.polygons.surface(i)];
    surfaces_->clear();
    for (std::size_t tag = 0; tag < counts.size(); ++tag) {
        const std::string& name = document.tags[static_cast<mesh::TagIndex>(tag)];
        if (counts[tag] > 0)
            add_row(*surfaces_, name, printable(name), {number_text(counts[tag])});
    }
    choose(*surfaces_, chosen);
}

void SideLists::show_maps(const mesh::Document& document)
{
    const std::string chosen = chosen_map();
    {
        const QSignalBlocker quiet(maps_);
        maps_->clear();
        add_row(*maps_, {}, tr("(colours of the surfaces)"), {{}, {}});
        std::vector<std::pair<mesh::FourCC, std::string>> seen;
        for (const mesh::Layer& layer : document.layers) {
            for (const mesh::VertexMap& map : layer.maps) {
                if (std::find(seen.begin(), seen.end(), std::pair(map.type(), map.name())) !=
                    seen.end())
                    continue;
                seen.emplace_back(map.type(), map.name());
                std::size_t points = 0;
                for (const mesh::Layer& other : document.layers)
                    if (const mesh::VertexMap* same = other.find_map(map.type(), map.name()))
                        points += same->size();
                // Maps that cannot be shown as colours are listed but cannot be chosen.
                QTreeWidgetItem* const item = add_row(*maps_, map.name(), printable(map.name()),
                                                      {kind_of(map), number_text(points)});
                if (map.dimension() != 1)
                    item->setFlags(item->flags() & ~Qt::ItemIsSelectable & ~Qt::ItemIsEnabled);
            }
        }
        choose(*maps_, chosen);
    }
    if (chosen_map() != chosen)
        emit map_chosen();
}

std::vector<std::size_t> SideLists::chosen_layers() const
{
    std::vector<std::size_t> chosen;
    for (int i = 0; i < layers_->topLevelItemCount(); ++i)
        if (layers_->topLevelItem(i)->isSelected())
            chosen.push_back(static_cast<std::size_t>(i));
    return chosen;
}

std::string SideLists::chosen_surface() const { return name_of(surfaces_->currentItem()); }

std::string SideLists::chosen_map() const { return name_of(maps_->currentItem()); }

} // namespace desktop
