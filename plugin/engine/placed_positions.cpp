// SPDX-License-Identifier: MIT
#include "plugin/engine/placed_positions.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "plugin/engine/pos_typ.h"

namespace dastrel {

placed_positions::~placed_positions()
{
    for (pos_typ* node : nodes)
        delete node;
}

pos_typ* placed_positions::add(const XYZ6_typ& pos)
{
    if (std::isnan(pos.x()))
        return nullptr;
    index.insert(pos);
    auto node = std::make_unique<pos_typ>();
    node->pos = pos;
    nodes.push_back(node.get());
    return node.release();
}

pos_typ* placed_positions::link()
{
    struct key_typ {
        double x;
        pos_typ* node;
    };
    std::vector<key_typ> keys;
    keys.reserve(nodes.size());
    for (pos_typ* node : nodes)
        keys.push_back({node->pos.x(), node});
    std::stable_sort(keys.begin(), keys.end(),
                     [](const key_typ& a, const key_typ& b) { return a.x < b.x; });
    pos_typ* head = nullptr;
    for (std::size_t i = keys.size(); i-- > 0;) {
        keys[i].node->next = head;
        head = keys[i].node;
    }
    nodes.clear();
    return head;
}

} // namespace dastrel
