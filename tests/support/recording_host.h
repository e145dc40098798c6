// SPDX-License-Identifier: MIT
/// A plain host for the unit tests of the module: a scene given by hand, answers given by hand, and
/// a record of every call as a line of text.
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "hostapi/messages.h"
#include "hostapi/module.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"

namespace support {

enum class Side { foreground, background };

struct HostPoint {
    std::array<double, 3> position{};
    Side side = Side::foreground;
};

/// `points` index the scene's points. The normal is what the host says, whatever the points are.
struct HostPolygon {
    LWID type = LWPOLTYPE_FACE;
    std::vector<int> points;
    Side side = Side::foreground;
    bool selected = true;
    std::array<double, 3> normal{0.0, 1.0, 0.0};
    bool unknown = false; ///< `polyInfo` answers null
};

/// A vertex map: the values of those points that have one.
struct HostMap {
    LWID type = LWVMAP_WGHT;
    std::string name;
    std::map<int, std::vector<float>> values;
};

/// A polygon that the module added. `points` index `RecordingHost::added_points`.
struct AddedPolygon {
    LWID type = 0;
    int source = -1; ///< index of the template polygon in the scene
    std::vector<int> points;
};

using MapKey = std::pair<LWID, std::string>;
/// Values that were written, by added point.
using MapValues = std::map<int, std::vector<float>>;
/// A control's value; nothing for a button, or before it was set.
using PanelValue = std::variant<std::monostate, int, double>;

/// One host. As the tables of services carry no state there is one at a time.
class RecordingHost {
public:
    RecordingHost();
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;
    ~RecordingHost();

    // --- the scene
    std::vector<HostPoint> points;
    std::vector<HostPolygon> polygons;
    std::vector<HostMap> maps;

    /// Adds a polygon with points of its own. Returns its index.
    int add_polygon(Side side, const std::vector<std::array<double, 3>>& corners,
                    std::array<double, 3> normal = {0.0, 1.0, 0.0});

    // --- the answers
    bool gives_messages = true;
    bool gives_objects = true;
    bool gives_panels = true;
    bool gives_monitors = true;
    bool gives_edit = true;
    bool gives_panel = true;   ///< `create` of the panel service
    bool gives_monitor = true; ///< `create` of the monitor service
    bool gives_points = true;  ///< `addPoint`; null otherwise
    bool asks_to_stop = false; ///< what `step` of a monitor answers
    int yes_no = 1;
    std::deque<int> scan_codes; ///< what the scans return, one after another; then 0
    /// What the user does in the panel; returns what `post` answers. Without one: OK.
    std::function<int(RecordingHost&)> user;

    // --- the panel, as the user meets it
    void press(LWXPanelControlID button);
    std::map<LWXPanelControlID, PanelValue> panel_values;
    std::vector<std::string> choices; ///< of the last popup that was given a list

    // --- the record
    bool recording = true;
    std::vector<std::string> calls;
    /// Calls that no host may be given: after `done`, with a wrong state or an unknown id.
    std::vector<std::string> violations;
    std::vector<std::array<double, 3>> added_points;
    std::vector<AddedPolygon> added_polygons;
    std::map<MapKey, MapValues> written;
    std::vector<int> done_codes;
    int open_panels = 0;
    int open_monitors = 0;

    // --- for the module
    [[nodiscard]] static GlobalFunc* global();
    [[nodiscard]] static void* local();
    /// The edit's table, for tests that call the engine without a whole run.
    [[nodiscard]] MeshEditOp* edit();
    [[nodiscard]] LWMessageFuncs* messages();
    [[nodiscard]] LWObjectFuncs* objects();
    [[nodiscard]] LWXPanelFuncs* panels();
    [[nodiscard]] LWMonitorFuncs* monitors();

    [[nodiscard]] static LWPntID point_id(int index);
    [[nodiscard]] static LWPolID polygon_id(int index);
    /// What a scan tells of a polygon; valid until the next call.
    [[nodiscard]] const EDPolygonInfo* info(int polygon);

    /// Forgets what was recorded and added; the scene and the answers stay.
    void forget();

    /// The recorded calls whose text begins so.
    [[nodiscard]] std::vector<std::string> calls_to(const std::string& beginning) const;

private:
    friend struct EditCalls;
    friend struct PanelCalls;
    friend struct ServiceCalls;

    void record(const std::string& line);
    void violate(const std::string& line);
    [[nodiscard]] int scene_point(LWPntID id, const char* call);
    [[nodiscard]] int added_point(LWPntID id, const char* call);
    [[nodiscard]] int scene_polygon(LWPolID id, const char* call);
    [[nodiscard]] EDPolygonInfo describe(int polygon, std::vector<LWPntID>& ids) const;

    MeshEditOp edit_{};
    LWMessageFuncs messages_{};
    LWObjectFuncs objects_{};
    LWXPanelFuncs panels_{};
    LWMonitorFuncs monitors_{};
    LWMonitor monitor_{};
    EDPointInfo point_info_{};
    EDPolygonInfo polygon_info_{};
    std::vector<LWPntID> polygon_points_;
    const HostMap* selected_map_ = nullptr;
    bool finished_ = false; ///< the edit
    std::map<LWXPanelControlID, std::string> data_types_;
    std::map<LWXPanelControlID, LWXPanelButtonFunc*> buttons_;
};

/// The shortest text that reads back as the same number.
[[nodiscard]] std::string number(double value);
[[nodiscard]] std::string number(float value);
/// A number in the way of identifiers: "0x8001".
[[nodiscard]] std::string hex(LWXPanelControlID id);
/// A text in quotes, or "null".
[[nodiscard]] std::string quoted(const char* text);
/// The four characters of a type.
[[nodiscard]] std::string type_name(LWID type);

} // namespace support
