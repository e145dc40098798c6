// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace desktop {

/// A line of the status bar for what came of the last operation. It stays until something else is
/// told; a text that is wider than the line is cut at its end, and the tool tip has all of it.
class StatusLine : public QLabel {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent);

    void tell(const QString& text);
    /// All of what was told last.
    [[nodiscard]] const QString& told() const noexcept { return told_; }

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void show_told();

    QString told_;
};

} // namespace desktop
