// SPDX-License-Identifier: MIT
#include "modeler/host/monitors.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "modeler/host/activation.h"
#include "modeler/host/services.h"

namespace modeler {

namespace {

/// Calls `use(monitor)` for the display behind `data`, if it is in `state`.
template <typename Use> int use_monitor(void* data, Monitor::State state, Use use) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return 0;
    Monitor* const monitor = activation->monitors().find(data);
    if (monitor == nullptr || monitor->state != state)
        return 0;
    return activation->guarded(1, [&] { return use(*monitor); });
}

void start(void* data, int total) noexcept
{
    (void)use_monitor(data, Monitor::State::made, [&](Monitor& monitor) {
        monitor.state = Monitor::State::running;
        monitor.progress->start(std::max(total, 0));
        return 0;
    });
}

int step(void* data, int increment) noexcept
{
    return use_monitor(data, Monitor::State::running, [&](Monitor& monitor) {
        return monitor.progress->step(std::max(increment, 0)) ? 1 : 0;
    });
}

void finish(void* data) noexcept
{
    (void)use_monitor(data, Monitor::State::running, [&](Monitor& monitor) {
        monitor.state = Monitor::State::finished;
        monitor.progress->finish();
        return 0;
    });
}

LWMonitor* create(const char* title, const char* caption) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return nullptr;
    return activation->guarded(static_cast<LWMonitor*>(nullptr), [&]() -> LWMonitor* {
        std::unique_ptr<Progress> progress = activation->front_end().begin_progress(
            title != nullptr ? title : "", caption != nullptr ? caption : "");
        return progress != nullptr ? activation->monitors().add(std::move(progress)) : nullptr;
    });
}

void destroy(LWMonitor* monitor) noexcept
{
    if (Activation* const activation = Activation::current())
        activation->monitors().release(monitor);
}

} // namespace

LWMonitor* Monitors::add(std::unique_ptr<Progress> progress)
{
    Monitor& monitor = monitors_.emplace_back();
    monitor.progress = std::move(progress);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number to us, never an address
    monitor.table.data = reinterpret_cast<void*>(static_cast<std::uintptr_t>(monitors_.size()));
    monitor.table.init = &start;
    monitor.table.step = &step;
    monitor.table.done = &finish;
    return &monitor.table;
}

Monitor* Monitors::find(void* data) noexcept
{
    const auto number = reinterpret_cast<std::uintptr_t>(data);
    if (number == 0 || number > monitors_.size() || monitors_[number - 1].progress == nullptr)
        return nullptr;
    return &monitors_[number - 1];
}

void Monitors::release(const LWMonitor* handle) noexcept
{
    for (Monitor& monitor : monitors_)
        if (&monitor.table == handle)
            monitor.progress.reset();
}

LWMonitorFuncs* monitor_functions() noexcept
{
    static LWMonitorFuncs table{&create, &destroy};
    return &table;
}

} // namespace modeler
