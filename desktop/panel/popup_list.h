// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QWheelEvent>

namespace desktop {

/// A combo box that ignores the wheel unless it has keyboard focus, so that the surrounding area
/// scrolls. Long entries are elided.
class PopupList : public QComboBox {
public:
    explicit PopupList(QWidget* parent) : QComboBox(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
        setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
        setMinimumContentsLength(8);
        view()->setTextElideMode(Qt::ElideMiddle);
    }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

} // namespace desktop
