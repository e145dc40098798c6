// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "hostapi/types.h"

namespace dastrel {

/// A hash table from background points to their copies in the current clone; an index of the list
/// `IDs`. All clones have the same points, so slots are kept from clone to clone, each with the
/// number of the last clone that set it: clearing takes constant time.
class point_table {
public:
    /// The entry of one background point.
    class slot_typ {
        friend class point_table;
        LWPntID old_id = nullptr;
        LWPntID new_id = nullptr;
        std::uint64_t clone = unused; ///< the last clone in which the copy was set
    };

    point_table() = default;
    point_table(const point_table&) = delete;
    point_table& operator=(const point_table&) = delete;

    /// Removes all copies; slots stay.
    void clear() { ++current; }

    /// The slot of a background point if the first probe finds it, as it usually does; else null.
    /// Valid until `slot` is called.
    slot_typ* find_first_probe(LWPntID old_id)
    {
        slot_typ& slot = slots[start(old_id)];
        return slot.old_id == old_id && slot.clone != unused ? &slot : nullptr;
    }

    /// The slot of a background point, added if new. Valid until the next call.
    slot_typ& slot(LWPntID old_id);

    /// Whether the copy is set in the current clone.
    bool has_copy(const slot_typ& slot) const { return slot.clone == current; }

    /// The copy; null if the host could not make one.
    static LWPntID copy(const slot_typ& slot) { return slot.new_id; }

    /// Sets the copy, unless it is set already.
    void set_copy(slot_typ& slot, LWPntID new_id) const
    {
        if (has_copy(slot))
            return;
        slot.new_id = new_id;
        slot.clone = current;
    }

    /// Frees the memory.
    void release();

private:
    static constexpr std::uint64_t unused = 0;
    static constexpr std::uint64_t no_clone = 1;

    std::size_t start(LWPntID id) const
    {
        // Points with adjacent ids stay adjacent. A host may number the points of each layer from
        // 0 with the layer in the upper half: mixing it in keeps small layers from colliding.
        constexpr std::uint64_t odd = 0x9E3779B97F4A7C15u;
        const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id));
        const std::uint64_t upper = ((bits >> 32) * odd) >> 32;
        return static_cast<std::size_t>((bits ^ (bits >> 7)) + upper) & mask;
    }
    slot_typ& add(LWPntID old_id);
    slot_typ& put(const slot_typ& slot);
    void grow();

    slot_typ none;           ///< the only slot while the table is empty
    slot_typ* slots = &none; ///< their number is a power of two, at most half of them used
    std::vector<slot_typ> memory;
    std::size_t mask = 0; ///< their number less one
    std::size_t used = 0;
    std::uint64_t current = no_clone + 1;
};

} // namespace dastrel
