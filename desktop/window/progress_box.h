// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "modeler/front_end.h"

namespace desktop {

/// Modal progress dialog of a running command. Processes events, so that the window is redrawn and
/// Cancel works.
class ProgressBox : public modeler::Progress {
public:
    ProgressBox(const QString& title, const QString& caption, QWidget& parent);

    void start(int total) override;
    /// @throws RunCancelled once, after the user has cancelled. If the command ignores it, its
    /// result is discarded anyway.
    [[nodiscard]] bool step(int steps) override;
    void finish() override;

private:
    void show_step();

    QDialog dialog_;
    QLabel* caption_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    QElapsedTimer since_shown_;
    long long done_ = 0;
    int total_ = 0;
    bool cancelled_ = false;
    bool cancel_thrown_ = false; ///< RunCancelled was thrown
};

} // namespace desktop
