// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "hostapi/types.h"

namespace modeler {

/// A reference to a point or polygon of a document; default-constructed: none.
struct Element {
    static constexpr std::uint32_t no_layer = 0xFFFFFFFFu;

    std::uint32_t layer = no_layer;
    std::uint32_t index = 0;

    explicit operator bool() const noexcept { return layer != no_layer; }
};

static_assert(sizeof(std::uintptr_t) == 8, "an id holds a layer and an index of 32 bits each");

/// Encodes an element as an opaque handle for the module: (layer << 32 | index) + 1, so that no
/// element is null. Indices are below 2^32 - 1, so the sum does not overflow.
template <typename Id> [[nodiscard]] Id to_id(Element element) noexcept
{
    const std::uint64_t packed = (std::uint64_t{element.layer} << 32) | element.index;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an id is a number to us, never an address
    return reinterpret_cast<Id>(static_cast<std::uintptr_t>(packed + 1));
}

/// Decodes a handle; none for null. Does not check that the element exists.
template <typename Id> [[nodiscard]] Element from_id(Id id) noexcept
{
    // Null wraps around to no_layer.
    const auto packed = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id)) - 1;
    return {static_cast<std::uint32_t>(packed >> 32),
            static_cast<std::uint32_t>(packed & 0xFFFFFFFFu)};
}

/// The handles of one layer's elements. They are consecutive, so converting is one addition.
class LayerIds {
public:
    explicit LayerIds(std::uint32_t layer) noexcept : first_((std::uint64_t{layer} << 32) + 1) {}

    /// The handle of the element at this index.
    template <typename Id> [[nodiscard]] Id id(std::uint64_t index) const noexcept
    {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): an id is a number to us, never an address
        return reinterpret_cast<Id>(static_cast<std::uintptr_t>(first_ + index));
    }

    /// The index of a handle; larger than every valid index if the handle is null or belongs to
    /// another layer.
    template <typename Id> [[nodiscard]] std::uint64_t index(Id id) const noexcept
    {
        // Wraps around below the layer.
        return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id)) - first_;
    }

private:
    std::uint64_t first_;
};

} // namespace modeler
