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
template <typename Work> void work_aside(Work work)
{
    QEventLoop loop;
    std::exception_ptr problem;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    std::thread thread([&] {
        try {
            work();
        } catch (...) {
            problem = std::current_exception();
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread.join();
    QApplication::restoreOverrideCursor();
    if (problem)
        std::rethrow_exception(problem);
}

} // namespace desktop
