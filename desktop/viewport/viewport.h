// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QWidget>

#include "desktop/viewport/tracer.h"
#include "picture/view/camera.h"
#include "picture/view/view.h"

namespace desktop {

/// Shows the tracer's picture and controls the camera: the right button orbits, the middle button
/// (or Shift + right) pans, the wheel zooms at the pointer; for trackpads Alt + left orbits,
/// Alt + Shift + left pans. The left button alone selects polygons.
class Viewport : public QWidget {
    Q_OBJECT

public:
    /// The tracer must outlive the viewport.
    Viewport(Tracer& tracer, QWidget* parent);

    [[nodiscard]] const picture::Camera& camera() const noexcept { return options_.camera; }
    void set_camera(const picture::Camera& camera);
    void look_from(picture::StandardView view);
    void set_projection(picture::Projection projection);
    void set_wireframe(bool on);
    void set_grid(bool on);
    void set_axes(bool on);

    /// Frames everything; asynchronous (see Tracer::fit).
    void fit();
    /// Whether the camera is unchanged since `fit`.
    [[nodiscard]] bool is_fitted() const { return fitted_ && *fitted_ == options_.camera; }
    /// Whether everything is visible: fitted at the current size, or the bounding box is in view.
    [[nodiscard]] bool shows_all() const;
    /// Rotates the camera around the target, in degrees.
    void orbit(double right_deg, double up_deg);
    /// Moves the camera by fractions of the picture's height.
    void pan(double right, double up);
    /// Scales the visible height by `factor`, with a fixed point at `around` (widget coordinates)
    /// or at the centre.
    void zoom(double factor, const QPointF& around);
    void zoom(double factor);

    /// The current view, in device pixels.
    [[nodiscard]] picture::View view() const;
    /// Converts widget coordinates to picture coordinates.
    [[nodiscard]] QPointF to_picture(const QPointF& at) const;

    [[nodiscard]] const QImage& image() const noexcept { return image_; }

    /// Enables selecting polygons; the camera can always be moved.
    void set_selecting(bool on);

signals:
    /// A click, in widget coordinates.
    void clicked(QPointF at, Qt::KeyboardModifiers modifiers);
    /// A rectangle was drawn, in widget coordinates.
    void dragged(QRect over, Qt::KeyboardModifiers modifiers);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class DragMode { none, select, orbit, pan };

    void send();

    Tracer& tracer_;
    DrawingOptions options_;
    std::optional<picture::Camera> fitted_;
    QSize fitted_size_; ///< size of the widget at the last fit
    QImage image_;
    DragMode drag_mode_ = DragMode::none;
    QPoint pressed_;
    QPoint last_;
    bool selecting_ = true;
};

} // namespace desktop
