// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "hostapi/types.h"

namespace dastrel {

/// Finds the copy of a background point in the current clone: a hashed table beside the list `IDs`,
/// emptied in constant time.
class point_table {
public:
    /// Forgets all points.
    void clear();

    /// The copy of the first point added under this id; null when there is none, which is also
    /// the copy of a point whose copy could not be made: `found` tells the two apart.
    LWPntID find(LWPntID old_id, bool& found) const
    {
        found = false;
        if (slots.empty())
            return nullptr;
        for (std::size_t i = start(old_id);; i = (i + 1) & mask) {
            const slot_typ& slot = slots[i];
            if (slot.clone != clone)
                return nullptr;
            if (slot.old_id == old_id) {
                found = true;
                return slot.new_id;
            }
        }
    }

    /// Adds a point, unless its id is there.
    void add(LWPntID old_id, LWPntID new_id);

    /// Gives the memory back.
    void release();

private:
    struct slot_typ {
        LWPntID old_id = nullptr;
        LWPntID new_id = nullptr;
        std::uint64_t clone = 0; ///< which clone it was filled for; of another one it is empty
    };

    std::size_t start(LWPntID id) const
    {
        const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id));
        return static_cast<std::size_t>(bits ^ (bits >> 7)) & mask;
    }
    void put(LWPntID old_id, LWPntID new_id);
    void grow();

    std::vector<slot_typ> slots; ///< a power of two, at most half of them filled
    std::size_t mask = 0;        ///< their number less one
    std::size_t filled = 0;
    std::size_t most = 0; ///< filled slots that the table takes before it grows
    std::uint64_t clone = 1;
};

} // namespace dastrel
