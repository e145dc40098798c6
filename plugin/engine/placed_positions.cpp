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
        std::size_t arrival;
    };
    std::vector<key_typ> keys;
    keys.reserve(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i)
        keys.push_back({nodes[i]->pos.x(), i});
    std::sort(keys.begin(), keys.end(), [](const key_typ& a, const key_typ& b) {
        return a.x < b.x || (a.x == b.x && a.arrival < b.arrival);
    });
    pos_typ* head = nullptr;
    for (std::size_t i = keys.size(); i-- > 0;) {
        pos_typ* const node = nodes[keys[i].arrival];
        node->next = head;
        head = node;
    }
    nodes.clear();
    return head;
}

} // namespace dastrel
