// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "hostapi/types.h"

namespace modeler {

/// A point or polygon of a document, or none.
struct Element {
    static constexpr std::uint32_t no_layer = 0xFFFFFFFFu;

    std::uint32_t layer = no_layer;
    std::uint32_t index = 0;

    explicit operator bool() const noexcept { return layer != no_layer; }
};

static_assert(sizeof(std::uintptr_t) == 8, "an id holds a layer and an index of 32 bits each");

/// The element as a module sees it: one more than layer and index side by side, in pointer
/// clothing, so that no element is null. An array never has 2^32 elements, so nothing overflows.
template <typename Id> [[nodiscard]] Id to_id(Element element) noexcept
{
    const std::uint64_t packed = (std::uint64_t{element.layer} << 32) | element.index;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an id is a number to us, never an address
    return reinterpret_cast<Id>(static_cast<std::uintptr_t>(packed + 1));
}

/// The element that an id spells, whether it is there or not; none for null.
template <typename Id> [[nodiscard]] Element from_id(Id id) noexcept
{
    // Null wraps around to the layer that stands for none.
    const auto packed = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id)) - 1;
    return {static_cast<std::uint32_t>(packed >> 32),
            static_cast<std::uint32_t>(packed & 0xFFFFFFFFu)};
}

/// The ids of one layer's elements: numbers side by side, so that each is an addition away.
class LayerIds {
public:
    explicit LayerIds(std::uint32_t layer) noexcept : first_((std::uint64_t{layer} << 32) + 1) {}

    /// The element of this index, as a module sees it.
    template <typename Id> [[nodiscard]] Id id(std::uint64_t index) const noexcept
    {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): an id is a number to us, never an address
        return reinterpret_cast<Id>(static_cast<std::uintptr_t>(first_ + index));
    }

    /// The index of the element; beyond every index for one of another layer, or null.
    template <typename Id> [[nodiscard]] std::uint64_t index(Id id) const noexcept
    {
        // Wraps around below the layer.
        return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(id)) - first_;
    }

private:
    std::uint64_t first_;
};

} // namespace modeler
