// SPDX-License-Identifier: MIT
#pragma once

namespace dastrel {

/// Deletes all nodes behind `node`, each of which owns the one at its `next`: for destructors whose
/// nodes release the rest of their chain. In a loop, not by one destructor calling the next, so
/// that a chain of millions does not need millions of stack frames.
template <typename Node> void delete_rest_of_chain(Node* node)
{
    Node* rest = node->next;
    node->next = nullptr;
    while (rest != nullptr) {
        Node* const following = rest->next;
        rest->next = nullptr;
        delete rest;
        rest = following;
    }
}

} // namespace dastrel
