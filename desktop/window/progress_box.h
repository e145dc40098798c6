// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "modeler/front_end.h"

namespace desktop {

/// The progress display of a running command, over the whole window. The window lives on while the
/// command works, but takes no input besides Cancel.
class ProgressBox : public modeler::Progress {
public:
    ProgressBox(const QString& title, const QString& caption, QWidget& parent);

    void start(int total) override;
    /// @throws RunCancelled once, when the user has asked to stop. A command may take no notice of
    /// the stop; its result is dropped all the same.
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
    bool told_ = false; ///< that it was cancelled
};

} // namespace desktop
