// SPDX-License-Identifier: MIT
#include "formats/clone_kinds.h"

#include <cstddef>
#include <set>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/capacity.h"

namespace formats {

namespace {

struct Kinds {
    std::set<mesh::FourCC> polygons;
    std::set<mesh::FourCC> tags;

    void add(const mesh::Polygons& from)
    {
        polygons.insert(from.types().begin(), from.types().end());
        for (const mesh::TagColumn& column : from.other_tags())
            tags.insert(column.kind());
    }
};

void check(std::size_t count, std::size_t most, const char* what)
{
    if (count > most)
        throw LimitError(fmt::format("ground and model have {} {} together, more than the {} that "
                                     "the layer of the clones can hold; use fewer",
                                     count, what, most));
}

} // namespace

void check_clone_kinds(const mesh::Layer& target, std::span<const mesh::Layer* const> models)
{
    Kinds kinds;
    kinds.add(target.polygons);
    for (const mesh::Layer* const model : models)
        kinds.add(model->polygons);
    check(kinds.polygons.size(), lwo2::polygon_type_limit, "types of polygons");
    check(kinds.tags.size(), lwo2::tag_kind_limit, "kinds of polygon tags");
}

} // namespace formats
