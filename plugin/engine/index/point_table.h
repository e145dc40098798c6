// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "hostapi/types.h"

namespace dastrel {

/// Finds the copy of a background point in the current clone: a hashed table beside the list `IDs`.
/// Every clone has the same points, so a point keeps its slot from clone to clone; a stamp tells
/// whether the current one has it, and forgetting all points takes constant time.
class point_table {
public:
    /// What is known of one background point.
    class slot_typ {
        friend class point_table;
        LWPntID old_id = nullptr;
        LWPntID new_id = nullptr;
        std::uint64_t clone = unused; ///< the last clone that has the point
    };

    point_table() = default;
    point_table(const point_table&) = delete;
    point_table& operator=(const point_table&) = delete;

    /// Forgets the copies of all points.
    void clear() { ++current; }

    /// The slot of a background point where one look finds it, as it mostly does; null where `slot`
    /// has to tell. Valid until that is called.
    slot_typ* find_at_once(LWPntID old_id)
    {
        slot_typ& slot = slots[start(old_id)];
        return slot.old_id == old_id && slot.clone != unused ? &slot : nullptr;
    }

    /// The slot of a background point, valid until the next call.
    slot_typ& slot(LWPntID old_id);

    /// Whether the current clone has the point.
    bool has_copy(const slot_typ& slot) const { return slot.clone == current; }

    /// Its copy in the current clone, which may be null: one that could not be made.
    static LWPntID copy(const slot_typ& slot) { return slot.new_id; }

    /// Notes the copy, unless there is one: the first one counts.
    void set_copy(slot_typ& slot, LWPntID new_id) const
    {
        if (has_copy(slot))
            return;
        slot.new_id = new_id;
        slot.clone = current;
    }

    /// Gives the memory back.
    void release();

private:
    static constexpr std::uint64_t unused = 0;
    static constexpr std::uint64_t no_clone = 1;

    std::size_t start(LWPntID id) const
    {
        // Neighbours stay neighbours. A host may number the points of each layer from 0 and have
        // the layer in the upper half: many small layers must not share their places.
        constexpr std::uint64_t odd = 0x9E3779B97F4A7C15u;
        const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id));
        const std::uint64_t upper = ((bits >> 32) * odd) >> 32;
        return static_cast<std::size_t>((bits ^ (bits >> 7)) + upper) & mask;
    }
    slot_typ& add(LWPntID old_id);
    slot_typ& put(const slot_typ& slot);
    void grow();

    slot_typ none;           ///< stands in for the slots as long as there are none
    slot_typ* slots = &none; ///< a power of two, at most half of them used
    std::vector<slot_typ> memory;
    std::size_t mask = 0; ///< their number less one
    std::size_t used = 0;
    std::uint64_t current = no_clone + 1;
};

} // namespace dastrel
