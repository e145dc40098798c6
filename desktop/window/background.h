// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <thread>
#include <utility>

#include <QApplication>
#include <QEventLoop>

namespace desktop {

/// Runs `work` on another thread and processes events meanwhile, except user input, with a busy
/// cursor. Returns when the work has ended. Rethrows exceptions of the work.
/// @throws std::system_error if no thread can be started
template <typename Work> void run_in_background(Work work)
{
    struct BusyPointer {
        BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
        BusyPointer(const BusyPointer&) = delete;
        BusyPointer& operator=(const BusyPointer&) = delete;
        ~BusyPointer() { QApplication::restoreOverrideCursor(); }
    };
    QEventLoop loop;
    std::exception_ptr problem;
    const BusyPointer pointer;
    std::thread thread([&] {
        try {
            work();
        } catch (...) {
            problem = std::current_exception();
        }
        QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
    });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread.join();
    if (problem)
        std::rethrow_exception(problem);
}

} // namespace desktop
