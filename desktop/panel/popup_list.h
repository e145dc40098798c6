// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QWheelEvent>

namespace desktop {

/// A drop-down list that leaves the wheel to what scrolls around it, unless it has the keyboard's
/// focus. Long entries are cut; the open list shows them.
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
