// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/literal/kernel/vector.h"

namespace literal {

/// Which of the two sides of the document something belongs to.
enum class Side { foreground, background };

/// A point of the scene, in metres.
struct ScenePoint {
    Vec3 position;
    Side side = Side::foreground;
};

/// A polygon of the scene. `points` index `Scene::points`; `normal` is taken as the caller gives
/// it.
struct ScenePolygon {
    std::string type = "FACE"; ///< four characters
    std::vector<std::size_t> points;
    Side side = Side::foreground;
    bool selected = true;
    Vec3 normal;
};

/// A vertex map. `values[i]` belongs to point i of the scene and is empty where that point has no
/// value; points past the end of `values` have none. A value has at least one number. No two maps
/// share both type and name.
struct SceneMap {
    std::string type; ///< "TXUV", "WGHT", "MORF", "MNVW", "SPOT" or another, which is not carried
    std::string name;
    std::vector<std::optional<std::vector<float>>> values;

    /// The value at a point, or null where the point has none.
    [[nodiscard]] const std::vector<float>* value_at(std::size_t point) const
    {
        if (point >= values.size() || !values[point].has_value()) {
            return nullptr;
        }
        return &*values[point];
    }
};

/// What a run starts from. Polygons stand in scan order, maps in listing order.
struct Scene {
    std::vector<ScenePoint> points;
    std::vector<ScenePolygon> polygons;
    std::vector<SceneMap> maps;
};

/// The 28 user settings with the values they have after loading. Angles are radians, percentages
/// fractions, switches on when exactly 1, map choices 0 for none or the place of a weight map
/// among the weight maps of the scene, counting from 1.
struct Settings {
    std::int32_t p_absolute = 0;
    std::int32_t auto_morph_maps = 0;
    double dep_power = 0.5;
    double size_wg_influence = 0.5;
    std::int32_t size_wg = 0;
    double slope_max = 3.1415;
    double slope_min = 0.0;
    std::int32_t slope_limits = 0;
    double jitter = 0.0;
    double distribution = 0.8;
    std::int32_t h_align = 1;
    std::int32_t p_align = 1;
    double b_max = 0.17452777777777778;
    double b_min = -0.17452777777777778;
    double p_max = 0.17452777777777778;
    double p_min = -0.17452777777777778;
    double h_max = 0.17452777777777778;
    double h_min = -0.17452777777777778;
    double size_var_x = 0.25;
    double size_var_y = 0.25;
    double size_var_z = 0.25;
    std::int32_t size_indep = 0;
    std::int32_t clone_num = 30;
    std::int32_t iterations = 15;
    std::int32_t size_poly_area = 0;
    std::int32_t seed = 25;
    std::int32_t density_wg = 0;
    std::int32_t p_angle_wg = 0;

    [[nodiscard]] bool operator==(const Settings&) const = default;
};

/// One drawn place for a clone.
struct Position {
    std::int32_t poly = 0; ///< index among the usable foreground faces, in scan order
    Vec3 pos;
    double norm_h = 0.0; ///< heading of the face's normal, radians
    double norm_p = 0.0; ///< pitch of the face's normal, radians
    double area = 0.0;   ///< area of the face; 0 unless sizes depend on it
};

/// A point that the run added. `source` indexes `Scene::points`.
struct AddedPoint {
    Vec3 position;
    std::size_t source = 0;
};

/// A polygon that the run added. `points` index `Result::points`, `source` is the polygon of the
/// scene that it was made from.
struct AddedPolygon {
    std::string type;
    std::size_t source = 0;
    std::vector<std::size_t> points;
};

/// What the run left in one vertex map. `values` has one entry per added point, empty where
/// nothing was written.
struct WrittenMap {
    std::string type;
    std::string name;
    int dimension = 0;
    std::vector<std::optional<std::vector<float>>> values;
};

/// The outcome of one run.
struct Result {
    std::vector<std::string> refusal; ///< the message's lines; empty unless the run was refused
    std::vector<AddedPoint> points;   ///< in the order in which they were added
    std::vector<AddedPolygon> polygons;
    std::vector<WrittenMap> maps; ///< in the order of their first value
    std::vector<Position> positions;
    Settings next_panel; ///< what the panel shows at the start of the next run

    /// The map of that type and name, or null when the run wrote nothing into it.
    [[nodiscard]] const WrittenMap* find_map(const std::string& type, const std::string& name) const
    {
        for (const WrittenMap& map : maps) {
            if (map.type == type && map.name == name) {
                return &map;
            }
        }
        return nullptr;
    }
};

} // namespace literal
