// SPDX-License-Identifier: MIT
#include "tests/support/recording_host.h"

#include <charconv>
#include <cstdint>
#include <cstring>

#include "tests/support/allocations.h"
#include "tests/support/recording_calls.h"

namespace support {

namespace {

RecordingHost* current = nullptr;

// Ids are numbers in pointer clothing, apart from each other so that none passes for another kind.
constexpr std::uintptr_t first_point = 0x100000;
constexpr std::uintptr_t first_polygon = 0x20000000;

template <typename Number> std::string shortest(Number value)
{
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

} // namespace

std::string number(double value) { return shortest(value); }
std::string number(float value) { return shortest(value); }

std::string hex(LWXPanelControlID id)
{
    char text[32];
    std::string digits(text, std::to_chars(text, text + sizeof text, id, 16).ptr);
    for (char& digit : digits)
        if (digit >= 'a')
            digit = static_cast<char>(digit - 'a' + 'A');
    return "0x" + digits;
}

std::string quoted(const char* text)
{
    return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

std::string type_name(LWID type)
{
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8)
        name += static_cast<char>((type >> shift) & 0xFFU);
    return name;
}

RecordingHost& host() { return *current; }

RecordingHost::RecordingHost()
{
    current = this;
    EditCalls::fill(edit_, this);
    PanelCalls::fill(panels_);
    ServiceCalls::fill(*this);
}

RecordingHost::~RecordingHost() { current = nullptr; }

int RecordingHost::add_polygon(Side side, const std::vector<std::array<double, 3>>& corners,
                               std::array<double, 3> normal)
{
    HostPolygon polygon;
    polygon.side = side;
    polygon.normal = normal;
    for (const std::array<double, 3>& corner : corners) {
        polygon.points.push_back(static_cast<int>(points.size()));
        points.push_back({corner, side});
    }
    polygons.push_back(polygon);
    return static_cast<int>(polygons.size()) - 1;
}

GlobalFunc* RecordingHost::global() { return ServiceCalls::global; }
void* RecordingHost::local() { return reinterpret_cast<void*>(ServiceCalls::begin); }
MeshEditOp* RecordingHost::edit() { return &edit_; }
LWMessageFuncs* RecordingHost::messages() { return &messages_; }
LWObjectFuncs* RecordingHost::objects() { return &objects_; }
LWXPanelFuncs* RecordingHost::panels() { return &panels_; }
LWMonitorFuncs* RecordingHost::monitors() { return &monitors_; }

LWPntID RecordingHost::point_id(int index)
{
    return reinterpret_cast<LWPntID>(first_point + static_cast<std::uintptr_t>(index));
}

LWPolID RecordingHost::polygon_id(int index)
{
    return reinterpret_cast<LWPolID>(first_polygon + static_cast<std::uintptr_t>(index));
}

EDPolygonInfo RecordingHost::describe(int polygon, std::vector<LWPntID>& ids) const
{
    const HostPolygon& source = polygons[static_cast<std::size_t>(polygon)];
    ids.clear();
    for (const int point : source.points)
        ids.push_back(point_id(point));
    EDPolygonInfo info{};
    info.pol = polygon_id(polygon);
    info.type = source.type;
    info.numPnts = static_cast<int>(ids.size());
    info.points = ids.data();
    // The bits above the lowest are another host's business: the module must not mind them.
    info.flags = source.selected ? 0x15 : 0x14;
    return info;
}

const EDPolygonInfo* RecordingHost::info(int polygon)
{
    const HostSide side;
    polygon_info_ = describe(polygon, polygon_points_);
    return &polygon_info_;
}

std::vector<std::string> RecordingHost::calls_to(const std::string& beginning) const
{
    std::vector<std::string> found;
    for (const std::string& call : calls)
        if (call.compare(0, beginning.size(), beginning) == 0)
            found.push_back(call);
    return found;
}

void RecordingHost::forget()
{
    calls.clear();
    violations.clear();
    added_points.clear();
    added_polygons.clear();
    written.clear();
    done_codes.clear();
    finished_ = false;
}

void RecordingHost::record(const std::string& line)
{
    if (recording)
        calls.push_back(line);
}

void RecordingHost::violate(const std::string& line) { violations.push_back(line); }

int RecordingHost::scene_point(LWPntID id, const char* call)
{
    const std::uintptr_t index = reinterpret_cast<std::uintptr_t>(id) - first_point;
    if (index < points.size())
        return static_cast<int>(index);
    violate(std::string(call) + ": no point of the scene");
    return -1;
}

int RecordingHost::added_point(LWPntID id, const char* call)
{
    if (id == nullptr && !gives_points)
        return -1;
    const std::uintptr_t index = reinterpret_cast<std::uintptr_t>(id) - first_point - points.size();
    if (index < added_points.size())
        return static_cast<int>(index);
    violate(std::string(call) + ": no added point");
    return -1;
}

int RecordingHost::scene_polygon(LWPolID id, const char* call)
{
    const std::uintptr_t index = reinterpret_cast<std::uintptr_t>(id) - first_polygon;
    if (index < polygons.size())
        return static_cast<int>(index);
    violate(std::string(call) + ": no polygon of the scene");
    return -1;
}

} // namespace support
