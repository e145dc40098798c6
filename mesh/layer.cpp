// SPDX-License-Identifier: MIT
#include "mesh/layer.h"

#include <utility>

namespace mesh {

const VertexMap* Layer::find_map(FourCC type, std::string_view map_name) const noexcept
{
    for (const VertexMap& map : maps)
        if (map.type() == type && map.name() == map_name)
            return &map;
    return nullptr;
}

VertexMap* Layer::find_map(FourCC type, std::string_view map_name) noexcept
{
    return const_cast<VertexMap*>(std::as_const(*this).find_map(type, map_name));
}

} // namespace mesh
