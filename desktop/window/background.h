// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <thread>
#include <utility>

#include <QApplication>
#include <QEventLoop>

namespace desktop {

/// Does work on another thread while the window goes on being drawn, without taking input, under
/// the pointer of a busy program. What the work throws comes out here.
/// @throws std::system_error when there is no thread to be had
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
