// SPDX-License-Identifier: MIT
#include "plugin/engine/indexed_positions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "plugin/engine/pos_typ.h"

namespace dastrel {

pos_typ* indexed_positions::add(const XYZ6_typ& pos)
{
    pos_typ* const node = ::new (memory.take()) pos_typ;
    node->pos = pos;
    nodes.push_back(node);
    positions.insert(node->pos);
    return node;
}

void indexed_positions::link(pos_typ*& list)
{
    struct key_typ {
        double x;
        std::size_t arrival;
    };
    std::vector<key_typ> keys;
    keys.reserve(nodes.size());
    // The plain list inserts a NaN at its end, and any other X before the first larger one. So a
    // NaN sorts as a number equal to the largest X that came before it.
    double largest_so_far = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const double x = nodes[i]->pos.x();
        if (x > largest_so_far)
            largest_so_far = x;
        keys.push_back({std::isnan(x) ? largest_so_far : x, i});
    }
    std::sort(keys.begin(), keys.end(), [](const key_typ& a, const key_typ& b) {
        return a.x < b.x || (a.x == b.x && a.arrival < b.arrival);
    });
    // New nodes, allocated in the order of the list: walking it reads memory in sequence.
    constexpr std::size_t ahead = 16;
    pos_typ** end = &list;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i + ahead < keys.size())
            __builtin_prefetch(nodes[keys[i + ahead].arrival]);
        *end = new pos_typ(*nodes[keys[i].arrival]);
        end = &(*end)->next;
    }
}

} // namespace dastrel
