// SPDX-License-Identifier: MIT
#include "desktop/window/work_box.h"

#include <chrono>
#include <exception>
#include <thread>

#include <QDialog>
#include <QEventLoop>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace desktop {

void run_in_work_box(QWidget& parent, const QString& title, const QString& caption,
                     const std::function<void(WorkState&)>& work)
{
    constexpr int most = 1000;
    WorkState state;
    QEventLoop loop;
    QDialog box(&parent);
    box.setObjectName("work");
    box.setWindowTitle(title);
    box.setWindowModality(Qt::ApplicationModal);
    box.setMinimumWidth(box.fontMetrics().averageCharWidth() * 50);
    auto* const label = new QLabel(caption, &box);
    label->setTextFormat(Qt::PlainText);
    auto* const bar = new QProgressBar(&box);
    bar->setRange(0, most);
    bar->setAccessibleName(caption);
    auto* const cancel = new QPushButton(QDialog::tr("Cancel"), &box);
    auto* const column = new QVBoxLayout(&box);
    column->addWidget(label);
    column->addWidget(bar);
    column->addWidget(cancel, 0, Qt::AlignRight);
    QObject::connect(cancel, &QPushButton::clicked, &box, &QDialog::reject);
    QObject::connect(&box, &QDialog::rejected, &box, [&] {
        state.cancelled = true;
        cancel->setEnabled(false);
        label->setText(QDialog::tr("Stopping..."));
        box.show(); // until the work has ended
    });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &box, [&] {
        bar->setValue(static_cast<int>(state.share * static_cast<float>(most)));
    });
    watch.start(std::chrono::milliseconds(50));
    std::exception_ptr problem;
    std::thread thread([&] {
        try {
            work(state);
        } catch (...) {
            problem = std::current_exception();
        }
        QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
    });
    const struct Joiner { // also when an event handler throws
        std::thread& thread;
        std::atomic<bool>& cancelled;
        ~Joiner()
        {
            if (thread.joinable()) {
                cancelled = true;
                thread.join();
            }
        }
    } joiner{thread, state.cancelled};
    box.show();
    loop.exec();
    thread.join();
    if (problem)
        std::rethrow_exception(problem);
}

} // namespace desktop
