// SPDX-License-Identifier: MIT
#include "bench/peers/obj_mesh.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace bench {

mesh::Layer read_peer_mesh(const std::filesystem::path& file)
{
    std::ifstream in(file);
    if (!in)
        throw std::runtime_error(file.string() + ": cannot be opened");
    mesh::Layer layer;
    mesh::VertexMap texture(mesh::map_txuv, "UVMap", 2);
    mesh::VertexMap weight(mesh::map_wght, "weight", 1);
    std::uint32_t textured = 0;
    std::uint32_t weighted = 0;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string kind;
        words >> kind;
        if (kind == "v") {
            mesh::Vec3 p;
            words >> p.x >> p.y >> p.z;
            layer.points.push_back(p);
        } else if (kind == "vt") {
            std::array<float, 2> value{};
            words >> value[0] >> value[1];
            texture.set(textured++, value);
        } else if (kind == "#w") {
            std::array<float, 1> value{};
            words >> value[0];
            weight.set(weighted++, value);
        } else if (kind == "f") {
            std::vector<std::uint32_t> corners;
            for (std::string corner; words >> corner;)
                corners.push_back(static_cast<std::uint32_t>(std::stoul(corner)) - 1);
            layer.polygons.add(mesh::polygon_face, corners);
        }
    }
    layer.maps.push_back(std::move(texture));
    layer.maps.push_back(std::move(weight));
    return layer;
}

} // namespace bench
