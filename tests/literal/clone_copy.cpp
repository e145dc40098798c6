// SPDX-License-Identifier: MIT
#include "tests/literal/clone_copy.h"

#include "tests/literal/kernel/integers.h"

namespace literal {

namespace {

/// The first `dimension` numbers of a value, with 0 for those it lacks.
std::vector<float> cut(const std::vector<float>& value, int dimension)
{
    std::vector<float> result = value;
    result.resize(static_cast<std::size_t>(dimension), 0.0F);
    return result;
}

} // namespace

CloneCopier::CloneCopier(const Scene& scene, const Settings& settings,
                         const std::vector<double>& size_weights, double mean_area,
                         Sampler& sampler, CloneDraws& draws, Result& result)
    : scene_(scene), settings_(settings), size_weights_(size_weights), mean_area_(mean_area),
      sampler_(sampler), draws_(draws), result_(result)
{}

void CloneCopier::copy(std::int32_t index, const Position& position)
{
    draw(position);
    for (std::size_t polygon = 0; polygon < scene_.polygons.size(); ++polygon) {
        if (scene_.polygons[polygon].side == Side::background) {
            copy_polygon(polygon, index, position);
        }
    }
}

void CloneCopier::draw(const Position& position)
{
    const Settings& s = settings_;
    draws_.heading = sampler_.between(s.h_min, s.h_max);
    draws_.pitch = sampler_.between(s.p_min, s.p_max);
    draws_.bank = sampler_.between(s.b_min, s.b_max);

    double factor = 1.0;
    if (s.size_poly_area == 1) {
        double ratio = position.area / mean_area_;
        if (0.7 > ratio) {
            ratio = 0.7;
        }
        factor = ratio * s.dep_power;
    }
    draws_.size_x = factor * sampler_.between(1.0 - s.size_var_x, 1.0 + s.size_var_x);
    if (s.size_indep == 1) {
        draws_.size_y = factor * sampler_.between(1.0 - s.size_var_y, 1.0 + s.size_var_y);
        draws_.size_z = factor * sampler_.between(1.0 - s.size_var_z, 1.0 + s.size_var_z);
    }

    pairs_.clear();
    if (s.auto_morph_maps != 0) {
        const std::int32_t drawn = sampler_.between(std::int32_t{0}, s.auto_morph_maps);
        draws_.morph_number = wrapped_sum(drawn, 1);
    }
}

Vec3 CloneCopier::transformed(Vec3 point, const Position& position)
{
    const Settings& s = settings_;
    Vec3 p = point;
    if (s.size_indep == 1) {
        p.x *= draws_.size_x;
        p.y *= draws_.size_y;
        p.z *= draws_.size_z;
    } else {
        p = p * draws_.size_x;
    }
    if (s.jitter > 0.0) {
        p = p * sampler_.between(1.0 - s.jitter, 1.0 + s.jitter);
    }
    if (s.size_wg > 0) {
        const double w = size_weights_[static_cast<std::size_t>(position.poly)];
        if (w < 0.0) {
            p = p * ((w / 2.0) * s.size_wg_influence + 1.0);
        } else {
            p = p * (w * s.size_wg_influence + 1.0);
        }
    }
    p = rotate_z(p, draws_.bank);
    p = rotate_x(p, draws_.pitch);
    p = rotate_y(p, draws_.heading);
    if (s.p_align == 1) {
        p = rotate_z(p, position.norm_p);
    }
    if (s.h_align == 1) {
        p = rotate_y(p, position.norm_h);
    }
    return p;
}

void CloneCopier::copy_polygon(std::size_t polygon, std::int32_t index, const Position& position)
{
    AddedPolygon added;
    added.type = scene_.polygons[polygon].type;
    added.source = polygon;
    for (const std::size_t old_point : scene_.polygons[polygon].points) {
        added.points.push_back(copied_point(old_point, index, position));
    }
    result_.polygons.push_back(added);
}

std::size_t CloneCopier::copied_point(std::size_t old_point, std::int32_t index,
                                      const Position& position)
{
    for (const Pair& pair : pairs_) {
        if (pair.old_point == old_point) {
            return pair.new_point;
        }
    }
    const Vec3 p = transformed(scene_.points[old_point].position, position) + position.pos;
    const Pair pair{old_point, result_.points.size()};
    pairs_.push_back(pair);
    result_.points.push_back({p, old_point});
    carry_maps(pair, index, position);
    return pair.new_point;
}

void CloneCopier::carry_maps(const Pair& pair, std::int32_t index, const Position& position)
{
    carry_unchanged(pair, "TXUV", 2);
    carry_unchanged(pair, "WGHT", 1);
    // Single precision on both sides of the division. It replaces a value just carried over from
    // a background that is itself the work of an earlier run.
    const float number = static_cast<float>(index) / static_cast<float>(settings_.clone_num);
    write(pair.new_point, "WGHT", "DT_index", {number});
    carry_morphs(pair, position);
    carry_unchanged(pair, "MNVW", 1);
    carry_unchanged(pair, "SPOT", 3);
}

void CloneCopier::carry_unchanged(const Pair& pair, const std::string& type, int dimension)
{
    for (const SceneMap& map : scene_.maps) {
        if (map.type != type) {
            continue;
        }
        const std::vector<float>* value = map.value_at(pair.old_point);
        if (value != nullptr) {
            write(pair.new_point, type, map.name, cut(*value, dimension));
        }
    }
}

void CloneCopier::carry_morphs(const Pair& pair, const Position& position)
{
    for (const SceneMap& map : scene_.maps) {
        if (map.type != "MORF") {
            continue;
        }
        const std::vector<float>* value = map.value_at(pair.old_point);
        if (value == nullptr) {
            continue;
        }
        const std::vector<float> offset = cut(*value, 3);
        // The offset goes the point's own way, with a jitter draw of its own, but is not moved.
        const Vec3 d = transformed({offset[0], offset[1], offset[2]}, position);
        std::string name = map.name;
        if (draws_.morph_number != 0) {
            name += std::to_string(draws_.morph_number);
        }
        write(pair.new_point, "MORF", name,
              {static_cast<float>(d.x), static_cast<float>(d.y), static_cast<float>(d.z)});
    }
}

void CloneCopier::write(std::size_t point, const std::string& type, const std::string& name,
                        const std::vector<float>& value)
{
    WrittenMap* target = nullptr;
    for (WrittenMap& map : result_.maps) {
        if (map.type == type && map.name == name) {
            target = &map;
        }
    }
    if (target == nullptr) {
        result_.maps.push_back({type, name, static_cast<int>(value.size()), {}});
        target = &result_.maps.back();
    }
    if (target->values.size() <= point) {
        target->values.resize(point + 1);
    }
    target->values[point] = value;
}

} // namespace literal
