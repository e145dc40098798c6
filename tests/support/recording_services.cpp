// SPDX-License-Identifier: MIT
#include <cstring>

#include "tests/support/allocations.h"
#include "tests/support/recording_calls.h"

namespace support {

namespace {

const HostMap* map_at(const RecordingHost& h, LWID type, int index)
{
    for (const HostMap& map : h.maps)
        if (map.type == type && index-- == 0)
            return &map;
    return nullptr;
}

} // namespace

void ServiceCalls::fill(RecordingHost& owner)
{
    owner.messages_ = {info, error, yesNo};
    owner.objects_ = {numVMaps, vmapName};
    owner.monitors_ = {create_monitor, destroy_monitor};
    owner.monitor_ = {&owner, init, step, done};
}

void* ServiceCalls::global(const char* service, int use_mode)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("global(" + quoted(service) + ", " + std::to_string(use_mode) + ")");
    if (std::strcmp(service, "Info Messages 3") == 0)
        return h.gives_messages ? &h.messages_ : nullptr;
    if (std::strcmp(service, "Scene Objects 7") == 0)
        return h.gives_objects ? &h.objects_ : nullptr;
    if (std::strcmp(service, "LWXPanel 2") == 0)
        return h.gives_panels ? &h.panels_ : nullptr;
    if (std::strcmp(service, "LWM: Dynamic Monitor") == 0)
        return h.gives_monitors ? &h.monitors_ : nullptr;
    h.violate("global: no such service");
    return nullptr;
}

MeshEditOp* ServiceCalls::begin(int point_buffer, int polygon_buffer, int selection_mode)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("begin(" + std::to_string(point_buffer) + ", " + std::to_string(polygon_buffer) +
             ", " + std::to_string(selection_mode) + ")");
    h.finished_ = false;
    h.selected_map_ = nullptr;
    return h.gives_edit ? &h.edit_ : nullptr;
}

void ServiceCalls::info(const char* line1, const char* line2)
{
    const HostSide side;
    host().record("info(" + quoted(line1) + ", " + quoted(line2) + ")");
}

void ServiceCalls::error(const char* line1, const char* line2)
{
    const HostSide side;
    host().record("error(" + quoted(line1) + ", " + quoted(line2) + ")");
}

int ServiceCalls::yesNo(const char* title, const char* line1, const char* line2)
{
    const HostSide side;
    host().record("yesNo(" + quoted(title) + ", " + quoted(line1) + ", " + quoted(line2) + ")");
    return host().yes_no;
}

int ServiceCalls::numVMaps(LWID type)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("numVMaps(" + type_name(type) + ")");
    int count = 0;
    while (map_at(h, type, count) != nullptr)
        ++count;
    return count;
}

const char* ServiceCalls::vmapName(LWID type, int index)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("vmapName(" + type_name(type) + ", " + std::to_string(index) + ")");
    const HostMap* const map = map_at(h, type, index);
    return map != nullptr ? map->name.c_str() : nullptr;
}

LWMonitor* ServiceCalls::create_monitor(const char* title, const char* caption)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("monitor create(" + quoted(title) + ", " + quoted(caption) + ")");
    if (!h.gives_monitor)
        return nullptr;
    ++h.open_monitors;
    return &h.monitor_;
}

void ServiceCalls::destroy_monitor(LWMonitor* monitor)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("monitor destroy");
    if (monitor != &h.monitor_)
        h.violate("monitor destroy: no such monitor");
    --h.open_monitors;
}

void ServiceCalls::init(void* data, int total)
{
    const HostSide side;
    if (data != &host())
        host().violate("monitor init: wrong data");
    host().record("monitor init(" + std::to_string(total) + ")");
}

int ServiceCalls::step(void* data, int increment)
{
    const HostSide side;
    if (data != &host())
        host().violate("monitor step: wrong data");
    host().record("monitor step(" + std::to_string(increment) + ")");
    return host().asks_to_stop ? 1 : 0;
}

void ServiceCalls::done(void* data)
{
    const HostSide side;
    if (data != &host())
        host().violate("monitor done: wrong data");
    host().record("monitor done");
}

} // namespace support
