// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>

#include <QString>

class QWidget;

namespace desktop {

/// State shared by a background task and its progress dialog.
struct WorkState {
    std::atomic<bool> cancelled{false}; ///< set by the dialog: the task should end
    std::atomic<float> share{0.0F};     ///< set by the task: completed part, 0 to 1
};

/// Runs `work` on another thread with a modal progress dialog that can cancel it; processes events
/// meanwhile. Returns when the work has ended. Rethrows exceptions of the work.
/// @throws std::system_error if no thread can be started
void run_in_work_box(QWidget& parent, const QString& title, const QString& caption,
                     const std::function<void(WorkState&)>& work);

} // namespace desktop
