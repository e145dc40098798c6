// SPDX-License-Identifier: MIT
#include "modeler/model_size.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <fmt/format.h>

#include "mesh/bounds.h"

namespace modeler {

namespace {

/// Below this ratio a clone is smaller than a pixel when the ground fills the view.
constexpr double smallest_share = 0.001;
constexpr double largest_share = 1.0;
/// The typical ratio of a suitable model, such as a tree on a field.
constexpr double usual_share = 0.03;

/// Longest side of the bounding box of all layers with this role; 0 if there is none or it is not
/// finite.
double extent(const mesh::Document& document, const std::vector<LayerRole>& roles, LayerRole role)
{
    std::vector<mesh::Vec3> ends;
    for (std::size_t i = 0; i < roles.size(); ++i) {
        if (roles[i] != role)
            continue;
        if (const auto box = mesh::layer_bounds(document.layers[i])) {
            ends.push_back(box->min);
            ends.push_back(box->max);
        }
    }
    const auto box = mesh::bounds_of(ends);
    if (!box)
        return 0.0;
    double longest = 0.0;
    for (const double side :
         {box->max.x - box->min.x, box->max.y - box->min.y, box->max.z - box->min.z})
        if (side > longest) // not where a side is no number
            longest = side;
    return std::isfinite(longest) ? longest : 0.0;
}

} // namespace

std::optional<SizeMismatch> size_mismatch(const mesh::Document& document,
                                          const std::vector<LayerRole>& roles)
{
    SizeMismatch sizes;
    sizes.model = extent(document, roles, LayerRole::background);
    sizes.ground = extent(document, roles, LayerRole::foreground);
    if (sizes.model <= 0.0 || sizes.ground <= 0.0)
        return std::nullopt;
    const double share = sizes.model / sizes.ground;
    if (share >= smallest_share && share <= largest_share)
        return std::nullopt;
    sizes.factor = std::pow(10.0, std::round(std::log10(usual_share) - std::log10(share)));
    return sizes;
}

std::string to_sentence(const SizeMismatch& mismatch)
{
    const double share = mismatch.model / mismatch.ground;
    const std::string how =
        share > 1.0 ? fmt::format("is {:.4g} times as large as the ground ({:.4g} m beside "
                                  "{:.4g} m): its clones will hide it",
                                  share, mismatch.model, mismatch.ground)
                    : fmt::format("is {:.2g} % of the ground's size ({:.4g} m beside {:.4g} m): "
                                  "its clones will be too small to be seen",
                                  share * 100.0, mismatch.model, mismatch.ground);
    return fmt::format("the model {}; scale the model by {:g} (it may be in another unit)", how,
                       mismatch.factor);
}

} // namespace modeler
