// SPDX-License-Identifier: MIT
#include "desktop/viewport/viewport.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QStyleHints>
#include <QStyleOptionRubberBand>
#include <QWheelEvent>

#include "desktop/theme.h"

namespace desktop {

namespace {

constexpr double degrees_for_pixel = 0.4;
constexpr double degrees_for_key = 15.0;
constexpr double share_for_key = 0.1;
constexpr double zoom_for_key = 1.25;

} // namespace

Viewport::Viewport(Tracer& tracer, QWidget* parent) : QWidget(parent), tracer_(tracer)
{
    setObjectName("viewport");
    setAccessibleName(tr("View of the scene"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(160, 120);
    setAttribute(Qt::WA_OpaquePaintEvent);
    options_.backdrop = backdrop_for(palette());
    connect(&tracer, &Tracer::image_ready, this, [this](const QImage& image) {
        image_ = image;
        update();
    });
    connect(&tracer, &Tracer::fitted, this, [this](const picture::Camera& camera) {
        fitted_ = camera;
        set_camera(camera);
    });
}

void Viewport::send()
{
    const double scale = devicePixelRatioF();
    options_.scale = scale;
    options_.width = std::max(1, static_cast<int>(std::lround(width() * scale)));
    options_.height = std::max(1, static_cast<int>(std::lround(height() * scale)));
    tracer_.set_options(options_);
}

void Viewport::set_camera(const picture::Camera& camera)
{
    options_.camera = camera;
    send();
}

void Viewport::look_from(picture::StandardView view)
{
    options_.camera.look_from(view);
    send();
    fit();
}

void Viewport::set_projection(picture::Projection projection)
{
    options_.camera.projection = projection;
    send();
}

void Viewport::set_wireframe(bool on)
{
    options_.wireframe = on;
    send();
}

void Viewport::set_grid(bool on)
{
    options_.grid = on;
    send();
}

void Viewport::set_axes(bool on)
{
    options_.axes = on;
    send();
}

void Viewport::fit()
{
    fitted_size_ = size();
    tracer_.fit(options_.camera, static_cast<double>(width()) / std::max(1, height()));
}

bool Viewport::shows_all() const
{
    if (is_fitted() && fitted_size_ == size())
        return true;
    const auto scene = tracer_.shown().scene;
    if (scene == nullptr || !scene->bounds())
        return false;
    const picture::View shown = view();
    const mesh::Bounds& box = *scene->bounds();
    for (const double x : {box.min.x, box.max.x})
        for (const double y : {box.min.y, box.max.y})
            for (const double z : {box.min.z, box.max.z}) {
                const auto at = shown.project({x, y, z});
                if (!at || at->x < 0 || at->y < 0 || at->x > shown.width() ||
                    at->y > shown.height())
                    return false;
            }
    return true;
}

void Viewport::orbit(double right_deg, double up_deg)
{
    picture::Camera& camera = options_.camera;
    camera.azimuth_deg = std::fmod(camera.azimuth_deg + right_deg + 360.0, 360.0);
    camera.elevation_deg = std::clamp(camera.elevation_deg + up_deg, -90.0, 90.0);
    send();
}

void Viewport::pan(double right, double up)
{
    picture::Camera& camera = options_.camera;
    const picture::Basis basis = camera.basis();
    const double across = right * camera.height;
    const double along = up * camera.height;
    camera.target.x += basis.right.x * across + basis.up.x * along;
    camera.target.y += basis.right.y * across + basis.up.y * along;
    camera.target.z += basis.right.z * across + basis.up.z * along;
    send();
}

void Viewport::zoom(double factor, const QPointF& around)
{
    constexpr double smallest = 1e-9;
    constexpr double largest = 1e12;
    picture::Camera& camera = options_.camera;
    const double height_before = camera.height;
    camera.height = std::clamp(camera.height * factor, smallest, largest);
    // The point under the pointer at the target's distance stays fixed.
    const double share = (height_before - camera.height) / camera.height;
    const double from_middle_x = (around.x() - width() / 2.0) / std::max(1, height());
    const double from_middle_y = (height() / 2.0 - around.y()) / std::max(1, height());
    pan(from_middle_x * share, from_middle_y * share);
}

void Viewport::zoom(double factor) { zoom(factor, QPointF(width() / 2.0, height() / 2.0)); }

picture::View Viewport::view() const { return {options_.camera, options_.width, options_.height}; }

QPointF Viewport::to_picture(const QPointF& at) const { return at * options_.scale; }

void Viewport::set_selecting(bool on)
{
    selecting_ = on;
    drag_mode_ = DragMode::none;
    update();
}

/// The background follows the theme.
void Viewport::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    options_.backdrop = backdrop_for(palette());
    send();
}

void Viewport::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (image_.isNull()) {
        painter.fillRect(rect(), palette().window());
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rect(), image_);
    }
    if (drag_mode_ == DragMode::select && pressed_ != last_) {
        QStyleOptionRubberBand option;
        option.initFrom(this);
        option.rect = QRect(pressed_, last_).normalized();
        option.shape = QRubberBand::Rectangle;
        style()->drawControl(QStyle::CE_RubberBand, &option, &painter, this);
    }
}

void Viewport::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    send();
}

void Viewport::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    send();
}

void Viewport::mousePressEvent(QMouseEvent* event)
{
    const bool alt = (event->modifiers() & Qt::AltModifier) != 0;
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    if (event->button() == Qt::MiddleButton)
        drag_mode_ = DragMode::pan;
    else if (event->button() == Qt::RightButton || (event->button() == Qt::LeftButton && alt))
        drag_mode_ = shift ? DragMode::pan : DragMode::orbit;
    else if (event->button() == Qt::LeftButton && selecting_)
        drag_mode_ = DragMode::select;
    pressed_ = last_ = event->position().toPoint();
}

void Viewport::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    const QPoint moved = at - last_;
    if (drag_mode_ == DragMode::none)
        return;
    last_ = at;
    if (drag_mode_ == DragMode::orbit) // the scene turns with the pointer
        orbit(moved.x() * degrees_for_pixel, moved.y() * degrees_for_pixel);
    else if (drag_mode_ == DragMode::pan)
        pan(-static_cast<double>(moved.x()) / std::max(1, height()),
            static_cast<double>(moved.y()) / std::max(1, height()));
    else
        update();
}

void Viewport::mouseReleaseEvent(QMouseEvent* event)
{
    const DragMode hold = std::exchange(drag_mode_, DragMode::none);
    if (hold != DragMode::select)
        return;
    update();
    const QPoint at = event->position().toPoint();
    if ((at - pressed_).manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
        emit clicked(event->position(), event->modifiers());
    else
        emit dragged(QRect(pressed_, at).normalized(), event->modifiers());
}

void Viewport::wheelEvent(QWheelEvent* event)
{
    constexpr double step = 120.0;
    constexpr double factor = 0.85;
    zoom(std::pow(factor, event->angleDelta().y() / step), event->position());
    event->accept();
}

void Viewport::keyPressEvent(QKeyEvent* event)
{
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    const auto move = [&](double right, double up) {
        if (shift)
            pan(right * share_for_key, up * share_for_key);
        else
            orbit(right * degrees_for_key, up * degrees_for_key);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return move(-1.0, 0.0);
    case Qt::Key_Right:
        return move(1.0, 0.0);
    case Qt::Key_Up:
        return move(0.0, 1.0);
    case Qt::Key_Down:
        return move(0.0, -1.0);
    case Qt::Key_PageUp:
        return zoom(1.0 / zoom_for_key);
    case Qt::Key_PageDown:
        return zoom(zoom_for_key);
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace desktop
