// SPDX-License-Identifier: MIT
#include "tests/support/allocations.h"
#include "tests/support/recording_calls.h"

namespace support {

namespace {

std::string side_name(int layer)
{
    switch (layer) {
    case OPLYR_FG:
        return "foreground";
    case OPLYR_BG:
        return "background";
    default:
        return "layer " + std::to_string(layer);
    }
}

std::string mode_name(int mode)
{
    switch (mode) {
    case OPCOUNT_ALL:
        return "all";
    case OPCOUNT_SELECTED:
        return "selected";
    default:
        return "mode " + std::to_string(mode);
    }
}

bool on_side(Side side, int layer)
{
    return side == (layer == OPLYR_FG ? Side::foreground : Side::background);
}

std::string p(int point) { return "p" + std::to_string(point); }
std::string n(int point) { return "n" + std::to_string(point); }

std::string list_of(int count, const float* value)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += (i == 0 ? "" : " ") + number(value[i]);
    return text;
}

} // namespace

void EditCalls::fill(MeshEditOp& table, RecordingHost* owner)
{
    table.state = owner;
    table.done = done;
    table.pointCount = pointCount;
    table.polyCount = polyCount;
    table.polyScan = polyScan;
    table.pointInfo = pointInfo;
    table.polyInfo = polyInfo;
    table.polyNormal = polyNormal;
    table.pointVSet = pointVSet;
    table.pointVGet = pointVGet;
    table.pntVMap = pntVMap;
    table.addPoint = addPoint;
    table.addPoly = addPoly;
}

RecordingHost& EditCalls::at(void* state, const char* call)
{
    if (state != &host())
        host().violate(std::string(call) + ": wrong state");
    if (host().finished_)
        host().violate(std::string(call) + ": the edit is finished");
    return host();
}

void EditCalls::done(void* state, int error, int selection_mode)
{
    const HostSide side;
    RecordingHost& h = at(state, "done");
    h.finished_ = true;
    h.done_codes.push_back(error);
    h.record("done(" + std::to_string(error) + ", " + std::to_string(selection_mode) + ")");
}

int EditCalls::pointCount(void* state, int layer, int mode)
{
    const HostSide side;
    RecordingHost& h = at(state, "pointCount");
    h.record("pointCount(" + side_name(layer) + ", " + mode_name(mode) + ")");
    int count = 0;
    for (const HostPoint& point : h.points)
        count += on_side(point.side, layer) ? 1 : 0;
    return count;
}

int EditCalls::polyCount(void* state, int layer, int mode)
{
    const HostSide side;
    RecordingHost& h = at(state, "polyCount");
    h.record("polyCount(" + side_name(layer) + ", " + mode_name(mode) + ")");
    int count = 0;
    for (const HostPolygon& polygon : h.polygons)
        if (on_side(polygon.side, layer) && (mode == OPCOUNT_ALL || polygon.selected))
            ++count;
    return count;
}

int EditCalls::polyScan(void* state, EDPolyScanFunc* callback, void* data, int layer)
{
    const HostSide side;
    RecordingHost& h = at(state, "polyScan");
    h.record("polyScan(" + side_name(layer) + ")");
    std::vector<LWPntID> ids;
    for (std::size_t i = 0; i < h.polygons.size(); ++i) {
        if (!on_side(h.polygons[i].side, layer))
            continue;
        const EDPolygonInfo info = h.describe(static_cast<int>(i), ids);
        const ModuleSide module_side;
        const int answer = callback(data, &info);
        const HostSide back;
        if (answer != EDERR_NONE)
            h.violate("polyScan: the callback ended the scan");
    }
    int code = EDERR_NONE;
    if (!h.scan_codes.empty()) {
        code = h.scan_codes.front();
        h.scan_codes.pop_front();
    }
    return code;
}

const EDPointInfo* EditCalls::pointInfo(void* state, LWPntID point)
{
    const HostSide side;
    RecordingHost& h = at(state, "pointInfo");
    const int index = h.scene_point(point, "pointInfo");
    h.record("pointInfo(" + p(index) + ")");
    if (index < 0)
        return nullptr;
    h.point_info_ = {};
    h.point_info_.pnt = point;
    for (std::size_t i = 0; i < 3; ++i)
        h.point_info_.position[i] = h.points[static_cast<std::size_t>(index)].position[i];
    if (h.selected_map_ != nullptr) {
        const auto found = h.selected_map_->values.find(index);
        if (found != h.selected_map_->values.end())
            h.point_info_.vmap_value = found->second.data();
    }
    return &h.point_info_;
}

const EDPolygonInfo* EditCalls::polyInfo(void* state, LWPolID polygon)
{
    const HostSide side;
    RecordingHost& h = at(state, "polyInfo");
    const int index = h.scene_polygon(polygon, "polyInfo");
    h.record("polyInfo(polygon " + std::to_string(index) + ")");
    if (index < 0 || h.polygons[static_cast<std::size_t>(index)].unknown)
        return nullptr;
    return h.info(index);
}

int EditCalls::polyNormal(void* state, LWPolID polygon, double normal[3])
{
    const HostSide side;
    RecordingHost& h = at(state, "polyNormal");
    const int index = h.scene_polygon(polygon, "polyNormal");
    h.record("polyNormal(polygon " + std::to_string(index) + ")");
    if (index < 0)
        return 0;
    for (std::size_t i = 0; i < 3; ++i)
        normal[i] = h.polygons[static_cast<std::size_t>(index)].normal[i];
    return 1;
}

void* EditCalls::pointVSet(void* state, void* map, LWID type, const char* name)
{
    const HostSide side;
    RecordingHost& h = at(state, "pointVSet");
    h.record("pointVSet(" + std::string(map == nullptr ? "null" : "a handle") + ", " +
             type_name(type) + ", " + quoted(name) + ")");
    h.selected_map_ = nullptr;
    for (const HostMap& candidate : h.maps)
        if (candidate.type == type && name != nullptr && candidate.name == name)
            h.selected_map_ = &candidate;
    return const_cast<HostMap*>(h.selected_map_);
}

int EditCalls::pointVGet(void* state, LWPntID point, float* value)
{
    const HostSide side;
    RecordingHost& h = at(state, "pointVGet");
    const int index = h.scene_point(point, "pointVGet");
    h.record("pointVGet(" + p(index) + ")");
    if (h.selected_map_ == nullptr)
        return 0;
    const auto found = h.selected_map_->values.find(index);
    if (found == h.selected_map_->values.end())
        return 0;
    for (std::size_t i = 0; i < found->second.size(); ++i)
        value[i] = found->second[i];
    return 1;
}

int EditCalls::pntVMap(void* state, LWPntID point, LWID type, const char* name, int dimension,
                       const float* value)
{
    const HostSide side;
    RecordingHost& h = at(state, "pntVMap");
    const int index = h.added_point(point, "pntVMap");
    if (h.recording) // a text for each value: left out where a test makes millions of them
        h.record("pntVMap(" + n(index) + ", " + type_name(type) + ", " + quoted(name) + ", " +
                 std::to_string(dimension) + ": " + list_of(dimension, value) + ")");
    h.written[{type, name}][index] = std::vector<float>(value, value + dimension);
    return EDERR_NONE;
}

LWPntID EditCalls::addPoint(void* state, const double position[3])
{
    const HostSide side;
    RecordingHost& h = at(state, "addPoint");
    if (!h.gives_points) {
        h.record("addPoint = null");
        return nullptr;
    }
    const int index = static_cast<int>(h.added_points.size());
    h.added_points.push_back({position[0], position[1], position[2]});
    h.record("addPoint(" + number(position[0]) + ", " + number(position[1]) + ", " +
             number(position[2]) + ") = " + n(index));
    return RecordingHost::point_id(static_cast<int>(h.points.size()) + index);
}

LWPolID EditCalls::addPoly(void* state, LWID type, LWPolID template_polygon, const char* surface,
                           int count, const LWPntID* points)
{
    const HostSide side;
    RecordingHost& h = at(state, "addPoly");
    AddedPolygon polygon{type, h.scene_polygon(template_polygon, "addPoly"), {}};
    std::string text;
    for (int i = 0; i < count; ++i) {
        polygon.points.push_back(h.added_point(points[i], "addPoly"));
        text += " " + n(polygon.points.back());
    }
    h.record("addPoly(" + type_name(type) + ", like polygon " + std::to_string(polygon.source) +
             ", " + quoted(surface) + ", " + std::to_string(count) + ":" + text + ")");
    h.added_polygons.push_back(polygon);
    return RecordingHost::polygon_id(static_cast<int>(h.polygons.size() + h.added_polygons.size()) -
                                     1);
}

} // namespace support
