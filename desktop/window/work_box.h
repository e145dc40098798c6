// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>

#include <QString>

class QWidget;

namespace desktop {

/// What a piece of work and the box that shows it tell each other.
struct WorkState {
    std::atomic<bool> cancelled{false}; ///< the user wants it to end
    std::atomic<float> share{0.0F};     ///< of the work that is done, 0 to 1
};

/// Does work on another thread, under a box over the window that shows how far it is, and that can
/// cancel it. The window goes on being drawn, and takes no other input. Comes back when the work
/// has ended; what it throws comes out here.
/// @throws std::system_error when there is no thread to be had
void run_in_work_box(QWidget& parent, const QString& title, const QString& caption,
                     const std::function<void(WorkState&)>& work);

} // namespace desktop
