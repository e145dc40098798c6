// SPDX-License-Identifier: MIT
#include "desktop/panel/panel_dock.h"

#include <algorithm>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>

#include "desktop/panel/form_view.h"
#include "desktop/panel/panel_dialog.h"

namespace desktop {

namespace {

constexpr auto area_key = "panel/area";
constexpr auto floating_key = "panel/floating";
constexpr auto geometry_key = "panel/geometry"; ///< of the floating panel
constexpr auto width_key = "panel/width";       ///< of the docked panel

qint64 area_of(const QRect& rectangle)
{
    return qint64{rectangle.width()} * qint64{rectangle.height()};
}

QList<QRect> available_screens()
{
    QList<QRect> rectangles;
    for (const QScreen* const screen : QGuiApplication::screens())
        rectangles.append(screen->availableGeometry());
    return rectangles;
}

} // namespace

QRect clamp_to_screens(QRect wanted, const QList<QRect>& screens)
{
    if (screens.isEmpty())
        return wanted;
    const auto seen = [&](const QRect& screen) {
        const QRect common = screen & wanted;
        return common.isValid() ? area_of(common) : 0;
    };
    const QRect& screen =
        *std::max_element(screens.begin(), screens.end(),
                          [&](const QRect& a, const QRect& b) { return seen(a) < seen(b); });
    wanted.setSize(wanted.size().boundedTo(screen.size()));
    wanted.moveTo(std::clamp(wanted.x(), screen.x(), screen.right() + 1 - wanted.width()),
                  std::clamp(wanted.y(), screen.y(), screen.bottom() + 1 - wanted.height()));
    return wanted;
}

PanelDock::PanelDock(PanelDialog* dialog, QMainWindow& window)
    : QDockWidget(dialog->windowTitle(), &window), window_(window), dialog_(dialog),
      size_before_(window.size())
{
    setObjectName("panel dock");
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    dialog->setWindowFlags(Qt::Widget);
    setWidget(dialog);
    const QSettings settings;
    const bool left = settings.value(area_key).toInt() == Qt::LeftDockWidgetArea;
    window.addDockWidget(left ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea, this);
    const QRect geometry = settings.value(geometry_key).toRect();
    if (settings.value(floating_key).toBool() && geometry.isValid()) {
        setFloating(true);
        setGeometry(clamp_to_screens(geometry, available_screens()));
    }
    show();
    dialog->show();
    dialog->form().focus_first();
    if (!isFloating()) {
        const int width = settings.value(width_key, dialog->sizeHint().width()).toInt();
        window.resizeDocks({this}, {width}, Qt::Horizontal);
    }
    window.layout()->activate(); // a window that is too narrow grows now
    size_opened_ = window.size();
}

PanelDock::~PanelDock()
{
    remember();
    window_.removeDockWidget(this);
    window_.layout()->activate();
    if (size_opened_ != size_before_ && window_.size() == size_opened_)
        window_.resize(size_before_);
}

void PanelDock::forget_place()
{
    QSettings settings;
    for (const char* const key : {area_key, floating_key, geometry_key, width_key})
        settings.remove(key);
}

void PanelDock::reset_place()
{
    setFloating(false);
    window_.addDockWidget(Qt::RightDockWidgetArea, this);
    window_.resizeDocks({this}, {dialog_->sizeHint().width()}, Qt::Horizontal);
}

void PanelDock::remember()
{
    QSettings settings;
    settings.setValue(floating_key, isFloating());
    if (isFloating()) {
        settings.setValue(geometry_key, geometry());
    } else {
        settings.setValue(area_key, static_cast<int>(window_.dockWidgetArea(this)));
        settings.setValue(width_key, width());
    }
}

void PanelDock::closeEvent(QCloseEvent* event)
{
    event->ignore(); // it goes away with the panel
    dialog_->reject();
}

} // namespace desktop
