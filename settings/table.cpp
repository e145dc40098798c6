// SPDX-License-Identifier: MIT
#include "settings/table.h"

#include <array>
#include <numbers>

#include <fmt/format.h>

#include "settings/values.h"

namespace settings {

namespace {

constexpr std::string_view placing = "placing";
constexpr std::string_view sizing = "sizing";
constexpr std::string_view rotating = "rotating";
constexpr std::string_view choosing = "choosing polygons by slope";
constexpr std::string_view shaping = "points and morphs";

// The rotation limits and the largest slope are computed with pi = 3.1415; only radians can express
// them exactly.
constexpr std::string_view ten_degrees = "0.17452777777777778rad";
constexpr std::string_view minus_ten_degrees = "-0.17452777777777778rad";

constexpr std::array<Setting, 28> settings{{
    {"clone_num", "Number of Clones", Unit::count, "30", placing, "how many clones to make"},
    {"distribution", "Distribution", Unit::percent, "80%", placing,
     "spacing asked for between clones, relative to an even spread"},
    {"iterations", "Iterations", Unit::count, "15", placing,
     "tries for a place before one is taken as it comes"},
    {"seed", "Random Seed", Unit::count, "25", placing,
     "decides the positions; sizes and rotations come from the clock"},
    {"density_wg", "Density WeightMap", Unit::map, "none", placing,
     "weight map that packs clones (above 0) or spreads them (below 0)"},

    {"size_var_x", "Size Variations", Unit::percent, "25%", sizing,
     "how far sizes vary; along X alone with independent sizes"},
    {"size_var_y", "Y", Unit::percent, "25%", sizing, "how far sizes vary along Y"},
    {"size_var_z", "Z", Unit::percent, "25%", sizing, "how far sizes vary along Z"},
    {"size_indep", "Independent Sizes", Unit::on_off, "off", sizing,
     "X, Y and Z sizes vary each on its own"},
    {"size_wg", "Size WeightMap", Unit::map, "none", sizing,
     "weight map that makes clones larger (above 0) or smaller (below 0)"},
    {"size_wg_influence", "Size WeightMap Influence", Unit::percent, "50%", sizing,
     "strength of the size weight map"},
    {"size_poly_area", "Size depends on Poly Area", Unit::on_off, "off", sizing,
     "clones on larger polygons are larger, on smaller ones closer together"},
    {"dep_power", "Dependence Power", Unit::percent, "50%", sizing,
     "factor on all sizes that depend on the polygon's area"},

    {"h_min", "Random rotation H Min", Unit::angle, minus_ten_degrees, rotating,
     "lower limit of the random heading (about Y)"},
    {"h_max", "H Max", Unit::angle, ten_degrees, rotating, "upper limit of the random heading"},
    {"p_min", "P Min", Unit::angle, minus_ten_degrees, rotating,
     "lower limit of the random pitch (about X)"},
    {"p_max", "P Max", Unit::angle, ten_degrees, rotating, "upper limit of the random pitch"},
    {"b_min", "B Min", Unit::angle, minus_ten_degrees, rotating,
     "lower limit of the random bank (about Z)"},
    {"b_max", "B Max", Unit::angle, ten_degrees, rotating, "upper limit of the random bank"},
    {"h_align", "H Align with normals", Unit::on_off, "on", rotating,
     "clones turn to where the polygon faces"},
    {"p_align", "P Align with normals", Unit::on_off, "on", rotating,
     "clones tilt with the polygon"},
    {"p_angle_wg", "P angle weightmap", Unit::map, "none", rotating,
     "weight map that tilts clones further; 1 is a right angle"},
    {"p_absolute", "Absolute", Unit::on_off, "off", rotating,
     "the pitch map starts from a right angle, not from the polygon"},

    {"slope_limits", "Slope Angle Limits", Unit::on_off, "off", choosing,
     "use only polygons whose slope lies within the two limits"},
    {"slope_min", "Min Slope Angle", Unit::angle, "0", choosing,
     "smallest slope; 0 is level, 90 upright, 180 facing down"},
    {"slope_max", "Max Slope Angle", Unit::angle, "3.1415rad", choosing, "largest slope"},

    {"jitter", "Jitter Cloned points", Unit::fraction, "0", shaping,
     "moves each point towards or away from the model's origin"},
    {"auto_morph_maps", "Auto morph maps", Unit::count, "0", shaping,
     "N spreads the morphs of the clones over N + 1 numbered maps"},
}};

} // namespace

std::span<const Setting> all_settings() noexcept { return settings; }

const Setting* find_setting(std::string_view field) noexcept
{
    for (const Setting& setting : settings) {
        if (setting.field == field)
            return &setting;
    }
    return nullptr;
}

std::string option_name(const Setting& setting)
{
    std::string name = "--";
    for (const char c : setting.field)
        name += c == '_' ? '-' : c;
    return name;
}

std::string_view unit_name(Unit unit) noexcept
{
    switch (unit) {
    case Unit::count:
        return "number";
    case Unit::percent:
        return "percent";
    case Unit::fraction:
        return "fraction";
    case Unit::angle:
        return "degrees";
    case Unit::on_off:
        return "switch";
    case Unit::map:
        break;
    }
    return "map";
}

std::string_view placeholder(Unit unit) noexcept
{
    switch (unit) {
    case Unit::count:
        return "N";
    case Unit::percent:
        return "PERCENT";
    case Unit::fraction:
        return "FRACTION";
    case Unit::angle:
        return "DEGREES";
    case Unit::on_off:
        return "[on|off]";
    case Unit::map:
        break;
    }
    return "MAP";
}

std::string default_for_display(const Setting& setting)
{
    if (!setting.default_text.ends_with("rad"))
        return std::string(setting.default_text);
    const double radians = std::get<double>(parse_value(setting, setting.default_text));
    return fmt::format("about {:.7g}", radians * 180.0 / std::numbers::pi);
}

} // namespace settings
