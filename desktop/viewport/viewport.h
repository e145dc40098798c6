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

/// Shows the tracer's picture, and lets a person walk around in it: the right button orbits, the
/// middle button (or Shift and right) pans, the wheel zooms at the pointer; on trackpads Alt and
/// the left button orbit, Alt, Shift and left pan. The left button alone points at polygons.
class Viewport : public QWidget {
    Q_OBJECT

public:
    /// The tracer is used as long as the viewport lives.
    Viewport(Tracer& tracer, QWidget* parent);

    [[nodiscard]] const picture::Camera& camera() const noexcept { return options_.camera; }
    void set_camera(const picture::Camera& camera);
    void look_from(picture::StandardView view);
    void set_projection(picture::Projection projection);
    void set_wireframe(bool on);
    void set_grid(bool on);
    void set_axes(bool on);

    /// Moves the camera so that everything is seen, as soon as it is known how.
    void fit();
    /// Whether the camera is still where `fit` moved it.
    [[nodiscard]] bool is_fitted() const { return fitted_ && *fitted_ == options_.camera; }
    /// Whether everything is in the view: it was fitted at this size, or the box around it all is.
    [[nodiscard]] bool shows_all() const;
    /// Turns by degrees around the up axis and up.
    void orbit(double right_deg, double up_deg);
    /// Moves by shares of the picture's height.
    void pan(double right, double up);
    /// Shows `factor` times as much of the world; the place at `around` stays where it is.
    void zoom(double factor, const QPointF& around);
    void zoom(double factor);

    /// The view of the moment, in pixels of the picture.
    [[nodiscard]] picture::View view() const;
    /// From the widget's coordinates to the picture's.
    [[nodiscard]] QPointF to_picture(const QPointF& at) const;

    [[nodiscard]] const QImage& image() const noexcept { return image_; }

    /// Whether pointing at polygons is told; walking around always works.
    void set_selecting(bool on);

signals:
    /// In the widget's coordinates.
    void clicked(QPointF at, Qt::KeyboardModifiers modifiers);
    /// In the widget's coordinates.
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
    QSize fitted_size_; ///< of the widget when it was fitted
    QImage image_;
    DragMode drag_mode_ = DragMode::none;
    QPoint pressed_;
    QPoint last_;
    bool selecting_ = true;
};

} // namespace desktop
