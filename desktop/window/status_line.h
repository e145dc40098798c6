// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace desktop {

/// Status bar label for the message of the last operation. The message stays until the next one. A
/// text wider than the label is elided, with the full text in the tool tip.
class StatusLine : public QLabel {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent);

    void show_message(const QString& text);
    /// The full last message.
    [[nodiscard]] const QString& message() const noexcept { return message_; }

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void show_elided();

    QString message_;
};

} // namespace desktop
